// Profiles of every file form, and what the user is told about them.
#include <gtest/gtest.h>

#include <tuple>

#include "core/config/ConfigProfileManager.h"
#include "core/config/ConfigTree.h"
#include "core/config/InputProfileManager.h"
#include "core/services/Resources.h"
#include "support/TempFolder.h"
#include "unidevice/Property.h"
#include "unidevice/PropertyHandler.h"

namespace orv::tests {
namespace {

using rws::core::ConfigProfileManager;
using rws::core::InputProfileManager;
using rws::core::ProfileResult;
using util::xml::Tag;
using Answer = ProfileResult::Answer;

constexpr char kReadOnly[] =
    "The specified profile is considered read-only and cannot be overwritten.";

/// Two groups that share a label.
struct TwoGroups {
  TwoGroups() {
    tree.BeginGroup("Front", "");
    tree.AddCheckBox("On", "", &on, nullptr);
    tree.AddSpinner("Factor", "", &front, 0, 100, 1, 2, nullptr);
    tree.EndGroup();
    tree.BeginGroup("Rear", "");
    tree.AddSpinner("Factor", "", &rear, 0, 100, 1, 2, nullptr);
    tree.AddSpinnerInt("Count", "", &count, 0, 9, 1, nullptr);
    tree.EndGroup();
  }
  bool on = false;
  double front = 1.0, rear = 2.0;
  int count = 0;
  rws::core::ConfigTree tree;
};

class Profiles : public testing::Test {
 protected:
  static constexpr const char* kFactory = ":/data/motionfiltercam";  // holds "Bouncy" and others

  Profiles() : tool(folder.path + "/tool"), profiles(kFactory, tool) {
    rws::core::InitResources();
    profiles.Reload();
  }

  ProfileResult Save(const std::string& name, bool overwrite = false) {
    return profiles.Save(name, rig.tree, overwrite);
  }
  void Expect(const ConfigProfileManager& manager, const std::string& name, double front,
              double rear) {
    ASSERT_NE(manager.Find(name), nullptr) << name;
    TwoGroups fresh;
    EXPECT_EQ(fresh.tree.Read(*manager.Find(name)), "");
    EXPECT_EQ(std::pair(fresh.front, fresh.rear), std::pair(front, rear)) << name;
  }
  TempFolder folder;
  std::string tool;
  TwoGroups rig;
  ConfigProfileManager profiles;
};

TEST_F(Profiles, OfEveryFormGiveTheSameValuesAndThoseOfOldVersionsWarn) {
  const std::string old = R"(<profile name="A"><group expanded="true" name="Front">
      <button name="Reset"/><check name="On">true</check><spinner name="Factor">12.5</spinner>
      </group><group expanded="false" name="Rear"><spinner name="Factor">25</spinner>
      <spinner name="Count">4</spinner></group></profile><profile name="B"/>)";
  const std::string present = R"(<configprofile version="1.0" name="A"><group id="-1" label="Front">
      <item id="0" label="On">1</item><item id="1" type="blob" label="Factor">AAAAAAAAKUA=</item>
      </group><group id="-1" label="Rear"><item id="2" label="Factor">25</item>
      <item id="3" label="Count">4</item></group></configprofile>)";
  for (const std::string& text :
       {"<CameraConfig>" + old + "</CameraConfig>", "<ConfigProfile>" + old + "</ConfigProfile>",
        "<?xml version=\"1.0\"?><rws_config>" + old + "</rws_config>", present,
        "<configprofiles version=\"1.0\">" + present + "</configprofiles>"}) {
    Tag document("");
    ASSERT_EQ(document.loadText(text), 0) << text;
    std::vector<Tag> parsed;
    ASSERT_TRUE(ConfigProfileManager::Parse(document, "A", parsed)) << text;
    EXPECT_EQ(parsed.at(0).name, "configprofile");
    EXPECT_EQ(parsed[0].attribute("name"), "A");
    EXPECT_EQ(parsed[0].attribute("version"), "1.0");
    TwoGroups fresh;
    EXPECT_EQ(fresh.tree.Read(parsed[0]), "");
    EXPECT_EQ(std::tuple(fresh.on, fresh.front, fresh.rear, fresh.count),
              std::tuple(true, 12.5, 25.0, 4))
        << text;
    // Import turns each into the present form: only ids, and reals as blobs.
    ASSERT_TRUE(profiles.Import(folder.Write("import.xml", text), rig.tree, true).Done()) << text;
    const std::string file = folder.Read("tool/configprofiles/A.ocp");
    EXPECT_NE(file.find(R"(<item id="1" type="blob" label="Factor">AAAAAAAAKUA=</item>)"),
              std::string::npos)
        << file;
  }
  std::vector<Tag> none;
  EXPECT_FALSE(ConfigProfileManager::Parse(Tag("unidevice"), "A", none));
  Tag nameless("configprofile");
  ASSERT_TRUE(ConfigProfileManager::Parse(nameless, "Stem", none));
  EXPECT_EQ(none.at(0).attribute("name"), "Stem");

