#include "unidevice/Device.h"

#include <gtest/gtest.h>

#include "TestDevice.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/EmulatedTControl.h"

namespace orv::unidevice {
namespace {

util::xml::Tag axisTag(const std::string& device, const std::string& index) {
  return parseTag("<control device='" + device + "' index='" + index + "' type='Axis'/>");
}

TEST(Device, DetectionPicksTheLargestChangeAndTheEarlierOfEqualOnes) {
  TestDriver pads("pads"), wheels("wheels");
  TestDevice* pad = pads.plug("Pad", {"Axis", "Axis", "Axis", "Button"});
  TestDevice* second = pads.plug("Second", {"Axis"});
  TestDevice* wheel = wheels.plug("Wheel", {"Axis"});
  DriverManager& all = DriverManager::instance();
  EXPECT_EQ(all.detect(nullptr), nullptr);
  EXPECT_EQ(pad->polls, 1);

  pad->control(0)->previous = 0.25;  // moves by exactly its threshold: not reported
  pad->control(0)->detectionThreshold = 0.25;
  EXPECT_EQ(all.detect(nullptr), nullptr);
  pad->control(0)->detectionThreshold = 0.2499;
  EXPECT_EQ(all.detect(nullptr), pad->control(0));

  pad->hardware = {0.25, -0.75, 0.75, 0.0};
  second->hardware = {0.75};
  wheel->hardware = {0.75};
  EXPECT_EQ(pad->detectControl(nullptr), pad->control(1));
  EXPECT_EQ(all.detect(nullptr), pad->control(1));
  std::vector<Control*> taken = {pad->control(1), pad->control(2)};
  EXPECT_EQ(all.detect(&taken), second->control(0));
  taken.push_back(second->control(0));
  EXPECT_EQ(all.detect(&taken), wheel->control(0));
  pad->hardware[3] = 1.0;
  EXPECT_EQ(all.detect(&taken), pad->control(3));

  pad->polls = 0;
  wheel->usable = false;
  EXPECT_TRUE(pads.driver->settle() && !wheels.driver->settle());
  EXPECT_EQ(pad->polls, 1001);
  EXPECT_EQ(pads.driver->detect(nullptr), nullptr);
  pad->clear();
  EXPECT_EQ(pad->control(3)->previous, 0.0);
  EXPECT_TRUE(pads.driver->activate() && !all.activateAll() && all.deactivateAll());
}

TEST(Device, AControlElementFindsItsDeviceOrTheFirstThatMatches) {
  TestDriver pads("pads"), wheels("wheels");
  TestDevice* pad = pads.plug("Pad", {"Axis", "Button"});
  TestDevice* wheel = wheels.plug("Wheel", {"Axis", "Axis", "Button"});
  DriverManager& all = DriverManager::instance();
  EXPECT_EQ(all.findControl(axisTag("", "0")), pad->control(0));
  EXPECT_EQ(all.findControl(axisTag("", "1")), wheel->control(1));
  EXPECT_EQ(all.findControl(axisTag("Wheel", "0")), wheel->control(0));
  EXPECT_EQ(all.findControl(axisTag("Pad", "1")), nullptr);
  EXPECT_EQ(all.findControl(axisTag("pad", "0")), nullptr);
  for (const char* index : {"", "x", "0x0", "0 ", "-1", "99999999999"})
    EXPECT_EQ(all.findControl(axisTag("", index)), nullptr) << index;
  EXPECT_EQ(all.findControl(util::xml::Element::empty()), nullptr);
  util::xml::Tag saved("");
  wheel->control(2)->save(saved);
  EXPECT_EQ(all.findControl(saved), wheel->control(2));
  wheel->save(saved);
  EXPECT_EQ(all.findControl(saved.child("control", 1)), wheel->control(1));
}

TEST(Device, AChoiceIsCheckedAgainstTheDeviceWhereItIsThere) {
  TestDriver pads("pads");
  pads.plug("Pad", {"Axis", "Button", "Button"});
  const std::string one = "Pad has 1 of the type Axis, numbered from 0 to 0";
  const std::string noType = "there is no such type of control", noKey = "there is no such key";
  const std::string once = "a keyboard has each key once, as number 0";
  // A choice, what is told, and a name that is offered instead.
  const std::tuple<ControlChoice, std::string, std::string> rows[] = {
      {{"Pad", "Button", 1}, "", ""},
      {{"Pad", "Axis", 1}, one, ""},
      {{"Pad", "Axs", 0}, "Pad has no control of the type Axs", "Axis"},
      {{"pad", "Axis", 0}, "there is no such device", "Pad"},
      {{"Wheel", "Slider", 9}, "", ""},
      {{"Wheel", "slider", 9}, noType, "Slider"},
      {{"Wheel", "Up_Arrow", 0}, "only a keyboard has keys", "Keyboard"},
      {{"", "Axis", 7}, "", ""},
      {{"", "Axsi", 7}, noType, "Axis"},
      {{"", "Up_Arrow", 1}, once, ""},
      {{"Keyboard", "W", 0}, "", ""},
      {{"Keyboard", "Hat", 0}, noKey, "W"},
      {{"TrinaryEmulator", "control", 0}, "its controls are made of two others", ""}};
  for (const auto& [choice, told, offered] : rows) {
    const ChoiceProblem problem = choice.check();
    EXPECT_EQ(problem.why, told) << choice.device << choice.type;
    const auto& known = problem.known;
    EXPECT_EQ(std::count(known.begin(), known.end(), offered), offered.empty() ? 0 : 1) << told;
  }
  EXPECT_TRUE(ControlChoice({"", "Button", 1}).present());
  EXPECT_FALSE(ControlChoice({"Wheel", "Button", 1}).present());
  for (const auto& [type, kind] : {std::pair("Hat", kFiniteControl),
                                   {"Slider", kInfiniteControl},
                                   {"Space", kBinaryControl},
                                   {"Button", kBinaryControl}})
    EXPECT_EQ(ControlChoice({"Wheel", type, 0}).kind(), kind) << type;
  EXPECT_EQ(EmulatedTControl::pairKind(kBinaryControl, kBinaryControl), kFiniteControl);
  EXPECT_EQ(EmulatedTControl::pairKind(kBinaryControl, kInfiniteControl), kInfiniteControl);
}

TEST(Device, DriversAreListedInOrderUnderUniqueNames) {
  DriverManager& all = DriverManager::instance();
  ASSERT_TRUE(all.find("dummydriver") && all.findDevice("TrinaryEmulator"));
  EXPECT_EQ(all.driver(0), all.find("dummydriver"));
  TestDriver pads("pads");
  const int count = all.count();
  EXPECT_FALSE(all.addDriver(std::make_unique<Driver>("pads")));
  EXPECT_EQ(all.count(), count);
  EXPECT_FALSE(all.removeDriver("dummydriver"));
  TestDevice* pad = pads.plug("Pad", {"Axis"});
  EXPECT_TRUE(pads.driver->removeDevice(pad));  // back to us
  EXPECT_FALSE(pads.driver->removeDevice(pad));
  EXPECT_EQ(pads.driver->device(0), nullptr);
  pad->destroy();
}

}  // namespace
}  // namespace orv::unidevice
