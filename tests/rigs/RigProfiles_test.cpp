// The profile files that come with the rigs, against what the rigs declare.
#include <filesystem>
#include <set>

#include "rigs/BareRig.h"

namespace orv::tests {
namespace {

namespace fs = std::filesystem;
using util::xml::Element;
using Items = std::map<std::string, std::string>;  ///< texts by number, label and group

class RigProfiles : public testing::Test {
 protected:
  RigProfiles() : m_session(AllKinds()) {}

  std::unique_ptr<BareRig> New(const std::string& kind) {
    return std::make_unique<BareRig>(static_cast<rws::core::InstanceManager&>(m_session.GetCore()),
                                     kind);
  }
  static fs::path Folder(const std::string& kind) {
    return fs::path(ORV_SOURCE_DIR) / "data" / Kind(kind).GetDataFolder();
  }
  static void Collect(const Element& from, Items& items) {
    for (const Element* child : from.children) {
      if (child->name == "group") Collect(*child, items);
      if (child->name == "item")
        items[child->attribute("id") + " " + child->attribute("label") + " in " +
              from.attribute("id") + " " + from.attribute("label")] =
            child->attribute("type") + ": " + child->text();
    }
  }
  static Items Written(BareRig& rig) {
    util::xml::Tag tag("");
    Items items;
    rig.GetConfig().Write(tag);
    Collect(tag, items);
    return items;
  }
  /// Each file's, checked against what the rig makes of it; `use` sees the rig then.
  std::map<std::string, Items> Read(const std::string& kind,
                                    const std::function<void(BareRig&)>& use = {}) {
    std::map<std::string, Items> profiles;
    for (const auto& entry : fs::directory_iterator(Folder(kind) / "configprofiles")) {
      SCOPED_TRACE(entry.path());
      Items& items = profiles[entry.path().stem().string()];
      const auto rig = New(kind);
      util::xml::Tag root("");
      EXPECT_EQ(root.load(entry.path().string()), 0);
      EXPECT_EQ(root.name + root.attribute("version"), "configprofile2.0");
      EXPECT_EQ(rig->GetConfig().Read(root), "");
      Collect(root, items);
      const Items written = Written(*rig);
      for (const auto& [item, text] : items) EXPECT_EQ(written.at(item), text) << item;
      if (use) use(*rig);
    }
    return profiles;
  }

 private:
  hl::HeadlessSession m_session;
};

TEST_F(RigProfiles, EveryProfileOfAKindHoldsTheSameParametersAndNoneChangesUnasked) {
  std::uint64_t hash = 14695981039346656037u;
  const auto add = [&hash](const std::string& text) {
    for (const unsigned char c : text) hash = (hash ^ c) * 1099511628211u;
  };
  for (rws::CCameraPlugin* kind : AllKinds()) {
    const auto profiles = Read(kind->GetId());
    for (const auto& [name, items] : profiles) {
      add(name);
      EXPECT_EQ(items.size(), profiles.begin()->second.size()) << name;
      for (const auto& [item, text] : items) {
        EXPECT_TRUE(profiles.begin()->second.count(item)) << name << " leaves it: " << item;
        add(item + text);
      }
    }
  }
  EXPECT_EQ(hash, 10361363783197994259u) << "a change to a profile is to be a choice";
}

TEST_F(RigProfiles, TheCarsAndTheTanksAreThoseOfANewRig) {
  Items fresh = Written(*New("CrawlerTracks"));
  const auto belts = Read("CrawlerTracks");
  for (const auto& [item, text] : belts.at("Tank")) EXPECT_EQ(fresh[item], text) << item;
  // The start profile is a new car with more rays.
  const auto car = New("4WheelerExt");
  car->GetConfig().FindAll("Ray Multiplier").at(0)->SetNumber(10.0);
  fresh = Written(*car);
  const auto profiles = Read("4WheelerExt", [](BareRig& rig) {
    const auto value = [&](const char* label) {
      return rig.GetConfig().FindAll(label).at(0)->GetNumber();
    };
    // A body that leans farther than its wheels reach would lift them.
    const double reach = 0.9 * 0.13 * value("Wheel Radius Multiplier") *
                         value("Suspension Length (Radius Relative)");
    EXPECT_LE(value("Maximum Forward Tilt Angle") * 0.5, reach);
    EXPECT_LE(value("Maximum Side Tilt Angle") * 0.29, reach);
  });
  for (const auto& [item, text] : profiles.at("Start Profile"))
    EXPECT_EQ(fresh[item], text) << item;
  for (const auto& [name, items] : profiles) {
    EXPECT_EQ(items.size(), fresh.size() - 5) << "all but the gauges, in " << name;
    for (const auto& [item, text] : items) EXPECT_EQ(item.find("Current V"), std::string::npos);
  }
}

TEST_F(RigProfiles, InputProfilesLoadIntoTheInputsThatTheyName) {
  for (rws::CCameraPlugin* kind : AllKinds()) {
    const auto rig = New(kind->GetId());
    util::xml::Tag root("");
    const fs::path folder = Folder(kind->GetId()) / "inputprofiles";
    if (rig->GetProperties().count() == static_cast<int>(rig->GetLiveSpinners().size())) {
      ASSERT_EQ(root.load((Folder(kind->GetId()) / "inputprofile.xml").string()), 0);
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
        unidevice::Property* input = rig->FindInput(child->attribute("name"));
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
}  // namespace orv::tests
