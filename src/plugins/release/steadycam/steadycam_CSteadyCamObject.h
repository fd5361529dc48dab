// A camera that follows another one through two stages of lag.
#pragma once

#include <string>

#include "plugins/common/FollowRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// The FollowCam never overshoots. A first stage lags behind the AttachedCam and is kept by time;
/// the second lags behind the first and is the FollowCam's own pose. The history is that of the
/// first stage's pose (world); without memory the first stage begins on the target.
class CSteadyCamObject : public FollowRig {
 public:
  /// A factor is the part of the way that is made up in a nominal step; a larger one lags less.
  struct Settings {
    double translationalResponseFactor = 0.1;  ///< of both stages' position, [1e-8, 100]
    double rotationalResponseFactor = 0.4;     ///< of both stages' rotation, [1e-8, 100]
    double jumpThreshold = 0.0;    ///< way of the AttachedCam in a frame that is a cut (m)
    bool hideAttachedCam = false;  ///< always, in takes and out of them
    bool hideFollowCam = false;    ///< the same for the FollowCam
  };

  /// The filter.
  class CSteadyCamNode : public FollowCamNode {
   public:
    explicit CSteadyCamNode(CSteadyCamObject& rig);
    void Step(double time) override;

    Settings settings;
    util::QTransform<double> firstStage;  ///< world

   private:
    CSteadyCamObject& m_rig;
  };

  explicit CSteadyCamObject(const CreationRecord& record);

  void Start(double time) override;
  void Stop() override;
  int Define() override;
  int Store() override;

 private:
  SaveState LoadBlob() override;

  CSteadyCamNode m_followCam;
};

class CSteadyCamPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "SteadyCam"; }
  std::string GetDataFolder() override { return "steadycam"; }
  std::string GetName() override { return "Orvel SoftMotionCam"; }
  std::string GetCategory() override { return "Camera"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "camera"; }
};

}  // namespace orv::rws::addon
