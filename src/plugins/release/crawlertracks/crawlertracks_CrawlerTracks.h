// A belt of rigid steps round wheels, on a physics world of its own.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/interface/GroundReport.h"
#include "plugins/common/History.h"
#include "plugins/common/Rig.h"
#include "plugins/common/RigFactory.h"
#include "plugins/common/SaveChunk.h"
#include "plugins/common/ground/GroundShapePool.h"
#include "plugins/common/ground/SurfaceNode.h"
#include "plugins/release/crawlertracks/BeltPath.h"
#include "plugins/release/crawlertracks/BeltWorld.h"
#include "plugins/release/crawlertracks/CrawlerSettings.h"

namespace orv::unidevice {
class Property;
}
namespace orv::rws {
struct RigMarks;
}

namespace orv::rws::addon {

/// The node whose parent (or the meshes below one that is no mesh) and children are the ground of a
/// belt, and whose Z row points against gravity.
class BeltGroundNode : public SurfaceNode {
 public:
  BeltGroundNode(CCamera& rig, const RigSceneNode& frame);

  using SurfaceNode::MeshOf;

  /// Fills the answer to kTellGround.
  std::intptr_t TellGround(GroundReport& report) const;
  /// Whether any surface is a mesh at `time`.
  bool HasMesh(double time) const;
  /// Captures the surfaces at `time`: their triangles, stretched into a belt's world of this scale,
  /// from `pool`; null for one that is no mesh. Members of a group that never move are one surface.
  std::vector<std::shared_ptr<const triMeshStorage>> CaptureShapes(double time, double scale,
                                                                   GroundShapePool& pool);
  void ReleaseSurfaces() { m_group.Release(); }
  /// Fills `poses` with the world pose of each surface, in the same order.
  void ReadPoses(double time, std::vector<util::Matrix<double>>& poses) const;
};

/// The rig. The user sets wheels out in the plane of the Frame, shapes the TemplateStep and creates
/// the track; in a take the driveWheel is turned by the input, the wheels carry the belt, the belt
/// meets the ground, and each step's node is keyed. Wheels follow their nodes: a vehicle carries
/// them by carrying the Frame, and the belt does not carry the vehicle. All lengths of the physics
/// are in units of the Frame, so that a belt behaves the same at any scale.
class CrawlerTracks : public Rig {
 public:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  class Track;
  class Wheel;
  using WheelList = std::vector<std::shared_ptr<Wheel>>;
  using TrackPointer = std::shared_ptr<Track>;

  CrawlerTracks(const CreationRecord& record, GroundShapePool& shapes);
  ~CrawlerTracks() override;

