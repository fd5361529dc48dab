// Six inputs that move and turn a node in the frame of a cage.
#pragma once

#include <string>

#include "plugins/common/LinkRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// Links an input device to a movement. Positive inputs mean forward (-Z of the cage), right (+X),
/// up (+Y), a yaw to the right, a pitch up and a roll to the right. Translations are in units of
/// the cage, metres while it has no scale; rotations in radians.
class CDirectInputLinkObject : public LinkRig {
 public:
  /// "RelativeCageMesh": the frame of the movement.
  using CRelativeCageNode = addon::CRelativeCageNode;
  /// "ActuatorMesh": what is moved, and what an animator parents objects to.
  using CDirectInputLinkNode = ActuatorNode;
  /// A camera that rides on the actuator. The rig never moves it.
  class CCameraNode : public RigCameraNode {
   public:
    CCameraNode(CCamera& rig, const CDirectInputLinkNode& actuator)
        : RigCameraNode(rig, "Camera", &actuator) {}
  };

  explicit CDirectInputLinkObject(const CreationRecord& record);

 protected:
  void DefineMoreModes() override;
  int CreateMore() override;
  void RestoreMore() override;
  util::Matrix<double> LocalPose() const override;

 private:
  struct Settings {
    bool hideCamera = false;  ///< always, in takes and out of them
  };

  Settings m_settings;
  CCameraNode m_camera;
};

class CDirectInputLinkPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "DirectInputLink"; }
  std::string GetDataFolder() override { return "directinputlink"; }
  std::string GetName() override { return "Orvel DirectInputLink"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "links"; }
};

}  // namespace orv::rws::addon
