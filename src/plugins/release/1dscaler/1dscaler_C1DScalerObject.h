// One input that scales a node along the axes of a cage.
#pragma once

#include <string>

#include "plugins/common/OneChannelRig.h"
#include "plugins/common/RigFactory.h"

namespace orv::rws::addon {

/// The scale is 1 plus the output, in all three axes or in the chosen one. It stays above 0: a
/// scale of 0 or below would flatten or turn over what hangs on the node, which can't be undone by
/// scaling back.
class C1DScalerObject : public OneChannelRig {
 public:
  explicit C1DScalerObject(const CreationRecord& record);

 protected:
  util::Matrix<double> LocalPose() const override;
};

class C1DScalerPlugin : public RigFactory<1> {
 public:
  CCamera* CreateObject(const CreationRecord& record) override;
  std::string GetId() override { return "1DScaler"; }
  std::string GetDataFolder() override { return "1dscaler"; }
  std::string GetName() override { return "Orvel 1D scaler"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override;
  std::string GetLicenceFeature() override { return "links"; }
};

}  // namespace orv::rws::addon
