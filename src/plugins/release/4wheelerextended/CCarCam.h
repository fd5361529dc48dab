// The car model: a chassis base that the inputs drive over the ground, and a body on springs.
#pragma once

#include <vector>

#include "plugins/release/4wheelerextended/CarSettings.h"
#include "plugins/release/4wheelerextended/CarState.h"

namespace orv::rws::addon {

/// The turn of the least angle that takes one unit vector to another that is not its opposite.
util::Quat<double> ShortestArc(const util::Vector3<double>& from, const util::Vector3<double>& to);

/// No rigid-body engine: the base is a moving point that is steered by a turn radius; the body
/// floats above it with three degrees of freedom (height, pitch, roll) on four spring-dampers; the
/// wheels' heights come from the ground contact once a frame. World space is right-handed, Y up,
/// metres; the car's own frame has X to the right, Y up and Z backwards. Deterministic: a frame
/// follows from the state, the settings and the inputs.
///
/// A frame is Update (the motion), then the ground contact of each wheel by its owner, then
/// FinishWheels and FitBase.
class CCarCam {
 public:
  using Vector = util::Vector3<double>;
  using Quat = util::Quat<double>;

  /// The External Force mesh in the body's frame, in body scales; `direction` is unit.
  struct ExternalForce {
    Vector position;
    Vector direction{0.0, 1.0, 0.0};
  };

  /// `settings` belongs to the rig.
  explicit CCarCam(const CarSettings& settings) : m_settings(settings) {}

  /// Moves base and body by one frame of `dt` seconds.
  void Update(double dt);
  /// One sub-step of `h` seconds of a frame of `frameDt`.
  void SubStep(double frameDt, double h);
  /// Turns what the wheels travelled in the frame into spin.
  void FinishWheels();
  /// Lays the base on the plane of the wheel bottoms, below the body's origin. A corner of the
  /// chassis whose wheel hangs is not pulled down by the tire: it falls with the car's gravity
  /// until the ground holds it, so that a car leaves a crest or a ramp as heavy things do.
  void FitBase(double dt);
  /// Steers towards a point (world, m) instead of by the inputs.
  void SteerTowards(const Vector& target, double dt);
  /// Where the target stands, frame by frame (world, m), of an autonomous car whose base is to be
  /// at these poses, one each `dt` seconds.
  std::vector<Vector> PlaceTargets(const std::vector<util::QTransform<double>>& line,
                                   double dt) const;

  /// Moves all that the state holds in world space by a turn about `from`, and on to `to`.
  void Carry(const Quat& turn, const Vector& from, const Vector& to);
  /// Lays the base on the plane of four points below the wheels (world), below the body's origin.
  void StandOn(const Vector ground[kWheelCount]);
  /// Puts all state but the seeds at rest on `base`.
  void Reset(const util::QTransform<double>& base);
  /// Gives the car the speed `gas` (body scales a second) straight ahead, in frames of `dt`
  /// seconds.
  void StartAt(double gas, double dt);

  /// Length of a sub-step in a frame of `dt` seconds.
  static double SubStepLength(double dt);

  double GetEffectiveRadius(int wheel) const;
  /// Where the body's origin is at rest (world).
  Vector GetChassisPosition() const;
  /// Origin of the body (world).
  Vector GetBodyPosition() const;
  Quat GetBodyRotation() const;
  /// The wheel's place right of the body's origin (m): a rolled body spreads its wheels.
  double GetLateralOffset(int wheel) const;
  /// Length of a wheel's spring: the height of the wheel's attachment on the body over the wheel,
  /// both counted from rest (m).
  double GetCompression(int wheel) const { return GetCompression(state, wheel); }
  double GetCompression(const CarState& of, int wheel) const;
  /// Part of the car's weight on a wheel: its share at rest, and what the spring adds in `now`, a
  /// frame of `dt` seconds behind `before`.
  double GetLoad(const CarState& now, const CarState& before, double dt, int wheel) const;
  /// Whether the falling corner of the chassis over a wheel comes down on `groundBelow` in this
  /// frame.
  bool ComesDown(int wheel) const;
  /// Where that corner would be `time` seconds into the frame of `dt` without any ground (world).
  Vector GetFallPoint(int wheel, double time, double dt) const;
  const Vector& GetFallUp() const { return m_fallUp; }  ///< unit, against this frame's falls
  /// Turn of the wheel and its spin against the body; the spin acts first.
  Quat GetWheelTurn(int wheel) const;
  /// Behind the base's origin (m): the point that the car turns about stands on a line through it.
  double GetPivotZ() const;
  double GetTurnRadius(double steering) const;
  double GetSpeed() const { return geometry.scale * state.filtered[kGasPedal]; }  ///< m/s
  /// Fall of the car (m/s²).
  double GetFallAcceleration() const;

