// One input that turns a node about an axis of a cage.
#pragma once

#include <string>

#include "plugins/common/OneChannelRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// The output is the angle about the chosen axis of the cage (rad, right-handed).
class C1DRotatorObject : public OneChannelRig {
 public:
  explicit C1DRotatorObject(const CreationRecord& record);

 protected:
  util::Matrix<double> LocalPose() const override;
};

class C1DRotatorPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "1DRotator"; }
  std::string GetDataFolder() override { return "1drotator"; }
  std::string GetName() override { return "Orvel 1D rotator"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "links"; }
};

}  // namespace orv::rws::addon
