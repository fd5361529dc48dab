// Calibration of hardware.
#include <gtest/gtest.h>

#include "TestDevice.h"
#include "unidevice/CalibrationMeasure.h"
#include "unidevice/Property.h"

namespace orv::unidevice {
namespace {

using Step = CalibrationMeasure::Step;

class Calibrating : public testing::Test {
 protected:
  ~Calibrating() override { table.replace({}); }
  void Look(CalibrationMeasure& measure, double value) {
    pedals->hardware[0] = value;
    pedals->update();
    measure.look();
  }

  TestDriver driver{"calibrated"};
  TestDevice* pedals = driver.plug("Pedals", {"Axis", "Axis"});
  CalibrationTable& table = DriverManager::instance().calibrations();
};

TEST_F(Calibrating, ActsBelowTheControlAndComesBackWithTheDevice) {
  const ControlChoice gas{"Pedals", "Axis", 0};
  table.set(gas, {Calibration::Kind::kPedal, -1.0, 0.8});
  pedals->update();
  EXPECT_EQ(pedals->control(0)->current, 0.0) << "0 is all that untouched hardware tells";
  const auto read = [](TestDevice* device, double value) {
    device->hardware[0] = device->hardware[1] = value;
    device->update();
    EXPECT_EQ(device->control(0)->hardware, value);
    EXPECT_EQ(device->control(1)->current, value) << "not calibrated";
    return device->control(0)->read();
  };
  EXPECT_EQ(read(pedals, -1.0), 0.0);
  EXPECT_NEAR(read(pedals, -0.1), 0.5, 1e-12);
  EXPECT_EQ(read(pedals, 0.8), 1.0);
  EXPECT_EQ(read(pedals, 0.9), 1.0);
  pedals->destroy();
  pedals = driver.plug("Pedals", {"Axis", "Axis"});
  EXPECT_EQ(read(pedals, 0.8), 1.0);
  table.set(gas, {Calibration::Kind::kAxis, 0.1, -0.9, 0.7});  // falls
  EXPECT_EQ(pedals->control(0)->read(), -1.0) << "acts at once";
  EXPECT_EQ(read(pedals, 0.1), 0.0);
  EXPECT_NEAR(read(pedals, 0.4), -0.5, 1e-12);
  EXPECT_EQ(read(pedals, -1.0), 1.0);
  EXPECT_TRUE(table.clear(gas));
  EXPECT_FALSE(table.clear(gas));
  EXPECT_EQ(pedals->control(0)->read(), -1.0);
}

TEST_F(Calibrating, MeasuresTheExtremesAndSaysWhyNot) {
  CalibrationMeasure pedal({"Pedals", "Axis", 0}, Calibration::Kind::kPedal);
  EXPECT_NE(pedal.next().filled().find("Pedals is not there"), std::string::npos);
  Look(pedal, 0.0);
  EXPECT_NE(pedal.next().filled().find("told nothing"), std::string::npos);
  Look(pedal, 1.0);
  Look(pedal, -0.98);
  EXPECT_NE(pedal.next().filled().find("moved by 1.98"), std::string::npos);
  for (const double value : {-0.98, -0.96, -0.99}) Look(pedal, value);
  EXPECT_FALSE(pedal.next());
  Look(pedal, -0.9);
  EXPECT_NE(pedal.next().filled().find("too near"), std::string::npos);
  for (const double value : {-0.9, 0.7, 0.6}) Look(pedal, value);
  EXPECT_FALSE(pedal.next());
  ASSERT_EQ(pedal.step(), Step::kDone);
  EXPECT_EQ(pedal.result(), (Calibration{Calibration::Kind::kPedal, -0.96, 0.7}));

  CalibrationMeasure stick({"Pedals", "Axis", 0}, Calibration::Kind::kAxis);
  for (const double value : {0.06, 0.02}) Look(stick, value);
  EXPECT_FALSE(stick.next());
  for (const double value : {0.0, -0.8}) Look(stick, value);
  EXPECT_FALSE(stick.next());
  Look(stick, -0.2);
  EXPECT_TRUE(stick.next()) << "the same end again";
  Look(stick, 0.9);
  EXPECT_FALSE(stick.next());
  EXPECT_EQ(stick.result(), (Calibration{Calibration::Kind::kAxis, 0.04, -0.8, 0.9}));
}

}  // namespace
}  // namespace orv::unidevice
