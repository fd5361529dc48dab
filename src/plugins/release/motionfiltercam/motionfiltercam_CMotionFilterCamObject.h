// A camera that follows another one like a mass on a damped spring.
#pragma once

#include <string>

#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"
#include "plugins/common/SaveChunk.h"
#include "util/AVar_Nearest.h"

namespace orv::rws::addon {

/// The FollowCam trails the AttachedCam, which an animator parents to anything that moves. The
/// filter's position is the FollowCam's own pose one frame earlier, so it starts from wherever the
/// animator has put it; its velocities are kept by time.
class CMotionFilterCamObject : public CCamera, public CInterface::Callback {
 public:
  using SceneNode = RigSceneNode;

  /// What a user edits and a profile saves. A response in 1/s² of 0 is no filter, a larger one
  /// follows faster; smoothing (1/s) takes bounces out; a maximum velocity of 0 is no limit.
  struct Settings {
    bool bFixateTranslations = false;
    bool bFixateRotations = false;
    double translationalResponseFactor = 30.0;
    double rotationalResponseFactor = 30.0;
    double translationalSmoothingFactor = 5.0;
    double rotationalSmoothingFactor = 5.0;
    double translationalMaxVel = 0.0;  ///< m/s
    double rotationalMaxVel = 0.0;     ///< rad/s
    double jumpThreshold = 0.0;        ///< way of the AttachedCam in a frame that is a cut (m)
  };

  /// What a take changes, all of it undone with the take.
  struct Memory {
    /// Velocities by time: position is the linear velocity (m/s), the first three members of the
    /// rotation are the angular velocity (rad/s, own frame), the fourth is 1.
    util::AVar_Nearest<util::QTransform<double>> ancMotionFilterCamNodeqTransMem;
    /// The next take starts without linear velocity. True for a new rig, which has none yet.
    bool bFirstTime = true;
  };

  /// Holds the binding to what is followed; has nothing to do in a frame.
  class CAttachedCamNode : public RigCameraNode {
   public:
    explicit CAttachedCamNode(CCamera& rig) : RigCameraNode(rig, "AttachedCam", nullptr) {}
  };

  /// The filter.
  class CMotionFilterCamNode : public RigCameraNode {
   public:
    explicit CMotionFilterCamNode(CMotionFilterCamObject& rig);
    void Step(double time) override;

    Settings settings;
    /// Lengths of the axis rows that all poses of a take have: the node's at the take's start. Read
    /// back from each frame they would run away under parents whose shear no node can hold.
    util::Vector3<double> scale{1.0, 1.0, 1.0};
    util::Vector3<double> linearVelocity;   ///< m/s, world
    util::Vector3<double> angularVelocity;  ///< rad/s, own frame

   private:
    CMotionFilterCamObject& m_rig;
  };

  explicit CMotionFilterCamObject(const CreationRecord& record);

  void Start(double time) override;
  void Stop() override {}
  void Step(double time) override;
  void Update(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;
  void Forget(double time) override;

 private:
  void DefineTranslations();
  void DefineRotations();
  void StoreVelocities(double time);
  void CheckStability();
  SaveState LoadBlob();

  Memory m_memory;
  CAttachedCamNode m_attachedCam;
  CMotionFilterCamNode m_followCam;
  bool m_toldTranslation = false, m_toldRotation = false;  ///< to diverge, in the present take
};

class CMotionFilterCamPlugin : public CCameraPlugin {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "MotionFilterCam"; }
  std::string GetDataFolder() override { return "motionfiltercam"; }
  std::string GetName() override { return "Orvel MotionFilterCam"; }
  std::string GetCategory() override { return "Camera"; }
  std::string GetDescription() override;
};

}  // namespace orv::rws::addon
