// The profile files that come with the rigs, against what the rigs declare.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>
#include <set>

#include "plugins/release/all/AllRigs.h"
#include "support/FakeInterface.h"
#include "support/Templates.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::rws::addon {
namespace {

namespace fs = std::filesystem;
using tests::FakeInterface;
using tests::FakeWorld;
using tests::Kind;
using util::xml::Element;
using Values = std::map<std::string, double>;  ///< by label

fs::path Folder(CCameraPlugin& kind) {
  return fs::path(ORV_SOURCE_DIR) / "data" / kind.GetDataFolder();
}

double Value(const Element& item, const FakeInterface::Element& element) {
  double value = NAN;
  EXPECT_EQ(item.attribute("type"), element.number ? "blob" : "");
  if (!element.number) {
    EXPECT_TRUE(util::parseNumber(item.text(), value)) << item.text();
    return value;
  }
  const auto bytes = util::xml::decodeBase64(item.text());
  EXPECT_EQ(bytes.size(), 8u);
  if (bytes.size() == 8) std::memcpy(&value, bytes.data(), 8);
  return value;
}

/// Reads one file and checks it against the tree that the rig declares.
Values Read(const fs::path& file, FakeInterface& core) {
  Values values;
  util::xml::Tag root("");
  EXPECT_EQ(root.load(file.string()), 0) << file;
  EXPECT_EQ(root.name, "configprofile") << file;
  EXPECT_EQ(root.attribute("version"), "2.0") << file;
  for (const Element* group : root.children) {
    EXPECT_EQ(group->attribute("id"), "-1") << file;
    for (const Element* item : group->children) {
      int id = -1;
      EXPECT_TRUE(util::parseNumber(item->attribute("id"), id)) << file;
      const auto& element = core.elements.at(static_cast<std::size_t>(id));
      EXPECT_EQ(item->attribute("label"), element.label) << file;
      EXPECT_EQ(group->attribute("label"), element.group) << file;
      const double value = Value(*item, element);
      EXPECT_TRUE(value >= element.min && value <= element.max)
          << file << ": " << element.label << " is " << value;
      values[element.label] = value;
    }
  }
  return values;
}

/// What a new rig has.
double Fresh(FakeWorld& world, const std::string& label) {
  const auto& element = world.core.Find(label);
  return element.number ? *element.number : element.flag ? *element.flag * 1.0 : *element.choice;
}

std::map<std::string, Values> ReadAll(CCameraPlugin& kind) {
  std::map<std::string, Values> profiles;
  FakeWorld world(kind);
  for (const auto& entry : fs::directory_iterator(Folder(kind) / "configprofiles"))
    profiles[entry.path().stem().string()] = Read(entry.path(), world.core);
  return profiles;
}

TEST(RigProfiles, TheCamerasAndTheRailsProfilesHoldTheirTables) {
  const auto motion = ReadAll(Kind("MotionFilterCam"));
  const std::map<std::string, std::vector<double>> table = {
      {"Bouncy", {0, 60, 1, 0, 60, 1, 0}},
      {"Slightly Bouncy", {0, 30, 5, 0, 30, 5, 0}},
      {"High Frequency Bouncing", {0, 2000, 5, 0, 2000, 5, 0}},
      {"Smooth Filtering", {0, 30, 20, 0, 30, 20, 1}},
      {"Tight", {0, 1000, 20, 0, 1000, 20, 0}},
      {"Loose FollowCam", {0, 50, 10, 0, 30, 5, 0}},
      {"Strong FollowCam", {0, 100, 10, 0, 100, 5, 0}},
      {"Character FollowCam", {0, 100, 10, 0, 10, 5, 0}},
      {"DriveBy", {0, 30, 5, 0, 10, 5, 0}},
      {"Driver", {1, 30, 5, 0, 100, 7, 0}},
      {"Car Iron Rig", {1, 1000, 20, 0, 4000, 20, 0}},
  };
  const std::vector<std::string> labels = {
      "Fixate Translations",  "Translation Response Factor", "Translation Smoothing Factor",
      "Fixate Rotations",     "Rotation Response Factor",    "Rotation Smoothing Factor",
      "Rotation Max Velocity"};
  ASSERT_EQ(motion.size(), table.size());
  for (const auto& [name, row] : table) {
    Values want{{"Translation Max Velocity", 0.0}};
    for (std::size_t i = 0; i < labels.size(); ++i) want[labels[i]] = row[i];
    EXPECT_EQ(motion.at(name), want) << name;
  }
  const auto steady = ReadAll(Kind("SteadyCam"));
  ASSERT_EQ(steady.size(), 2u);
  Values row{{"Hide AttachedCam", 0},
             {"Hide FollowCam", 0},
             {"Translation Response Factor", 0.3},
             {"Rotation Response Factor", 0.4}};
  EXPECT_EQ(steady.at("FollowCam"), row);
  row["Translation Response Factor"] = 0.999, row["Rotation Response Factor"] = 0.7;
  EXPECT_EQ(steady.at("Character SteadyCam"), row);
  const auto rail = ReadAll(Kind("Spline Speed-Controller"));
  ASSERT_EQ(rail.size(), 1u);
  const std::pair<double, std::vector<const char*>> wanted[] = {
      {0.02, {"Banking Factor"}},
      {0.1, {"Acceleration Response Factor", "Rotation Response Factor"}},
      {0.9, {"Brake Softner"}},
      {1, {"Loop", "Use Orvel Curve Generation", "Closed Curve", "End Curve Straight"}},
      {1, {"Yaw Mode only"}},
      {2, {"Rotation Max Rate Of Change", "Tension In", "Tension Out"}},
      {10, {"Gravity Strength", "Speed", "Brake Percent", "Forward/Backward Maximum Speed"}}};
  Values want;
  for (const auto& [value, labels] : wanted)
    for (const char* label : labels) want[label] = value;
  EXPECT_EQ(rail.at("Gravity and Banking"), want);
}

TEST(RigProfiles, TheGunsAndTheTracksProfilesDeserveTheirNames) {
  auto gun = ReadAll(Kind("Firepower"));
  ASSERT_EQ(gun.size(), 6u);
  for (auto& [name, values] : gun) {
    EXPECT_EQ(values.size(), 21u) << name << ": what one sets, another must not leave";
    EXPECT_EQ(values["Rate of fire (rounds/s)"] == 0, name == "Handgun") << name;
    EXPECT_EQ(values["Bullets/discharge"] > 1, name == "Shotgun") << name;
    EXPECT_EQ(values["Time Delay"] > 0, name == "Minigun") << name;
    EXPECT_EQ(values["Set gravity affecting the bullets in flight"] == 0, name == "Laser") << name;
    EXPECT_EQ(values["elasticity (%)"] > 50, name == "Bouncing Balls") << name;
    EXPECT_EQ(values["Depth (%)"] > 20, name == "Cannon") << name;
  }
  auto tracks = ReadAll(Kind("CrawlerTracks"));
  ASSERT_EQ(tracks.size(), 4u);
  for (auto& [name, values] : tracks) {
    EXPECT_EQ(values.size(), 13u) << name << ": all of the motion, nothing of the wheels and steps";
    EXPECT_EQ(values["Bending Stiffness"] >= 0.3, name == "Rubber Track") << name;
    EXPECT_EQ(values["Friction"] <= 0.5, name == "Snow Cat") << name;
    EXPECT_EQ(values["Bending Damping"] < 0.5, name == "Loose Chain") << name;
  }
  // A tank is a new rig.
  FakeWorld world(Kind("CrawlerTracks"));
  for (const auto& [label, value] : tracks["Tank"]) EXPECT_EQ(value, Fresh(world, label)) << label;
}

TEST(RigProfiles, TheLinksProfilesDeserveTheirNames) {
  for (const std::string id : {"DirectInputLink", "1DPositioner", "1DRotator", "1DScaler"}) {
    CCameraPlugin& kind = Kind(id);
    auto profiles = ReadAll(kind);
    FakeWorld world(kind);
    const std::string channel = world.core.inputs.begin()->first;
    const std::pair<const char*, std::vector<double>> rows[] = {
        {"Immediate", {0, 0, 0}}, {"Quick", {0.5, 10, 0}}, {"Integrating Increase", {0.2, 20, 1}}};
    for (const auto& [name, row] : rows) {
      auto& values = profiles[name];
      EXPECT_EQ(
          (std::vector<double>{values[channel + " Response Factor"],
                               values[channel + " Change Limit"], values[channel + " Integrate"]}),
          row)
          << id << name;
    }
    for (auto& [name, values] : profiles) {
      EXPECT_EQ(values.size(), world.core.inputs.size() * 5) << id << name;
      EXPECT_EQ(values[channel + " Keep Trinary State"], name == "Trinary State (Keyboard)");
    }
    // A smaller factor follows more slowly.
    double before = 1.0;
    for (const char* name : {"Very Quick", "Quick", "Smooth", "Very Smooth"}) {
      const double factor = profiles.at(name)[channel + " Response Factor"];
      EXPECT_TRUE(factor < before && factor > 0.0) << id << ": " << name;
      before = factor;
    }
  }
  auto noRoll = ReadAll(Kind("DirectInputLink"));
  ASSERT_EQ(noRoll.size(), 8u);
  Values smooth = noRoll["Smooth"];
  smooth["Roll (Right/Left) Maximum"] = 0.0;
  EXPECT_EQ(noRoll["Smooth (no roll)"], smooth);
}

TEST(RigProfiles, TheCarsProfilesHoldTheirTellingRows) {
  CCameraPlugin& kind = Kind("4WheelerExt");
  auto profiles = ReadAll(kind);
  ASSERT_EQ(profiles.size(), 17u);
  FakeWorld world(kind);
  // The start profile is a new car with more rays.
  for (const auto& [label, value] : profiles["Start Profile"])
    EXPECT_EQ(value, label == "Ray Multiplier" ? 10.0 : Fresh(world, label)) << label;
  for (auto& [name, values] : profiles) {
    // All but a button and five gauges that the car computes.
    EXPECT_EQ(values.size(), world.core.elements.size() - 6) << name;
    EXPECT_EQ(values.count("Current Velocity"), 0u) << name;
    const bool animatable = name == "Boat (for animatable meshes)";
    const double rays = values["Ray Multiplier"];
    EXPECT_TRUE(animatable ? rays == 1.0 : rays == 10.0 || rays == 20.0) << name;
    const double wheel = values["Wheel Radius Multiplier"];
    EXPECT_TRUE(wheel >= 0.9 && wheel <= 0.98) << name;
    EXPECT_EQ(values["Autonomous Mode"], name.rfind("Autonomous mode", 0) == 0) << name;
    EXPECT_EQ(values["World Avoidance Sphere (scale relative)"],
              name == "5 unit Avoidance Sphere" ? 5.0 : 0.0);
    // A body that leans farther than its wheels reach would lift them.
    const double reach = 0.9 * 0.13 * wheel * values["Suspension Length (Radius Relative)"];
    EXPECT_LE(values["Maximum Forward Tilt Angle"] * 0.5, reach) << name;
    EXPECT_LE(values["Maximum Side Tilt Angle"] * 0.29, reach) << name;
  }
  const std::pair<std::string, Values> rows[] = {
      {"F1", {{"Front Stiffness", 8000}, {"Back Stiffness", 8000}, {"Front Damping", 400}}},
      {"F1", {{"Back Damping", 400}, {"Gas Pedal (Forw/Backw) Maximum", 15}}},
      {"Boat", {{"Front Stiffness", 200}, {"Back Stiffness", 200}, {"Front Damping", 20}}},
      {"Boat", {{"Back Damping", 20}, {"Tire Pressure", 0.3}, {"Skidding Offset Value", 0.1}}},
      {"Boat", {{"Steering Wheel (Right/Left) Maximum", 0.02}}},
      {"Boat", {{"Steering Wheel (Right/Left) Response Factor", 1.4}}},
      {"Toony Car", {{"Acceleration (scale relative)", 100}}},
      {"Autonomous mode - tight", {{"Tire Pressure", 0}}},
  };
  for (const auto& [name, row] : rows)
    for (const auto& [label, value] : row)
      EXPECT_EQ(profiles[name].at(label), value) << name << ": " << label;
  Values boat = profiles["Boat"];
  boat["Ray Multiplier"] = 1.0;
  EXPECT_EQ(profiles["Boat (for animatable meshes)"], boat);
}

TEST(RigProfiles, InputProfilesLoadIntoTheInputsThatTheyName) {
  for (CCameraPlugin* kind : tests::AllKinds()) {
    FakeWorld world(*kind);
    util::xml::Tag root("");
    const fs::path folder = Folder(*kind) / "inputprofiles";
    if (world.core.inputs.empty()) {
      ASSERT_EQ(root.load((Folder(*kind) / "inputprofile.xml").string()), 0);
      EXPECT_TRUE(root.name == "unidevice" && root.children.empty() && !fs::exists(folder));
      continue;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 3) << folder;
    for (const auto& entry : fs::directory_iterator(folder)) {
      const fs::path file = entry.path();
      ASSERT_EQ(root.load(file.string()), 0) << file;
      EXPECT_EQ(root.name, "profile");
      EXPECT_EQ(root.attribute("name").rfind("Example", 0), 0u);
      std::set<std::string> controls;
      for (const Element* child : root.children) {
        unidevice::Property* input = world.core.inputs[child->attribute("name")].get();
        ASSERT_TRUE(input) << file << child->attribute("name");
        EXPECT_TRUE(input->load(*child)) << file;
        // Without its device a rig rests, whatever its pedals rest at.
        EXPECT_EQ(input->offset, 0.0) << file;
        EXPECT_TRUE(controls.insert(input->savedControl.toText()).second) << "two inputs share one";
        const bool wheel = file.stem() == "Example Wheel";
        EXPECT_TRUE(wheel ? input->deadzone <= 0.1 : input->deadzone == 0.1) << file;
        if (kind->GetCategory() == "Vehicle") continue;
        const bool down = file.stem() == "Example Hat" && input->name == "Up/Down Transl";
        EXPECT_EQ(input->multiplier, down ? -1.0 : 1.0) << file;
      }
    }
  }
}

}  // namespace
}  // namespace orv::rws::addon
