// Calibration of hardware, and finding the control that the user moves.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "TestDevice.h"
#include "unidevice/CalibrationMeasure.h"
#include "unidevice/ControlFinder.h"
#include "unidevice/Property.h"

namespace orv::unidevice {
namespace {

using Step = CalibrationMeasure::Step;
using State = ControlFinder::State;

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

/// Devices at 60 Hz: one that shakes, a pad with triggers that were not touched yet, and a wheel
/// that the pedals shake.
class Finding : public testing::Test {
 protected:
  /// Polls until the finder is over. `move` sets the hardware at a time.
  template <class Move>
  State Find(ControlFinder& finder, const Move& move, double end = 20.0) {
    for (; clock < end && !finder.isOver(); clock += 1.0 / 60.0) {
      for (double& value : shaky->hardware) value = 0.04 * noise(random);
      move(clock);
      for (Device* device : driver.driver->devices) device->update();
      finder.look(clock);
    }
    return finder.state();
  }
  static std::string Name(const ControlFinder& finder) {
    std::string name;
    for (const auto& movement : finder.found())
      name += movement.control.device + movement.control.type +
              std::to_string(movement.control.index) + (movement.direction < 0 ? "-" : "+");
    return name;
  }

  TestDriver driver{"finding"};
  TestDevice* shaky = driver.plug("Shaky", {"Axis", "Axis"});
  TestDevice* pad = driver.plug("Pad", {"Axis", "Axis", "Axis", "Button", "Button"});
  TestDevice* wheel = driver.plug("Wheel", {"Axis", "Axis"});
  std::mt19937 random{5};
  std::normal_distribution<double> noise;
  double clock = 0.0;
};

TEST_F(Finding, TheRightControlTwentyTimesOfTwenty) {
  for (int i = 0; i < 20; ++i) {
    for (TestDevice* device : {pad, wheel}) device->destroy();
    pad = driver.plug("Pad", {"Axis", "Axis", "Axis", "Button", "Button"});
    wheel = driver.plug("Wheel", {"Axis", "Axis"});
    const double from = clock + 0.1 + 0.15 * (i % 7);  // also before it has learned
    const double speed = 0.5 + 0.4 * i;                // of the movement (1/s)
    const auto ramp = [&](double t) { return std::clamp((t - from) * speed, 0.0, 1.0); };
    ControlFinder finder({kAnyControl, false, {}, 10.0});
    const auto move = [&](double t) {
      if (t < from) return;
      pad->hardware[2] = -1.0;  // tells its rest as soon as anything of the pad moves
      if (i % 4 == 0) pad->hardware[3] = 1.0;
      if (i % 4 == 1) pad->hardware[1] = -ramp(t);
      if (i % 4 == 2) pad->hardware[2] = 2.0 * ramp(t) - 1.0;
      if (i % 4 == 3) {
        wheel->hardware[1] = 1.0 - 2.0 * ramp(t);
        wheel->hardware[0] = t > from + 0.02 ? 0.2 * std::sin(40.0 * t) * (1.0 - ramp(t)) : 0.15;
      }
    };
    if (i % 4 == 3) wheel->hardware[1] = 1.0;
    ASSERT_EQ(Find(finder, move, clock + 12.0), State::kFound) << i << finder.text().filled();
    const char* const wanted[] = {"PadButton0+", "PadAxis1-", "PadAxis2+", "WheelAxis1-"};
    EXPECT_EQ(Name(finder), wanted[i % 4]) << i;
  }
}

TEST_F(Finding, KindsTakenControlsPairsAndTheEnd) {
  const auto press = [&](double from, std::size_t axis) {
    return [this, from, axis](double t) {
      pad->hardware[3] = t > from;
      pad->hardware[axis] = std::clamp(t - from, 0.0, 1.0);
    };
  };
  ControlFinder noAxis({kInfiniteControl, false, {{"Pad", "Axis", 0}}, 3.0});
  EXPECT_EQ(Find(noAxis, press(clock + 0.5, 0)), State::kTimedOut);
  EXPECT_EQ(noAxis.text().filled(), "Pad: Axis has moved, which another input has already.");
  ControlFinder noButton({kInfiniteControl, false, {}, 3.0});
  pad->hardware.assign(5, 0.0);
  const double late = clock + 0.5;
  EXPECT_EQ(Find(noButton, [&](double t) { pad->hardware[4] = t > late; }), State::kTimedOut);
  EXPECT_NE(noButton.text().filled().find("no control of its kind"), std::string::npos);

  pad->hardware.assign(5, 0.0);
  ControlFinder pair({kFiniteControl, true, {}, 3.0});
  const double from = clock;
  Find(pair, [&](double t) {
    pad->hardware[3] = t > from + 0.5 && t < from + 1.5;
    pad->hardware[4] = t > from + 1.0;
  });
  EXPECT_EQ(Name(pair), "PadButton0+PadButton1+");
  Property steering("Steering", {}, kAnyControl);
  util::xml::Tag mapping("property");
  mapping.addChild(pair.tag());
  steering.load(mapping);
  pad->hardware[3] = 0.0;
  pad->update();
  EXPECT_EQ(steering.raw(), -1.0);
  EXPECT_EQ(choicesOf(*steering.control), choicesOf(pair.tag()));

  ControlFinder gone({kAnyControl, false, {}, 1.0});
  gone.look(clock);
  pad->destroy();
  EXPECT_EQ(Find(gone, [](double) {}), State::kTimedOut);
  ControlFinder cancelled({});
  cancelled.look(clock);
  cancelled.cancel();
  EXPECT_EQ(cancelled.look(clock + 1.0), State::kCancelled);
}

}  // namespace
}  // namespace orv::unidevice