  CarGeometry geometry;
  CarState state;
  // Of the present frame:
  std::array<double, kChannelCount> input{};  ///< as the controls stand
  Vector down{0.0, -1.0, 0.0};                ///< unit
  Quat gravityAttitude;                       ///< what a car in the air is drawn to
  ExternalForce externalForce;
  /// Where each wheel's bottom would stand on the ground below it; far down where there is none.
  Vector groundBelow[kWheelCount];
  /// Speed of each corner that comes down (m/s), where it meets the ground against that.
  std::array<double, kWheelCount> closingSpeed{};
  std::array<double, kWheelCount> spin{};  ///< of each wheel in this frame (rad)

 private:
  /// How a corner of the chassis falls in a frame (m).
  struct Drop {
    double free = 0.0;       ///< without any ground
    double planned = 0.0;    ///< onto the ground, and as deep as the body then sinks in
    double made = 0.0;       ///< what the stiff chassis does of it
    double speedLeft = 1.0;  ///< part of the speed of the contact at the end of the frame
  };
  /// What the ground does to the four corners in a frame.
  struct Landing {
    double speed[kWheelCount] = {};   ///< with which the body goes on (m/s)
    double braked[kWheelCount] = {};  ///< of it, negative, by the springs in the rest of the frame
    double lifted[kWheelCount] = {};  ///< back up, to where the ground is (m)
  };

  // Update
  void HandleAir(double dt);
  bool FallsToGround(double dt) const;
  double GetMeanFallSpeed() const;
  void Land(double h);
  Drop PlanDrop(double speed, double clearance, double dt) const;
  void Fall(double dt);
  Vector GetCorner(int wheel) const;
  void TakeOff(double h);
  void Fly(double dt, double h);
  void HandleSkidBrake(double dt);
  void LatchSkidBrake(double dt);
  void ReleaseSkidBrake(double h);
  void SlideOnLockedWheels(double dt);
  void StopAll();
  void LatchSkidding();
  void FilterInputs(double dt);
  double GasRaw(double dt);
  double SteeringRaw(double dt);
  double SkiddingRaw(double dt) const;
  void ApplyBooster(double dt);
  void ApplyAbs(double dt);
  void UpdateGravelNoise(double dt);
  void HoldSprings(double h);
  bool IsAbsActing() const;
  // SubStep
  void Drive(double frameDt, double h, double rho);
  void Burn(double frameDt, double h);
  void HoldDown(Vector& step) const;
  void Step(const Vector& step, double grip, double h);
  void TurnSteeredWheels(double h, double rho);
  void MoveBody(double h);
  void MoveBodyInTheAir();
  void MoveAngle(double& angle, double& velocity, double& acceleration, double limit,
                 double newAcceleration, double h) const;
  double MeasureSprings(double h, double& pitchTorque, double& rollTorque);

  // FitBase
  void FindCorners(double dt, const Vector& up, Vector corner[kWheelCount]);
  bool IsCarried(int wheel, double height) const;
  void Hold(int wheel, unsigned open, double dt, const Vector& up, double height[kWheelCount],
            Vector corner[kWheelCount]);
  void KeepFalling(int wheel, double lowered);
  void Raise(int wheel, const Vector& up, double to, double height[kWheelCount],
             Vector corner[kWheelCount]);
  void LayBase(const Vector corner[kWheelCount], const Vector& up, const Vector& origin,
               const Vector& axis);
  void Squat(const Landing& landing);
  void Sink(const double corner[kWheelCount], double& y, double& pitch, double& roll) const;

  bool IsFlying() const { return state.bCarInTheAir && m_settings.cCarCambGravityOn; }
  bool IsFront(int wheel) const { return wheel < 2; }
  double Maximum(CarChannel channel) const;
  double Mass() const;

  const CarSettings& m_settings;
  std::array<double, kChannelCount> m_raw{};  ///< inputs as the frame's rules have changed them
  Vector m_lastBottom[kWheelCount];           ///< of the wheels, in the frame before
  double m_lastGas = 0.0;                     ///< filtered, at the end of the frame before
  double m_stiffness[2] = {0.0, 0.0};         ///< front and back, as this frame uses them
  double m_damping[2] = {0.0, 0.0};
  std::array<Drop, kWheelCount> m_drops;    ///< of this frame
  Vector m_lastCorner[kWheelCount];         ///< before this frame's motion
  Vector m_fallUp;                          ///< unit: against the drops
  std::array<bool, kWheelCount> m_falls{};  ///< corners that fall on in the next one
  double m_burnoutTilt = 0.0;               ///< torque of a burnout (kg m²/s²)
};

}  // namespace orv::rws::addon
