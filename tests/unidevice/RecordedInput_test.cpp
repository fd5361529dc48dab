#include "unidevice/software/RecordedInput.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "TestDevice.h"
#include "support/GermanLocale.h"
#include "support/TempFolder.h"
#include "unidevice/Control.h"
#include "unidevice/DriverManager.h"
#include "unidevice/Property.h"
#include "unidevice/software/SoftwareDevice.h"

namespace orv::unidevice {
namespace {

/// Knows "gas", also as "Car_01:gas", and all names in braces.
RecordedInput::Resolution resolve(const std::string& name) {
  if (name == "gas" || name == "Car_01:gas") return {true, "Car_01:gas", ""};
  if (!name.empty() && name.front() == '{') return {true, name, ""};
  return {false, "", "the scene's inputs are gas and {..} (see rigwright info)"};
}

TEST(RecordedInput, EachDamageIsRefusedWithItsPlace) {
  const std::string head = "time,gas,{b}\n";
  // A text, and how the message begins behind the file's name.
  const std::pair<std::string, std::string> damages[] = {
      {"", "line 1, column 1: the file is empty"},
      {"\xEF\xBB\xBF", "line 1, column 1: the file is empty"},
      {"gas,{b}\n0,1\n", "line 1, column 1: the header begins with \"gas\""},
      {"time;gas\n0;1\n", "line 1, column 1: the header begins with \"time;gas\""},
      {std::string("\xFF\xFEt\0i\0", 6), "line 1, column 1: the header begins with"},
      {"time\n0\n", "line 1, column 2: the header names no input"},
      {"time,{a},brake\n", "line 1, column 3: unknown column \"brake\": the scene's"},
      {"time,gas,\n", "line 1, column 3: unknown column \"\""},
      {"time,gas,{b},Car_01:gas\n", "line 1, column 4: column \"Car_01:gas\" names the same"},
      {head, "line 2, column 1: there are no rows"},
      {head + "0,1,2\n0.1,nan,2\n", "line 3, column 2: \"nan\" is not finite"},
      {head + "-inf,1,2\n", "line 2, column 1: \"-inf\" is not finite"},
      {head + "0,1,full\n", "line 2, column 3: \"full\" is not a number"},
      {head + "0,1 2,3\n", "line 2, column 2: \"1 2\" is not a number"},
      {head + "0,0x10,3\n", "line 2, column 2: \"0x10\" is not a number"},
      {head + "0,1e999,3\n", "line 2, column 2: \"1e999\" is not a number"},
      {head + "0,,3\n", "line 2, column 2: the field is empty"},
      {head + "0,0,5,1\n", "line 2, column 4: the row has 4 fields, the header 3"},
      {head + "0,1,2\n1,2\n", "line 3, column 3: the row has 2 fields, the header 3"},
      {head + "0,1,2\n0.04,1", "line 3, column 3: the row has 2 fields"},
      {head + "0,1,2\n0.0,1,2\n", "line 3, column 1: the time \"0.0\" does not rise"},
      {head + "0,1,2\n1,1,2\n0.5,1,2\n", "line 4, column 1: the time \"0.5\" does not"},
      {head + "0,1,2\n\n1,1,2\n", "line 3, column 1: the line is empty"},
      {head + "0,1,\"2\n1,1,2\n", "line 2, column 3: the quote that opens here"},
      {head + "0,\"1\"x,2\n", "line 2, column 2: there is text behind"},
      {head + "0,1\"2,2\n", "line 2, column 2: a quote stands inside"},
      {"time,\"{a\nb}\"\n0,1\nx,1\n", "line 4, column 1: \"x\" is"},
      {"time,gas\r\n0,1\r\n1,?\r\n", "line 3, column 2: \"?\" is not a number"},
  };
  for (const auto& [text, message] : damages) {
    RecordedInput input;
    input.columns.push_back({"kept", "kept", {}});
    std::string error;
    EXPECT_FALSE(input.parse(text, "run.csv", resolve, error)) << text;
    EXPECT_EQ(error.rfind("run.csv: " + message, 0), 0u) << text << ": " << error;
    EXPECT_EQ(error.back(), ')') << text << ": says not what to do: " << error;
    EXPECT_EQ(input.columns[0].name, "kept") << text;
  }
  std::string error;
  EXPECT_FALSE(RecordedInput().load("/nonexistent/run.csv", resolve, error));
  EXPECT_NE(error.find("/nonexistent/run.csv"), std::string::npos);
}

TEST(RecordedInput, DialectsOfTheSameTableReadAlike) {
  const std::string plain = "time,gas,{b}\n-0.5,1,0.25\n1,-2,1e-3\n";
  RecordedInput expected;
  std::string error;
  ASSERT_TRUE(expected.parse(plain, "a", resolve, error)) << error;
  EXPECT_EQ(expected.endTime(), 1.0);
  EXPECT_EQ(expected.value(0, 0.25), -0.5);
  EXPECT_EQ(expected.value(1, -9.0), 0.25);  // held outside
  EXPECT_EQ(expected.value(1, 9.0), 1e-3);
  EXPECT_EQ(expected.find("Car_01:gas"), 0);
  EXPECT_EQ(expected.find("gas"), -1);
  for (const char* text :
       {"\xEF\xBB\xBFtime,gas,{b}\r\n-0.5,1,0.25\r\n1,-2,1e-3\r\n",
        "time,gas,{b}\n-0.5,1,0.25\n1,-2,1e-3", "time,gas,{b}\n-0.5,1,0.25\n1,-2,1e-3\r\n\n\r\n",
        "time, gas ,\"{b}\"\n -.5,+1,\"0.25\"\n1.0,\t-2e0,.001\n"}) {
    RecordedInput input;
    ASSERT_TRUE(input.parse(text, "a", resolve, error)) << error;
    EXPECT_EQ(input.text(), expected.text()) << text;
  }
}

TEST(RecordedInput, WhatIsWrittenReadsBackBitForBitInAnyLocale) {
  const tests::GermanLocale german;
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> number(-1.0, 1.0);
  RecordedInput input;
  for (const char* name : {"{Gas Pedal (Forw/Backw), \"fine\"}", "{ a\nb }", "{c} "})
    input.columns.push_back({name, name, {}});
  for (int frame = -20; frame < 300; ++frame)
    for (auto& column : input.columns)
      column.track.set(frame * (1.0 / 59.94), std::ldexp(number(random), frame));
  const tests::TempFolder folder;
  const std::string path = folder.path + "/input.csv";
  std::string error;
  ASSERT_TRUE(input.save(path, error)) << error;
  RecordedInput back;
  ASSERT_TRUE(back.load(path, resolve, error)) << error;
  ASSERT_EQ(back.columns.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(back.columns[std::size_t(i)].name, input.columns[std::size_t(i)].name);
    EXPECT_EQ(back.columns[std::size_t(i)].track, input.columns[std::size_t(i)].track);
  }
}

TEST(RecordedInput, TracksOfDifferentTimesShareTheRowsOfAFile) {
  RecordedInput input;
  for (const char* name : {"a", "b", "never recorded"}) input.columns.push_back({name, name, {}});
  input.columns[0].track.set(0.0, 1.0);
  input.columns[0].track.set(2.0, 3.0);
  input.columns[1].track.set(1.0, 5.0);
  EXPECT_EQ(input.text(), "time,a,b,never recorded\n0,1,5,0\n1,2,5,0\n2,3,5,0\n");
}

TEST(RecordedInput, TheSoftwareDevicePlaysTheTrackThatAResimulationWouldRead) {
  RecordedInput input;
  std::string error;
  ASSERT_TRUE(input.parse("time,gas\n0,0.1\n0.7,0.9\n1.1,-0.3\n", "a", resolve, error)) << error;
  const util::AVar_Linear<double> track = input.columns[0].track;
  double now = 0.0;
  auto* device = new SoftwareDevice(input, [&now] { return now; });
  DriverManager& all = DriverManager::instance();
  ASSERT_EQ(all.findDevice(SoftwareDevice::kName), device);
  Property property("gas");
  property.offset = 0.5;
  property.bind(device->controlFor("Car_01:gas"));
  for (int frame = -5; frame < 40; ++frame) {
    now = frame / 25.0;
    all.updateAll();
    EXPECT_EQ(property.raw(), track.value(now));
  }
  EXPECT_EQ(device->controlFor("gas"), nullptr);
  // A profile for any device must not pick it by accident.
  EXPECT_EQ(all.findControl(parseTag("<control index='0' type='Axis'/>")), nullptr);
  device->destroy();
  EXPECT_EQ(all.findDevice(SoftwareDevice::kName), nullptr);
  EXPECT_EQ(property.read(), 0.5);
}

}  // namespace
}  // namespace orv::unidevice