  folder.Write("tool/configprofiles/Old.ocp", R"(<configprofile version="1.0" name="Old"/>)");
  folder.Write("tool/configprofiles/New.ocp", R"(<configprofile version="2.0" name="New"/>)");
  profiles.Reload();
  EXPECT_EQ(profiles.GetVersionWarning("Old"),
            "This profile has been saved in an older version of Orvel Rigwright. Some old settings "
            "might not work well in the current version. Use it with caution.");
  EXPECT_EQ(profiles.GetVersionWarning("New") + profiles.GetVersionWarning("Bouncy"), "");
}

TEST_F(Profiles, AreSavedInAFileEachAndAskBeforeTheyAreOverwritten) {
  EXPECT_FALSE(folder.Has("tool"));
  rig.front = 7.25;
  EXPECT_EQ(Save("Mine").names, std::vector<std::string>{"Mine"});
  EXPECT_EQ(
      folder.Read("tool/configprofiles/Mine.ocp")
          .find("<?xml version=\"1.0\"?>\n<configprofile version=\"2.0\" name=\"Mine\">\n\t<g"),
      0u);
  rig.front = 8.0;
  EXPECT_EQ(Save("Mine").answer, Answer::kAsk);
  EXPECT_EQ(Save("Mine").message, "This will overwrite the profile");
  Expect(profiles, "Mine", 7.25, 2.0);
  EXPECT_TRUE(Save("Mine", true).Done());
  profiles.Reload();
  Expect(profiles, "Mine", 8.0, 2.0);

  // A file that is damaged or another profile's is never written over.
  folder.Write("tool/configprofiles/Taken.ocp", "damaged");
  folder.Write("tool/configprofiles/Other.ocp", R"(<configprofile version="2.0" name="Odd"/>)");
  profiles.Reload();
  EXPECT_TRUE(Save("Taken").Done() && Save("Other").Done());
  EXPECT_EQ(folder.Read("tool/configprofiles/Taken.ocp"), "damaged");
  profiles.Reload();
  Expect(profiles, "Taken", 8.0, 2.0);
  EXPECT_NE(profiles.Find("Odd"), nullptr);
}

TEST_F(Profiles, NamesFollowTheRules) {
  const std::string forbidden =
      "- name contains forbidden characters. \n The following characters are not allowed: \\ / : "
      "* ? \" < > | . , [ ] ;";
  for (const char c : std::string("\\/:*?\"<>|.,[];\n\x7f")) {
    const std::string name = std::string("a") + c + "b";
    EXPECT_EQ(Save(name).message, name + forbidden);
  }
  for (const char* name : {"", "  "})
    EXPECT_EQ(Save(name).message, "Please select or specify a profile");
  for (const char* name : {"Smooth (no roll)", "Ma\xC3\x9F", "a'b&c", "-", "Example of mine"}) {
    EXPECT_TRUE(Save(name).Done()) << name;
    profiles.Reload();
    Expect(profiles, name, 1.0, 2.0);
  }
  EXPECT_FALSE(Save(std::string(300, 'x')).Done());
  EXPECT_EQ(profiles.Find(std::string(300, 'x')), nullptr);
}

TEST_F(Profiles, OfTheFactoryCannotBeChangedButTheUsersOwnFileWins) {
  ASSERT_NE(profiles.Find("Bouncy"), nullptr);
  const Tag factory = *profiles.Find("Bouncy");
  for (const ProfileResult& result :
       {Save("Bouncy", true), profiles.Delete("Bouncy", true), profiles.Rename("Bouncy", "Mine")})
    EXPECT_EQ(result.message, kReadOnly);
  const std::string import = folder.Write("x.ocp", R"(<configprofile name="Bouncy"/>)");
  EXPECT_EQ(profiles.Import(import, rig.tree, true).message,
            "The profile already exists and cannot be overwritten.");

  folder.Write("tool/configprofile.xml",
               R"(<ConfigProfile><profile name="Bouncy"/><profile name="Kept"/></ConfigProfile>)");
  folder.Write("tool/configprofiles/Bouncy.ocp",
               R"(<configprofile version="2.0" name="Bouncy"><x/></configprofile>)");
  profiles.Reload();
  EXPECT_FALSE(profiles.IsReadOnly("Bouncy"));
  EXPECT_EQ(profiles.Find("Bouncy")->children.size(), 1u);
  EXPECT_TRUE(profiles.Delete("Bouncy", true).Done());
  EXPECT_EQ(profiles.Find("Bouncy")->attribute("version"), "1.0");  // the collective file's
  EXPECT_EQ(profiles.Delete("Kept", true).message, kReadOnly);
  EXPECT_EQ(Save("Kept").answer, Answer::kAsk);
  EXPECT_TRUE(Save("Kept", true).Done() && profiles.Delete("Kept", true).Done());
  std::filesystem::remove(tool + "/configprofile.xml");
  profiles.Reload();
  EXPECT_EQ(*profiles.Find("Bouncy"), factory);
  EXPECT_EQ(profiles.Find("Kept"), nullptr);
}

