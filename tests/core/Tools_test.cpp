// Tools, their creation of instances, libraries, preferences and the data root.
#include "core/services/Preferences.h"
#include "core/services/Resources.h"
#include "core/services/Translation.h"
#include "core/take/ResimulateWindow.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using rws::core::DataRoot;
using rws::core::Instance;
using rws::core::Tool;

class Tools : public DataRootTest {
 protected:
  Tools() { Start(); }
  /// A new run of the program.
  void Start(std::vector<rws::CCameraPlugin*> more = {}) {
    more.insert(more.begin(), &plugin);
    DataRootTest::Start(more);
    tool = core->GetLibrary().Find("Probe");
  }
  Instance& Create() { return *core->FindInstance(core->CreateTool("Probe")); }

  Tool* tool = nullptr;
};

TEST_F(Tools, ANewInstanceHasItsProfilesInMemoryAndWritesNothing) {
  plugin.ways.gainOfCreate = 2.0;
  Instance& first = Create();
  EXPECT_EQ(first.GetCurrentProfile(), "Start Profile");
  EXPECT_EQ(tool->GetConfigProfiles().GetNames(),
            (std::vector<std::string>{"Factory Settings", "Start Profile"}));
  EXPECT_EQ(tool->GetInputProfiles().GetNames(), std::vector<std::string>{"Start Profile"});
  EXPECT_EQ(plugin.log.callbacks,
            (std::vector<std::string>{"Gain", "Count", "On", "Gain", "Count", "On"}))
      << "both profiles";
  EXPECT_EQ(tool->GetInstances(), std::vector<Instance*>{&first});

  plugin.last->gain = 9.0;
  core->Delete(core->Find(first.GetInstanceName()), true);
  ASSERT_TRUE(adaptor.HostUndo());  // a rig that is loaded knows no values after Create
  EXPECT_EQ(plugin.last->gain, 9.0);
  EXPECT_EQ(core->LoadProfile("Probe_01", "Factory Settings"), "");
  EXPECT_EQ(plugin.last->gain, 2.0);
  EXPECT_NE(tool->GetConfigProfiles().Apply("Absent", *core->List(false)[0]), "");
  EXPECT_TRUE(std::filesystem::is_empty(folder.path));
  util::xml::Tag record("");
  tool->WriteSaveData(record);
  EXPECT_EQ(record.toText("", ""), R"(<RWT_Plugin version="2.5" type="Probe"/>)");
  core->DeleteAllTools();
  EXPECT_TRUE(tool->GetInstances().empty());
}

TEST_F(Tools, AStartProfileThatTheUserSavedOutlivesTheProgram) {
  Instance& first = Create();
  first.FindInput("Input")->multiplier = -2.5;
  plugin.last->gain = 33.0;
  EXPECT_EQ(tool->GetConfigProfiles().SaveStartProfile(first.GetConfig()).message,
            "Start Profile saved");
  EXPECT_TRUE(tool->GetInputProfiles().SaveStartProfile(first.GetProperties()).Done());
  Start();
  Instance& second = Create();
  EXPECT_EQ(plugin.last->gain, 33.0);
  EXPECT_EQ(second.FindInput("Input")->multiplier, -2.5);
  tool->GetConfigProfiles().Apply("Factory Settings", second);
  EXPECT_EQ(plugin.last->gain, 1.0);
}

TEST_F(Tools, KindsThatCannotBeUsedAreLeftOutAndNamed) {
  ProbePlugin old, twin, nameless, camera;
  old.id = "Old";
  old.version = 0x5AA4;
  nameless.id = "";
  camera.id = camera.category = "Camera";
  camera.folder = "motionfiltercam";
  Start({&old, &twin, nullptr, &nameless, &camera});
  ASSERT_EQ(errors.size(), 4u);
  EXPECT_NE(errors[0].find("Old"), std::string::npos);
  EXPECT_NE(errors[0].find("0x5AA4 in place of 0x5AA5"), std::string::npos);
  EXPECT_NE(errors[1].find("Probe"), std::string::npos);
  EXPECT_EQ(core->GetLibrary().GetCategories(), (std::vector<std::string>{"Accessory", "Camera"}));

  EXPECT_TRUE(core->GetLibrary().Find("Camera")->GetConfigProfiles().IsReadOnly("Bouncy"));
  core->GetLibrary().Load();  // a library loads once
  EXPECT_EQ(core->GetLibrary().GetTools().size(), 2u);
}

TEST_F(Tools, CarryEveryFactoryProfileUnderTheNameOfItsFile) {
  int files = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(std::string(ORV_SOURCE_DIR) + "/data")) {
    if (entry.path().extension() != ".ocp" && entry.path().extension() != ".oip") continue;
    const auto relative = std::filesystem::relative(entry.path(), ORV_SOURCE_DIR);
    std::string bytes, error;
    ASSERT_TRUE(rws::core::ReadResource(":/" + relative.string(), bytes, &error)) << error;
    util::xml::Tag root("");
    EXPECT_EQ(root.loadText(bytes), 0) << relative;
    // Found by name as it was found by file, or a user's copy would not replace it.
    EXPECT_EQ(root.attribute("name"), entry.path().stem()) << relative;
    ++files;
  }
  EXPECT_GT(files, 40);
  std::string bytes, error;
  EXPECT_FALSE(rws::core::ReadResource(":/data/absent.ocp", bytes, &error));
  EXPECT_NE(error.find(":/data/absent.ocp"), std::string::npos);
}