  void Start(double time) override;
  void Stop() override;
  /// Runs a frame. Of the two other steps of a belt, Track::Step is a shoe of it, and the world's
  /// step is one call of BeltWorld::Advance, of which a frame has several.
  void Step(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override {
    out.insert(out.end(), {kTellGround, kTellMarks});
  }

  // What undo steps exchange.
  struct WheelState {
    /// The belt's own, and those that carry it where they find it; in the order of creation.
    WheelList wheels, supportWheels;
  };
  WheelState GetWheelState() const { return {m_wheels, m_supportWheels}; }
  void SetWheelState(const WheelState& state);
  const TrackPointer& GetTrack() const { return m_track; }
  void SetTrack(TrackPointer track);

 private:
  /// A wheel's way through a frame, in the belt's world.
  struct WheelMotion {
    Wheel* wheel = nullptr;
    double ratio = 0.0;    ///< its turn for a turn of 1 rad of the driveWheel
    Matrix before, after;  ///< world poses of its node round the frame, without this frame's turn
  };

  // Actions.
  bool RunAction(const std::string& label);
  void AddWheel();
  void RemoveWheel();
  void AddSupportWheel();
  void RemoveSupportWheel();
  void CreateTrack();
  void RemoveTrack();
  void CalculateSteps();
  void CalculateGap();
  void SelectSteps();
  void AddStep();
  void RemoveStep();
  bool RefuseWithTrack(const char* text) const;
  template <class T>
  void SetByAction(T& variable, T value) {
    PushVariableUndo(*m_pInterface, variable);
    variable = value;
    m_pInterface->RefreshConfig();
  }
  bool RefuseWithoutTrack() const;
  std::shared_ptr<Wheel> MakeWheel(const std::string& name, const Matrix& place);
  void RemoveLast(WheelList& wheels);
  bool LayTrack(int steps);
  bool DropTrack();
  bool MakeSteps(Track& track, const BeltPath& path, int count);
  void SettleTrack();
  void PlaceSteps(double time);
  double FarthestStep(double time) const;
  void ShowWheels();

  // Layout.
  WheelList TrackWheels() const;
  bool RefuseMirrored(double time) const;
  void WarnOfUnevenFrame(double time) const;
  void MeasureWheels(double time);
  void MoveOutOfDriveWheel();
  /// The line of the belt in units of the Frame; tells the user why there is none.
  std::optional<BeltPath> FindPath();
  /// Length round the wheels that steps are counted by (m); below 0 when there is no line.
  double Perimeter();
  double FrameScale(double time) const;
  struct StepShape;
  bool MeasureStep(StepShape& shape) const;

  // Takes.
  bool IsReady(double time) const;
  void WarnOfScale(double time);
  void BuildWorld(double time);
  BodyState StateAt(int index, double time) const;
  void BuildSteps(double time);
  void Settle(double time);
  void ReadFrame(double before, double time);
  void StepPart(double from, double to);
  void StepFrame(double time, bool writes);
  void CarryAlong(double before, double time);
  int SubFrameParts() const;
  /// Length of the world's steps (s).
  double WorldStep() const;
  Vector GravityAt(double time) const;
  void FindMotions();
  void ReadMotions(double before, double time);
  util::QTransform<double> WheelAt(const WheelMotion& motion, double part) const;
  void MoveTo(double part);
  double HoldDistance() const;
  void HoldSteps();
  void GuideSteps();
  Matrix NodePose(const util::QTransform<double>& inBelt, const Vector& scale) const;
  Matrix StepPose(int index) const;
  void NoteHeldStep(double time);
  void WriteFrame(double time, double part);
  bool IsWhole() const;
  bool HasBurst();
  bool HasLeft() const;
  void WarnOfLeaving();

  std::intptr_t TellMarks(RigMarks& marks) const;

  // Saving.
  SaveState LoadBlob();
  bool LoadWheels(const util::DataChunk& chunk, bool support, WheelList& wheels);
  bool LoadTrack(const util::DataChunk& chunk);
  void SaveWheels(util::DataChunk& chunk, const char* name, const WheelList& wheels) const;

  CrawlerSettings m_settings;
  GroundShapePool& m_shapes;
  bool groundExist = false;
  unidevice::Property* m_input = nullptr;  ///< the instance's
  RigMeshNode m_frame;
  RigMeshNode m_trackDirection;
  BeltGroundNode m_gravityDirection;
  RigMeshNode m_templateStep;
  RigMeshNode m_caterpillar;  ///< the group of the steps
  WheelList m_wheels;         ///< the driveWheel first
  WheelList m_supportWheels;
  TrackPointer m_track;  ///< null without one

  // Of the running take.
  std::unique_ptr<BeltWorld> m_world;
  double m_turn = 0.0;         ///< of the driveWheel in this frame (rad)
  double m_scale = 1.0;        ///< of the Frame: metres of a unit of the belt's world
  std::vector<int> m_grounds;  ///< of each surface in the world; -1 for none
  std::vector<Matrix> m_groundsBefore, m_groundsAfter;  ///< world poses round the frame
  std::vector<WheelMotion> m_motions;
  std::vector<int> m_others;  ///< track wheels beside the driveWheel, as they stand in m_wheels
  bool m_inTake = false;
  bool m_isRunning = false;  ///< the take steps the track
  bool m_isNew = false;      ///< it has no memory, and no frame has been stepped
  bool m_hasLeft = false;    ///< its wheels or the ground, and the user has been told
};

/// The solver has a memory of its own, which no history holds to the bit.
class CrawlerTracksPlugin : public RigFactory<1, true> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "CrawlerTracks"; }
  std::string GetDataFolder() override { return "crawlertracks"; }
  std::string GetName() override { return "Orvel CrawlerTracks"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "tracks"; }

 private:
  GroundShapePool m_shapes;
};

}  // namespace orv::rws::addon
