// Finding the control that the user moves.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "TestDevice.h"
#include "unidevice/ControlFinder.h"
#include "unidevice/Property.h"

namespace orv::unidevice {
namespace {

using State = ControlFinder::State;

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