TEST_F(Tools, ShowTextsInTheUsersLanguageAndCarryTheIconsOfTheWindows) {
  using rws::core::Translate;
  EXPECT_EQ(rws::core::ListLanguages(), (std::vector<std::string>{"en", "de"}));
  EXPECT_EQ(Translate("Vehicle"), "Vehicle");
  EXPECT_FALSE(rws::core::LoadLanguage("xx"));
  EXPECT_TRUE(rws::core::LoadLanguage("de_AT"));
  EXPECT_EQ(rws::core::GetLanguage(), "de");
  EXPECT_EQ(Translate("Vehicle"), "Fahrzeug");
  EXPECT_EQ(Translate("No text of ours %1 %3 %", {"%2", "b"}), "No text of ours %2 %3 %");
  EXPECT_EQ(Translate("%1 out of %2 frames.", {"1", "2"}), "1 von 2 Bildern.");
  for (const char* words : {"", "vehi", "FAHR zeug", "zeug veh"})
    EXPECT_TRUE(rws::core::MatchesSearch("Vehicle", words)) << words;
  EXPECT_FALSE(rws::core::MatchesSearch("Vehicle", "fahr rad"));
  EXPECT_TRUE(rws::core::LoadLanguage("en"));
  EXPECT_EQ(Translate("Vehicle"), "Vehicle");
  std::string light, dark;
  EXPECT_TRUE(rws::core::ReadResource(":/data/core/images/icons/light/record_16.png", light));
  EXPECT_TRUE(rws::core::ReadResource(":/data/core/images/icons/dark/undo_48.png", dark));
  EXPECT_EQ(light.substr(1, 3) + dark.substr(1, 3), "PNGPNG");
}

TEST_F(Tools, PreferencesSurviveARestartAndDamageIsKept) {
  const std::string file = "data/core/preferences.xml";
  const std::string late = "<preference name=\"later\">x</preference>";
  core->GetPreferences().countdownSeconds = 5;
  EXPECT_TRUE(std::filesystem::is_empty(folder.path)) << "nothing but a save writes";
  ASSERT_TRUE(core->GetPreferences().Save(nullptr, {"countdown"}));
  folder.Write(file, "<preferences>" + late + folder.Read(file).substr(37));
  ASSERT_EQ(core->Resimulate(0.0, 1.0), 0);
  core->GetResimulateWindow().OnUpdateViewport(false);
  core->EndResimulation();
  Start();
  EXPECT_EQ(core->GetPreferences().countdownSeconds, 5);
  EXPECT_FALSE(core->GetPreferences().updateViewport);
  EXPECT_NE(folder.Read(file).find(late), std::string::npos) << folder.Read(file);

  rws::core::Preferences other;
  std::string error;
  const std::string wrong =
      R"(<preferences><preference name="Start Countdown time">-1</preference></preferences>)";
  for (const std::string& text :
       {std::string(), std::string("<preferences"), std::string("<other/>"), wrong}) {
    folder.Write(file, text);
    EXPECT_FALSE(other.Load()) << text;
    EXPECT_EQ(other.countdownSeconds, 0) << text;
    EXPECT_TRUE(other.updateViewport) << text;
    EXPECT_EQ(other.Save(&error, {"updateviewport"}), text == wrong) << text;
    const std::string now = folder.Read(file);
    EXPECT_TRUE(text == wrong ? now.find(">-1<") != std::string::npos : now == text) << now;
  }
  folder.Write("file", "");
  DataRoot::Set(folder.path + "/file");
  EXPECT_FALSE(other.Save(&error));
  EXPECT_NE(error.find("preferences.xml"), std::string::npos);
}

TEST_F(Tools, TheDataRootIsTheDocumentsFolderUnlessSaidOtherwise) {
  EXPECT_EQ(DataRoot::GetDataFolder(), folder.path + "/data");
  DataRoot::Set("relative/../here/");
  EXPECT_EQ(DataRoot::Get(), std::filesystem::current_path().string() + "/here");
  DataRoot::Set("");
  const std::string before = std::getenv("RIGWRIGHT_DATA_ROOT");
  setenv("RIGWRIGHT_DATA_ROOT", "/some/where", 1);
  EXPECT_EQ(DataRoot::Get(), "/some/where");
  setenv("RIGWRIGHT_DATA_ROOT", "", 1);
  const std::filesystem::path root = DataRoot::Get();
  setenv("RIGWRIGHT_DATA_ROOT", before.c_str(), 1);
  EXPECT_TRUE(root.is_absolute());
  EXPECT_EQ(root.parent_path().filename() / root.filename(), "Orvel Motion/rigwright");
}

}  // namespace
}  // namespace orv::tests
