// A four-wheeled car that is driven live over any ground.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "plugins/common/Rig.h"
#include "plugins/common/RigFactory.h"
#include "plugins/common/ground/GroundShapePool.h"
#include "plugins/release/4wheelerextended/CCarCam.h"
#include "plugins/release/4wheelerextended/CGravityDirectionNode.h"
#include "plugins/release/4wheelerextended/CWheelNode.h"
#include "plugins/release/4wheelerextended/CarCameraNodes.h"
#include "plugins/release/4wheelerextended/CarMemory.h"
#include "plugins/release/4wheelerextended/CarSettings.h"
#include "unidevice/Property.h"

namespace orv::rws {
struct LineToFollow;
struct RigMarks;
}  // namespace orv::rws

namespace orv::rws::addon {

class SaveReader;
enum class SaveState;

/// The rig: inputs in, the car model, rays at the ground, poses out. The animator places and scales
/// the body, moves and scales the wheels by their relocators, and puts the gravity direction mesh
/// under the ground. Takes go on from any frame by the histories of the memory.
class CCarCamObject : public Rig {
 public:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;

  CCarCamObject(const CreationRecord& record, GroundShapePool& shapes);
  ~CCarCamObject() override;

  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  void Update(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;
  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override;

 private:
  /// What hangs on one wheel.
  struct WheelNodes {
    WheelNodes(CCarCamObject& rig, int index);
    RigMeshNode relocator;
    RigMeshNode center;
    RigMeshNode suspension;
    CWheelNode wheel;
  };
  enum Output {
    kVelocity,
    kVelocityPercent,
    kSteeringAngle,
    kFirstWheelInTheAir,
    kOutputCount = 7
  };

  // Configuration
  void DefineChannel(std::size_t index);
  void PublishOutputs();
  void UpdateMaximumGauges();
  void MoveTurnBase();
  void OnStoreGroundMesh();
  void WarnOfTarget();

  // Rigging
  int CreateAt(RigSceneNode& node, const Matrix& place);
  std::vector<RigSceneNode*> AllNodes();
  std::vector<RigSceneNode*> Helpers();
  void CheckBodyScale(double time);
  void ReadGeometry(double time);
  void WarnOfRigging(double time);
  void StandWheelsAtRest(double time);
  bool IsFresh() const;
  /// Where the wheels would stand on the ground below them, if at least three are within reach.
  struct Stand {
    Vector ground[kWheelCount];
    double drop[kWheelCount] = {};
  };
  bool FindStand(double time, const util::Quat<double>& turn, Stand& stand);
  void Settle(double time);
  void StandWheels(double time);
  util::QTransform<double> FindBase(double time, Vector bottoms[kWheelCount]) const;

  // Takes
  void Reset(double time);
  void Resume(double time);
  double StartGas(double time) const;
  void ReadInputs();
  void ReadGravity(double before);
  void ReadExternalForce(double before);
  void MeetGround(double time);
  void ReportUnknownSurface();
  void WriteBody(double time);
  void WriteWheelHelpers(double time);
  void WriteBaseNodes(double time);
  void TellHands(double dt);
  void ShowGauges();
  bool KeepsHistories() const;
  Matrix Scaled(const util::QTransform<double>& pose) const;
  util::QTransform<double> PivotOf(util::QTransform<double> base) const;

  // Lines
  std::intptr_t FollowLine(LineToFollow& asked);

  // Marks
  std::intptr_t TellMarks(RigMarks& marks) const;
  void TellWheel(const CarState& now, const CarState& before, int index, RigMarks& marks) const;

  // Saving
  SaveState LoadBlob();
  void ReadStoredGround(const util::DataChunk& chunk, bool& stored, SaveReader& reader);

  CarSettings m_settings;
  RayFan m_rayFan;
  CCarCam cCarCam;
  CarMemory m_memory;
  CarGauges m_gauges;
  std::array<unidevice::Property*, kChannelCount> m_inputs{};  ///< the instance's
  std::vector<std::unique_ptr<unidevice::Property>> m_outputs;
  std::array<double, 2> m_frontHeights{};  ///< CurrDelta of the front wheels, for TellHands
  double m_takeStart = 0.0;                ///< s
  bool m_inTake = false;
  bool m_reinitialize = false;
  bool m_reportedSurface = false;

  RigMeshNode m_body;
  RigMeshNode m_chassisRelocator;
  RigMeshNode m_turnBase;
  CGravityDirectionNode m_gravity;
  RigMeshNode m_bodyBase;
  RigMeshNode m_target;
  RigMeshNode m_force;
  RigMeshNode m_steeringWheel;
  CFollowCamNode m_followCam;
  CDriverCamNode m_driverCam;
  CTopViewCamNode m_topViewCam;
  std::array<std::unique_ptr<WheelNodes>, kWheelCount> m_wheels;
};

class CCarCamPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "4WheelerExt"; }
  std::string GetDataFolder() override { return "4wheelerextended"; }
  std::string GetName() override { return "Orvel 4-Wheeler Extended"; }
  std::string GetCategory() override { return "Vehicle"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "vehicle"; }

 private:
  GroundShapePool m_shapes;
};

}  // namespace orv::rws::addon
