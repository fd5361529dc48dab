#include "app/studio/script/ScriptDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "unidevice/ControlFinder.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"

namespace orv::tests {

TEST(ScriptDevice, IsCalibratedAndFoundAsHardwareIs) {
  using namespace unidevice;
  DriverManager& drivers = DriverManager::instance();
  drivers.calibrations().set({"Pad", "Axis", 0}, {Calibration::Kind::kPedal, -1.0, 1.0});
  drivers.addDriver(std::make_unique<Driver>(app::ScriptDevice::kDriver));
  auto* pad = new app::ScriptDevice("Pad", {2, 1, 1});
  pad->SetNoise(0.04);
  drivers.find(app::ScriptDevice::kDriver)->addDevice(pad);
  ControlFinder finder({});
  double most = 0.0;
  for (double now = 0.0; now < 3.0 && !finder.isOver(); now += 1.0 / 60.0) {
    if (now > 1.0) pad->Set("Axis0", -0.5);  // pressed a quarter
    if (now > 0.5 && now < 1.0) most = std::max(most, std::abs(pad->control(1)->current));
    drivers.updateAll();
    finder.look(now);
  }
  EXPECT_EQ(finder.text().filled(), "Found Pad: Axis 0.");
  EXPECT_NEAR(pad->control(0)->current, 0.25, 0.021);
  EXPECT_NEAR(pad->control(0)->hardware, -0.5, 0.041);
  EXPECT_GT(most, 0.02);
  EXPECT_LE(most, 0.04);
  EXPECT_TRUE(pad->Set("Hat1", 1.0));
  drivers.removeDriver(app::ScriptDevice::kDriver);
  drivers.calibrations().replace({});
}

}  // namespace orv::tests
