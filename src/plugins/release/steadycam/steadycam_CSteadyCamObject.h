// A camera that follows another one through two stages of lag.
#pragma once

#include <string>

#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "plugins/common/HideModes.h"
#include "plugins/common/RigSceneNode.h"
#include "plugins/common/SaveChunk.h"
#include "util/AVar_Nearest.h"

namespace orv::rws::addon {

/// The FollowCam trails the AttachedCam, which an animator parents to anything that moves, and
/// never overshoots. A first stage lags behind the AttachedCam and is kept by time; the second lags
/// behind the first and is the FollowCam's own pose.
class CSteadyCamObject : public CCamera, public CInterface::Callback {
 public:
  using SceneNode = RigSceneNode;

  /// A factor is the part of the way that is made up in a nominal step; a larger one lags less.
  struct Settings {
    double translationalResponseFactor = 0.1;
    double rotationalResponseFactor = 0.4;
    double jumpThreshold = 0.0;  ///< way of the AttachedCam in a frame that is a cut (m)
  };

  /// What a take changes, all of it undone with the take.
  struct Memory {
    /// First-stage pose by time (world).
    util::AVar_Nearest<util::QTransform<double>> ancSteadyCamNodeqTransMem;
    /// The next take starts with the first stage on the target. True for a new rig, whose first
    /// stage has been nowhere yet.
    bool bFirstTime = true;
  };

  /// Holds the binding to what is followed; has nothing to do in a frame.
  class CAttachedCamNode : public RigCameraNode {
   public:
    explicit CAttachedCamNode(CCamera& rig) : RigCameraNode(rig, "AttachedCam", nullptr) {}
  };

  /// The filter.
  class CSteadyCamNode : public RigCameraNode {
   public:
    explicit CSteadyCamNode(CSteadyCamObject& rig);
    void Step(double time) override;

    Settings settings;
    /// Lengths of the axis rows that all poses of a take have: the node's at the take's start. Read
    /// back from each frame they would run away under parents whose shear no node can hold.
    util::Vector3<double> scale{1.0, 1.0, 1.0};
    util::QTransform<double> firstStage;  ///< world

   private:
    CSteadyCamObject& m_rig;
  };

  explicit CSteadyCamObject(const CreationRecord& record);

  void Start(double time) override;
  void Stop() override;
  void Step(double time) override;
  void Update(double time) override;
  int Define() override;
  int Create() override;
  int Restore() override;
  int Store() override;
  void OnCallback(std::string name) override;
  void Forget(double time) override;

 private:
  SaveState LoadBlob();

  Memory m_memory;
  CAttachedCamNode m_attachedCam;
  CSteadyCamNode m_followCam;
  HideModes m_hideModes;
  HideModes::Box& m_hideAttachedCam;
  HideModes::Box& m_hideFollowCam;
};

class CSteadyCamPlugin : public CCameraPlugin {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "SteadyCam"; }
  std::string GetDataFolder() override { return "steadycam"; }
  std::string GetName() override { return "Orvel SoftMotionCam"; }
  std::string GetCategory() override { return "Camera"; }
  std::string GetDescription() override;
};

}  // namespace orv::rws::addon
