// What runs along the rail.
#pragma once

#include "plugins/common/RigSceneNode.h"
#include "plugins/release/splinespeedcontroller/RailContext.h"
#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/AVar_Nearest.h"
#include "util/QTransform.h"

namespace orv::rws::addon {

/// All that a take changes of the carriage, undone with the take. Histories are by frame; a
/// position is the arc parameter of the path. Speeds are in metres per second.
struct CarriageMemory {
  util::AVar_Linear<double> currentSpeed;                  ///< target speed
  util::AVar_Linear<double> dCurrentCarriageSpeed_Avar;    ///< second filter stage: what moves
  util::AVar_Linear<double> speedMem;                      ///< first filter stage
  util::AVar_Nearest<util::QTransform<double>> qTransMem;  ///< first stage of the orientation
  util::AVar_Linear<double> onSplinePosition;              ///< arc parameter, [0, 1]
  util::AVar_Linear<double> framesAtWaypoint;              ///< frames stood still so far
  util::AVar_Latest<bool> stopped;                         ///< stands at a waypoint
  bool initialized = false;                                ///< a take has placed it on the path
  bool directionForward = true;                            ///< towards rising arc parameters
  double stopTime = 0.0;                                   ///< when the stop began (s)
  double delay = 0.0;  ///< length of the stop in frames, -1 is until Start
  int current = -1;    ///< index of the waypoint that is travelled to, -1 is none
  int next = -1;       ///< index of the one behind it
};

/// Integrates one number, the position along the path, and aims. The scene node's own orientation
/// is the second stage of the orientation filter.
class CCarriageNode : public RigMeshNode {
 public:
  enum class Path { kNone, kHost, kOwn };

  /// `rail` outlives this.
  CCarriageNode(CCamera& rig, RailContext& rail);

  /// Settles the state at `time` and discards the future. The caller has made it undoable.
  void Start(double time);
  void Step(double time) override;

  /// The path that a carriage would run on; the host's curve is the one bound.
  Path ChoosePath() const;
  /// A point of the path (world).
  util::Vector3<double> PathPosition(Path path, double u, double time) const;
  /// Puts the carriage at `u` at `time`, at rest and along the path, with no past.
  void Initialize(Path path, double u, double time);
  /// Index of the neighbour in the list, the ends joined.
  int Successor(int index, bool forward) const;
  /// Whether the carriage stops at a waypoint.
  bool IsStop(int index) const;

  CarriageMemory memory;

 private:
  using Vector = util::Vector3<double>;
  using Quat = util::Quat<double>;
  using Matrix = util::Matrix<double>;

  /// The way between two waypoints that is being travelled, or the waypoint stood at.
  struct Leg {
    const CWaypointNode* waypoint = nullptr;     ///< that it leaves
    const WaypointSettings* settings = nullptr;  ///< what counts there, never null
    double length = 1e-05;                       ///< arc parameter
    double wantedSpeed = 0.0;                    ///< m/s
    double inputSpeed = 0.0;                     ///< m/s
  };
  /// Braking towards the waypoint ahead.
  struct Braking {
    double factor = 1.0;
    bool on = false;
  };
  /// What a step works with.
  struct Frame {
    double time, before, dt;
    Path path;
    Matrix reference;  ///< ReferenceFrame (world)
    Matrix previous;   ///< the carriage in the frame before (world)
    Vector up;         ///< unit, world
    Vector tangent;    ///< unit, world; for gravity and banking
    Vector curvature;  ///< world
    bool wasStopped;   ///< in the frame before
    bool startPressed;
  };

  Frame BeginFrame(double time) const;
  void MeasurePath(Frame& frame) const;
  Leg ChooseLeg(const Frame& frame) const;
  void TurnRound(double speed, const Frame& frame);
  Braking Brake(const Frame& frame, const Leg& leg) const;
  void FilterSpeed(const Frame& frame, const Leg& leg, double target);
  void Advance(const Frame& frame, double brake);
  void Arrive(double time, double before, bool startPressed);
  void BeginStop(double time, double delay);
  void EndStop(double time);
  void GoOn();
  void HandleStop(const Frame& frame);
  void HoldAtWaypoint(const Frame& frame);
  void HandleEnds(const Frame& frame);
  void PassSeam(const Frame& frame, double u);
  void Aim(const Frame& frame, const Leg& leg, const Braking& braking);
  bool LookDirection(const Frame& frame, const Leg& leg, const Braking& braking,
                     Vector& direction) const;
  Quat Orientation(const Vector& up, bool upright, const Vector& direction, const Quat& kept) const;
  Quat Bank(const Frame& frame, const Braking& braking) const;
  void Stand(const Frame& frame);

  int Lookup(double time, double before) const;
  int WaypointAhead(double time, double before) const;
  int StandingAt(double u) const;
  bool HasPassed(double u, double v, double w) const;
  double PositionOf(int index) const;
  /// What counts for a waypoint; the user's own parameters without one.
  const WaypointSettings& SettingsOf(int index) const;
  double PathLength(const Frame& frame) const;
  double OnOwnCurve(double u) const;
  Vector AimTangent(const Frame& frame) const;

  RailContext& m_rail;
  double m_started = -1e300;  ///< of the latest take (s): no frame reads what lies before it
  /// Lengths of the axis rows that all poses of a take have: the node's at the take's start.
  Vector m_scale{1.0, 1.0, 1.0};
};

}  // namespace orv::rws::addon