TEST_F(Profiles, AreRenamedAndDeletedWithTheirFiles) {
  for (const char* name : {"Old", "Other", "example one"}) Save(name);
  EXPECT_EQ(profiles.Rename("Old", "Other").message, "Other- name already exists.");
  EXPECT_EQ(profiles.Rename("Old", "a.b").message.substr(0, 5), "a.b- ");
  EXPECT_EQ(profiles.Rename("example one", "Mine").message, "Cannot rename example profiles.");
  EXPECT_EQ(profiles.Rename("Absent", "Mine").message, "Please select or specify a profile");
  EXPECT_TRUE(profiles.Rename("Old", "New").Done());
  EXPECT_FALSE(folder.Has("tool/configprofiles/Old.ocp"));
  EXPECT_NE(folder.Read("tool/configprofiles/New.ocp").find("name=\"New\""), std::string::npos);
  EXPECT_EQ(profiles.Find("Old"), nullptr);

  EXPECT_EQ(profiles.Delete("New", false).message, "Do you really want to delete the profile: New");
  EXPECT_TRUE(folder.Has("tool/configprofiles/New.ocp"));
  EXPECT_TRUE(profiles.Delete("New", true).Done());
  EXPECT_FALSE(folder.Has("tool/configprofiles/New.ocp"));
}

TEST_F(Profiles, FactorySettingsStayInMemoryAndAreNeverChanged) {
  rig.front = 3.0;
  profiles.RecordFactorySettings(rig.tree);
  profiles.EnsureStartProfile();
  rig.front = 50.0;
  for (const ProfileResult& result :
       {Save("Factory Settings", true), profiles.Rename("Factory Settings", "Mine"),
        profiles.Delete("Factory Settings", true), profiles.Rename("Bouncy", "Factory Settings")})
    EXPECT_EQ(result.message, kReadOnly);
  EXPECT_FALSE(profiles.Export("Factory Settings", folder.path + "/f.ocp").Done());
  EXPECT_FALSE(folder.Has("f.ocp"));
  EXPECT_TRUE(Save("Mine").Done());  // writes nothing else
  EXPECT_FALSE(folder.Has("tool/configprofiles/Start Profile.ocp"));
  folder.Write("tool/configprofiles/F.ocp",
               R"(<configprofile version="2.0" name="Factory Settings"/>)");
  profiles.Reload();
  Expect(profiles, "Factory Settings", 3.0, 2.0);
  Expect(profiles, "Start Profile", 3.0, 2.0);

  EXPECT_EQ(profiles.SaveStartProfile(rig.tree).message, "Start Profile saved");
  profiles.EnsureStartProfile();
  Expect(profiles, "Start Profile", 50.0, 2.0);
  EXPECT_TRUE(profiles.Delete("Start Profile", true).Done());
  profiles.EnsureStartProfile();
  Expect(profiles, "Start Profile", 3.0, 2.0);
}

TEST_F(Profiles, ThatAreDamagedAreLeftOutAndCannotBeImported) {
  Save("Good");
  folder.Write("tool/configprofile.xml", "<ConfigProfile><profile name='A'>");
  folder.Write("tool/configprofiles/Empty.ocp", "");
  folder.Write("tool/configprofiles/Cut.ocp", "<configprofile version=\"2.0\" na");
  folder.Write("tool/configprofiles/Foreign.ocp", "<html/>");
  std::filesystem::create_directories(tool + "/configprofiles/Folder.ocp");
  const std::vector<std::string> names = profiles.GetNames();
  profiles.Reload();
  EXPECT_EQ(profiles.GetNames(), names);

  for (const char* text : {"", "no tag", "<configprofile", "<html/>", "<ConfigProfile/>",
                           "<profile name=\"A\"/>", "<configprofiles/>", "absent"}) {
    const std::string file = folder.Write("g.ocp", text);
    if (text == std::string("absent")) std::filesystem::remove(file);
    const ProfileResult result = profiles.Import(file, rig.tree, true);
    EXPECT_EQ(result.answer, Answer::kRefused) << text;
    EXPECT_EQ(result.message, "The profile could not be imported.") << text;
  }
  EXPECT_EQ(profiles.GetNames(), names);
}

