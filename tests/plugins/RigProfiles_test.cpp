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

TEST(RigProfiles, EveryProfileOfAKindHoldsTheSameParametersAndNoneChangesUnasked) {
  std::uint64_t hash = 14695981039346656037u;
  const auto add = [&hash](const std::string& text) {
    for (const unsigned char c : text) hash = (hash ^ c) * 1099511628211u;
  };
  for (CCameraPlugin* kind : tests::AllKinds()) {
    const auto profiles = ReadAll(*kind);
    for (const auto& [name, values] : profiles) {
      add(name);
      EXPECT_EQ(values.size(), profiles.begin()->second.size()) << name;
      for (const auto& [label, value] : values) {
        EXPECT_TRUE(profiles.begin()->second.count(label)) << name << " leaves it: " << label;
        add(label + util::exactText(value));
      }
    }
  }
  EXPECT_EQ(hash, 12060950530003635897u) << "a change to a profile is to be a choice";
}

TEST(RigProfiles, TheCarsAndTheTanksAreThoseOfANewRig) {
  CCameraPlugin& kind = Kind("4WheelerExt");
  auto profiles = ReadAll(kind), tanks = ReadAll(Kind("CrawlerTracks"));
  FakeWorld world(kind), tank(Kind("CrawlerTracks"));
  for (const auto& [label, value] : tanks["Tank"]) EXPECT_EQ(value, Fresh(tank, label)) << label;
  // The start profile is a new car with more rays.
  for (const auto& [label, value] : profiles["Start Profile"])
    EXPECT_EQ(value, label == "Ray Multiplier" ? 10.0 : Fresh(world, label)) << label;
  for (auto& [name, values] : profiles) {
    // All but a button and five gauges that the car computes.
    EXPECT_EQ(values.size(), world.core.elements.size() - 6) << name;
    EXPECT_EQ(values.count("Current Velocity"), 0u) << name;
    // A body that leans farther than its wheels reach would lift them.
    const double reach = 0.9 * 0.13 * values["Wheel Radius Multiplier"] *
                         values["Suspension Length (Radius Relative)"];
    EXPECT_LE(values["Maximum Forward Tilt Angle"] * 0.5, reach) << name;
    EXPECT_LE(values["Maximum Side Tilt Angle"] * 0.29, reach) << name;
  }
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
