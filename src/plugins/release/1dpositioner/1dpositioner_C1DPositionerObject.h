// One input that moves a node along an axis of a cage.
#pragma once

#include <string>

#include "plugins/common/OneChannelRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// The output is the way along the chosen axis of the cage, in its units (metres while it has no
/// scale).
class C1DPositionerObject : public OneChannelRig {
 public:
  explicit C1DPositionerObject(const CreationRecord& record);

 protected:
  util::Matrix<double> LocalPose() const override;
};

class C1DPositionerPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "1DPositioner"; }
  std::string GetDataFolder() override { return "1dpositioner"; }
  std::string GetName() override { return "Orvel 1D positioner"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "links"; }
};

}  // namespace orv::rws::addon
