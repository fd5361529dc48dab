#include "unidevice/Property.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "TestDevice.h"
#include "support/GermanLocale.h"
#include "unidevice/FFEffect.h"
#include "unidevice/PropertyHandler.h"

namespace orv::unidevice {
namespace {

double readAt(Property& property, Control& control, double raw) {
  control.current = raw;
  return property.read();
}

TEST(Property, TheCurveTakesTheDeadZoneOutAndStretchesTheRest) {
  Control control(kInfiniteControl, "Axis", 0);
  Property property("Gas");
  property.bind(&control);
  // Against the inverse of the curve: from a wanted output back to the raw value.
  for (const double exponent : {0.5, 1.0, 1.3, 3.0}) {
    for (const double deadzone : {0.0, 0.1, 0.6}) {
      property.exponent = exponent;
      property.deadzone = deadzone;
      property.multiplier = -2.5;
      property.offset = 0.25;
      for (double y = 0.05; y <= 1.0; y += 0.05) {
        const double raw = deadzone + (1.0 - deadzone) * std::pow(y, 1.0 / exponent);
        EXPECT_NEAR(readAt(property, control, raw), -2.5 * y + 0.25, 1e-12);
        EXPECT_NEAR(readAt(property, control, -raw), 2.5 * y + 0.25, 1e-12);
      }
      EXPECT_EQ(readAt(property, control, deadzone), 0.25);
    }
  }
  property.exponent = 0.0;  // any movement at all, and none, is full: x^0 is 1
  EXPECT_EQ(readAt(property, control, 0.0), -2.25);
}

TEST(Property, NoNaNOrInfinityIsEverRead) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Control control(kInfiniteControl, "Axis", 0);
  Property property("Gas");
  property.bind(&control);
  property.multiplier = 2.0;
  property.offset = 0.5;
  for (const double exponent : {0.0, 1.0, 1.3}) {
    property.exponent = exponent;
    property.deadzone = 1.0;
    for (const double raw : {0.0, 1.0, -1.0, 2.0, nan, inf, -inf})
      EXPECT_EQ(readAt(property, control, raw), 0.5) << exponent << " " << raw;
  }
  // Every combination of odd values in all fields.
  const double odd[] = {0.0, 1.0, -1.0, 0.1, 1e308, -1e308, 1e-308, 2.0, nan, inf, -inf};
  for (const double raw : odd)
    for (const double deadzone : odd)
      for (const double exponent : odd)
        for (const double multiplier : odd)
          for (const double offset : odd) {
            property.deadzone = deadzone, property.exponent = exponent;
            property.multiplier = multiplier, property.offset = offset;
            ASSERT_TRUE(std::isfinite(readAt(property, control, raw)));
          }
}

TEST(Property, BindingMovesBetweenControlsAndReportsTheCommonKinds) {
  Control axis(kInfiniteControl, "Axis", 0);
  auto button = std::make_unique<Control>(kBinaryControl, "Button", 0);
  Property property("Gas", "", kInfiniteControl | kFiniteControl);
  property.multiplier = 2.0;
  property.offset = 0.75;
  EXPECT_EQ(property.bind(&axis), 4);
  EXPECT_EQ(property.bind(button.get()), 0);  // doesn't fit, and is bound all the same
  EXPECT_TRUE(axis.targets.empty());
  button->current = 1.0;
  EXPECT_EQ(property.read(), 2.75);
  button.reset();
  EXPECT_EQ(property.control, nullptr);
  EXPECT_EQ(property.read(), 0.75);
  EXPECT_EQ(property.bind(nullptr), 65535);

  {
    Property shortLived("Brake");
    shortLived.bind(&axis);
    property.bind(&axis);
    EXPECT_EQ(axis.targets.size(), 2u);
  }
  EXPECT_EQ(axis.targets, std::vector<ControlTarget*>{&property});
  for (const double value : {0.5, 0.7}) axis.push(value);
  EXPECT_TRUE(axis.previous == 0.5 && property.raw() == 0.7);
}

std::string g_told;

/// Notes the order of news, and takes another target along when told.
struct Listener : ControlTarget {
  void controlGone(Control*) override {
    g_told += victim ? "with a victim " : "alone ";
    victim.reset();
  }
  std::unique_ptr<Property> victim;
};

TEST(Property, TargetsAreToldInOrderEvenIfOneDestroysAnother) {
  auto control = std::make_unique<Control>(kInfiniteControl, "Axis", 0);
  Listener first, second, third;
  control->targets = {&first, &second};
  second.victim = std::make_unique<Property>("Gas");
  second.victim->bind(control.get());
  control->targets.push_back(&third);
  control.reset();
  EXPECT_EQ(g_told, "alone with a victim alone ");
}

TEST(Property, AProfileElementRoundTripsInAnyLocale) {
  const tests::GermanLocale german;
  TestDriver pads("pads");
  TestDevice* pad = pads.plug("Pad \"<1>\" & co", {"Axis", "Axis", "Button"});
  Property property("Gas Pedal (Forw/Backw)");
  property.multiplier = -1.0 / 3.0;
  property.exponent = 1.3;
  property.deadzone = 5e-324;
  property.offset = 1e22;
  property.assign(pad->control(1));
  util::xml::Tag written("");
  property.save(written);
  const std::string text = written.toText("", "");
  EXPECT_EQ(text.substr(0, text.find("<control")),
            "<property name=\"Gas Pedal (Forw/Backw)\"><multiplier>-0.3333333333333333</multiplier>"
            "<exponent>1.3</exponent><deadzone>5e-324</deadzone><offset>1e+22</offset>");

  Property other("other");
  ASSERT_TRUE(other.load(parseTag(written.toText())));
  util::xml::Tag again("");
  other.name = property.name;
  other.save(again);
  EXPECT_EQ(again, written);
  EXPECT_EQ(other.control, pad->control(1));

  // Bad numbers keep the old value and are reported; the rest is read.
  EXPECT_FALSE(
      other.load(parseTag("<property><multiplier>nan</multiplier><exponent>2,5</exponent>"
                          "<deadzone> 0.2\n</deadzone><offset>1e999</offset></property>")));
  EXPECT_EQ(other.multiplier, property.multiplier);
  EXPECT_EQ(other.exponent, 1.3);
  EXPECT_EQ(other.deadzone, 0.2);
  EXPECT_EQ(other.offset, property.offset);
  EXPECT_EQ(other.control, nullptr);  // no control child: unmapped
  EXPECT_TRUE(other.savedControl.name.empty());
  EXPECT_TRUE(other.load(parseTag("<property><exponent>3</exponent></property>")));
}

TEST(Property, AMappingSurvivesUnplugSaveAndReturn) {
  TestDriver pads("pads");
  TestDevice* pad = pads.plug("Pad", {"Axis", "Axis"});
  PropertyHandler handler;
  Property* gas = handler.add(std::make_unique<Property>("Gas"));
  Property* brake = handler.add(std::make_unique<Property>("Brake"));
  gas->offset = 0.5;
  gas->assign(pad->control(0));
  brake->assign(pad->control(1));
  util::xml::Tag before("");
  gas->save(before);
  const std::uint64_t seen = DriverManager::generation();
  pad->control(0)->current = 1.0;
  EXPECT_EQ(gas->read(), 1.5);

  pad->destroy();
  EXPECT_EQ(gas->read(), 0.5);
  EXPECT_NE(DriverManager::generation(), seen);
  util::xml::Tag away("");
  gas->save(away);
  EXPECT_EQ(away, before);
  EXPECT_EQ(handler.rebind(), 0);
  brake->assign(nullptr);  // the user has unmapped this one meanwhile

  pads.plug("Other", {"Axis"});
  EXPECT_EQ(handler.rebind(), 0);
  pad = pads.plug("Pad", {"Axis", "Axis"});
  EXPECT_EQ(handler.rebind(), 1);
  EXPECT_EQ(gas->control, pad->control(0));
  EXPECT_EQ(brake->control, nullptr);

  // A resimulation's control of no device stands in: the mapping that is saved stays.
  Control temporary(65535, "Temporary control", 0);
  gas->bind(&temporary);
  gas->save(away);
  EXPECT_EQ(away, before);
  EXPECT_EQ(handler.find("Brake"), brake);
  EXPECT_TRUE(!handler.find("brake") && !handler.property(-1) && !handler.property(2));
}

}  // namespace
}  // namespace orv::unidevice
