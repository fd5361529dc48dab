// A camera that follows another one like a mass on a damped spring.
#pragma once

#include <string>

#include "plugins/common/FollowRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// The filter's position is the FollowCam's own pose one frame earlier, so it starts from wherever
/// the animator has put it. The history is that of its velocities: position is the linear velocity
/// (m/s), the first three members of the rotation are the angular velocity (rad/s, own frame), the
/// fourth is 1. Without memory a take starts without linear velocity.
class CMotionFilterCamObject : public FollowRig {
 public:
  /// What a user edits and a profile saves. A response in 1/s² of 0 is no filter, a larger one
  /// follows faster; smoothing (1/s) takes bounces out; a maximum velocity of 0 is no limit.
  struct Settings {
    bool bFixateTranslations = false;           ///< moves with the AttachedCam, unfiltered
    bool bFixateRotations = false;              ///< turns with the AttachedCam, unfiltered
    double translationalResponseFactor = 30.0;  ///< 1/s²
    double rotationalResponseFactor = 30.0;     ///< 1/s²
    double translationalSmoothingFactor = 5.0;  ///< 1/s
    double rotationalSmoothingFactor = 5.0;     ///< 1/s
    double translationalMaxVel = 0.0;           ///< m/s
    double rotationalMaxVel = 0.0;              ///< rad/s
    double jumpThreshold = 0.0;  ///< way of the AttachedCam in a frame that is a cut (m)
  };

  /// The filter.
  class CMotionFilterCamNode : public FollowCamNode {
   public:
    explicit CMotionFilterCamNode(CMotionFilterCamObject& rig);
    void Step(double time) override;

    Settings settings;
    util::Vector3<double> linearVelocity;   ///< m/s, world
    util::Vector3<double> angularVelocity;  ///< rad/s, own frame

   private:
    CMotionFilterCamObject& m_rig;
  };

  explicit CMotionFilterCamObject(const CreationRecord& record);

  void Start(double time) override;
  void Stop() override {}
  void Step(double time) override;
  int Define() override;
  int Store() override;

 private:
  void StoreVelocities(double time);
  void CheckStability();
  SaveState LoadBlob() override;

  CMotionFilterCamNode m_followCam;
  bool m_toldTranslation = false, m_toldRotation = false;  ///< to diverge, in the present take
};

class CMotionFilterCamPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "MotionFilterCam"; }
  std::string GetDataFolder() override { return "motionfiltercam"; }
  std::string GetName() override { return "Orvel MotionFilterCam"; }
  std::string GetCategory() override { return "Camera"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "camera"; }
};

}  // namespace orv::rws::addon