TEST_F(Profiles, ImportTakesAllOfAFileOrNothingAndExportWritesItBack) {
  const std::string two =
      folder.Write("two.xml", R"(<configprofiles version="2.0"><configprofile name="A"/>
      <configprofile name="a.b"/></configprofiles>)");
  EXPECT_EQ(profiles.Import(two, rig.tree, true).message.substr(0, 5), "a.b- ");
  EXPECT_EQ(profiles.Find("A"), nullptr);
  EXPECT_FALSE(folder.Has("tool"));

  rig.rear = 33.0;
  Save("Shared");
  const std::string copy = folder.path + "/copy.ocp";
  EXPECT_TRUE(profiles.Export("Shared", copy).Done());
  EXPECT_EQ(folder.Read("copy.ocp"), folder.Read("tool/configprofiles/Shared.ocp"));
  EXPECT_EQ(profiles.Import(copy, rig.tree, false).answer, Answer::kAsk);
  profiles.Delete("Shared", true);
  EXPECT_EQ(profiles.Import(copy, rig.tree, false).names, std::vector<std::string>{"Shared"});
  Expect(profiles, "Shared", 1.0, 33.0);

  const std::string notSaved = "The profile could not be saved";
  EXPECT_EQ(profiles.Export("Shared", folder.path + "/no/folder.ocp").message, notSaved);
  folder.Write("file", "");
  ConfigProfileManager blocked(kFactory, folder.path + "/file");
  blocked.Reload();
  const auto names = blocked.GetNames();
  EXPECT_EQ(blocked.Save("Mine", rig.tree, false).message, notSaved);
  EXPECT_EQ(blocked.GetNames(), names);
  profiles.SetWriteGate([] { return false; });
  EXPECT_EQ(Save("Mine").message, notSaved);
  EXPECT_FALSE(profiles.Export("Bouncy", folder.path + "/b.ocp").Done());
  EXPECT_FALSE(folder.Has("tool/configprofiles/Mine.ocp"));
}

TEST_F(Profiles, OfInputsGoByNameAndLeaveWhatTheyDoNotHold) {
  const std::string property = R"(<property name="Gas"><multiplier>-1</multiplier>
      <exponent>1.3</exponent><deadzone>nan</deadzone><offset>0.5</offset>
      <control device="Gone" index="1" type="Axis"/></property><property name="Removed"/>)";
  for (const std::string& text :
       {"<profile name=\"P\">" + property + "</profile>",
        "<inputprofile name=\"P\">" + property + "</inputprofile>",
        "<inputprofile><profile name=\"P\">" + property + "</profile></inputprofile>",
        "<unidevice><profile name=\"P\">" + property +
            "</profile><profile name=\"Q\"/></unidevice>"}) {
    TempFolder data;
    InputProfileManager inputs(":/data/absent", data.path);
    ASSERT_TRUE(inputs.Import(data.Write("in.oip", text), false).Done()) << text;
    EXPECT_EQ(data.Read("inputprofiles/P.oip").substr(22, 18), "<profile name=\"P\">");
    inputs.Reload();

    unidevice::PropertyHandler properties;
    auto* gas = properties.add(std::make_unique<unidevice::Property>("Gas", "", 7));
    auto* brake = properties.add(std::make_unique<unidevice::Property>("Brake", "", 7));
    brake->multiplier = 4.0;
    EXPECT_EQ(inputs.Apply("P", properties), "");
    EXPECT_EQ(std::tuple(gas->multiplier, gas->exponent, gas->deadzone, gas->offset),
              std::tuple(-1.0, 1.3, 0.1, 0.5))
        << "the refused number stays";
    EXPECT_EQ(brake->multiplier, 4.0);
    EXPECT_NE(inputs.Apply("Absent", properties), "");

    gas->multiplier = 1.0 / 3.0;
    EXPECT_TRUE(inputs.Save("R", properties, false).Done());
    gas->multiplier = 0.0;
    inputs.Reload();
    inputs.Apply("R", properties);
    EXPECT_EQ(gas->multiplier, 1.0 / 3.0);
    EXPECT_EQ(gas->savedControl.attribute("device"), "Gone");  // a device away keeps its mapping
  }
}

}  // namespace
}  // namespace orv::tests
