#include "unidevice/EmulatedTrinaryDevice.h"

#include <gtest/gtest.h>

#include "TestDevice.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/EmulatedTControl.h"
#include "unidevice/Property.h"

namespace orv::unidevice {
namespace {

std::string element(const std::string& children, const std::string& index = "0") {
  return "<control device=\"TrinaryEmulator\" index=\"" + index + "\" type=\"control\">" +
         "<description>any</description>" + children + "</control>";
}

std::string part(const std::string& attributes) {
  return "<control " + attributes + "/>";
}

const std::string kUp = "device=\"Keyboard\" index=\"0\" type=\"Up_Arrow\"";
const std::string kDown = "device=\"Keyboard\" index=\"0\" type=\"Down_Arrow\"";
const std::string kPlus = " te_direction=\"positive\"";
const std::string kMinus = " te_direction=\"negative\"";

/// The emulator, and a keyboard for the time of a test.
struct Rig {
  Control* resolve(const std::string& text) { return all.findControl(parseTag(text)); }

  DriverManager& all = DriverManager::instance();
  EmulatedTrinaryDevice& emulator =
      *static_cast<EmulatedTrinaryDevice*>(all.findDevice("TrinaryEmulator"));
  TestDriver keys{"keys"};
  TestDevice* keyboard = keys.plug("Keyboard", {"Up_Arrow", "Down_Arrow"});
};

TEST(EmulatedTrinary, TwoKeysMakeOneSignedControl) {
  Rig rig;
  const util::xml::Tag tag = pairTag({"Keyboard", "Up_Arrow", 0}, {"Keyboard", "Down_Arrow", 0});
  Control* control = rig.all.findControl(tag);
  ASSERT_NE(control, nullptr);
  EXPECT_EQ(tag.child("description").text(), control->description);
  EXPECT_EQ(control->description, "emulated control (Keyboard:Up_Arrow, Keyboard:Down_Arrow)");
  EXPECT_EQ(control->index, rig.emulator.controlCount() - 1);
  Property property("Gas", "", kFiniteControl | kInfiniteControl);
  EXPECT_NE(property.bind(control), 0);
  for (const double up : {0.0, 1.0}) {
    for (const double down : {0.0, 1.0}) {
      rig.keyboard->hardware = {up, down};
      rig.all.updateAll();
      EXPECT_EQ(property.read(), up - down);
    }
  }
  // The directions decide which part counts positive.
  rig.keyboard->hardware = {1.0, 0.0};
  rig.all.updateAll();
  const std::tuple<std::string, std::string, double> rows[] = {
      {kPlus, kMinus, 1.0},
      {kMinus, kPlus, -1.0},
      {"", "", 1.0},
      {kMinus, kMinus, -1.0},
      {" te_direction=\"Negative\"", kMinus, 1.0}};
  for (const auto& [first, second, sign] : rows)
    EXPECT_EQ(rig.resolve(element(part(kUp + first) + part(kDown + second), "-1"))->read(), sign);
  control->current = 1.0;  // settling the emulator makes whatever stands there the baseline
  EXPECT_TRUE(rig.emulator.settle());
  EXPECT_EQ(control->previous, 1.0);
}

TEST(EmulatedTrinary, ASavedControlIsFoundAgainAndNotMadeTwice) {
  Rig rig;
  Control* control = rig.resolve(element(part(kUp + kMinus) + part(kDown + kPlus)));
  util::xml::Tag saved("");
  control->save(saved);
  const int count = rig.emulator.controlCount();
  EXPECT_EQ(rig.resolve(saved.toText()), control);
  EXPECT_EQ(rig.emulator.controlCount(), count);
  EXPECT_EQ(saved.child("control", 0).attribute("te_direction"), "positive");
  EXPECT_EQ(saved.child("control", 0).attribute("type"), "Down_Arrow");

  // Matching needs the index, both directions and exactly two parts.
  const std::string index = std::to_string(control->index);
  const std::string down = part(kDown + kPlus), up = part(kUp + kMinus);
  EXPECT_FALSE(control->matches(parseTag(element(up + down, "7" + index))));
  // Meant: a part without a direction is taken for the negative one here.
  for (const std::string& parts : {up + down, part(kUp) + down})
    EXPECT_TRUE(control->matches(parseTag(element(parts, index)))) << parts;
  for (const std::string& parts :
       {up + down + down, down, part(kUp + kPlus) + part(kDown + kMinus), up + part(kDown)})
    EXPECT_FALSE(control->matches(parseTag(element(parts, index)))) << parts;
}

TEST(EmulatedTrinary, IncompleteOrAbsentOrNestedPartsGiveNothing) {
  Rig rig;
  const int count = rig.emulator.controlCount();
  const std::string up = part(kUp + kPlus), down = part(kDown + kMinus);
  for (const std::string& children :
       {std::string(), up, up + "<control/>", up + part("device=\"\" index=\"0\""),
        up + part("device=\"\" type=\"Down_Arrow\""), part("index=\"0\" type=\"Up_Arrow\"") + down,
        up + part("device=\"Keyboard\" index=\"0\" type=\"F1\""),
        up + part("device=\"Pad\" index=\"0\" type=\"Down_Arrow\""), up + element(up + down)})
    EXPECT_EQ(rig.resolve(element(children)), nullptr) << children;
  util::xml::Tag elsewhere = parseTag(element(up + down));
  elsewhere.setAttribute("device", "Keyboard");  // not the emulator's business
  EXPECT_EQ(rig.all.findControl(elsewhere), nullptr);
  EXPECT_EQ(rig.emulator.controlCount(), count);
  EXPECT_NE(rig.resolve(element(up + part("device=\"\" index=\"0\" type=\"Down_Arrow\""))),
            nullptr);
}

TEST(EmulatedTrinary, ALostPartUnbindsAndItsReturnBindsAgain) {
  Rig rig;
  Property property("Gas");
  property.offset = 0.25;
  ASSERT_TRUE(property.load(
      parseTag("<property>" + element(part(kUp + kPlus) + part(kDown + kMinus)) + "</property>")));
  auto* control = static_cast<EmulatedTControl*>(property.control);
  ASSERT_NE(control, nullptr);
  rig.keyboard->control(0)->current = 1.0;
  EXPECT_EQ(property.read(), 1.25);
  rig.keyboard->destroy();
  EXPECT_EQ(property.read(), 0.25);
  EXPECT_EQ(control->read(), 0.0);
  EXPECT_FALSE(property.rebind());

  rig.keyboard = rig.keys.plug("Keyboard", {"Down_Arrow", "Up_Arrow"});
  EXPECT_TRUE(property.rebind());
  rig.keyboard->control(0)->current = 1.0;
  EXPECT_EQ(property.read(), -0.75);

  Control up(kBinaryControl, "Up", 0), tilt(kInfiniteControl, "Axis", 0);
  destroy(new EmulatedTControl(&up, &tilt, 0, nullptr));  // leaves its parts
  EXPECT_TRUE(up.targets.empty() && tilt.targets.empty());
}

}  // namespace
}  // namespace orv::unidevice
