// Licences: what a file may be, and what rigs may do without one.
#include <sys/stat.h>

#include <cstdlib>

#include "core/instances/InstanceReference.h"
#include "support/CoreTest.h"
#include "util/xml/Base64.h"

namespace orv::tests {
namespace {

using Checker = rws::core::Licensing;
using rws::core::LicenceState;

/// Two keys of a vendor, made and used by the script that vendors use.
class Licensing : public DataRootTest {
 protected:
  Licensing() {
    plugin.feature = "probe";
    mine = MakeKey("mine.pem");
  }
  std::string MakeKey(const std::string& name) {
    Run("keys " + folder.path + "/" + name + " > " + folder.path + "/public");
    const auto bytes = util::xml::decodeBase64(folder.Read("public").substr(0, 44));
    return {bytes.begin(), bytes.end()};
  }
  void Run(const std::string& arguments) {
    const std::string script = std::string(ORV_SOURCE_DIR) + "/scripts/sign_licence.py ";
    ASSERT_EQ(std::system(("python3 " + script + arguments).c_str()), 0) << arguments;
  }
  std::string Sign(const std::string& features, const std::string& until,
                   const std::string& key = "mine.pem") {
    Run("sign --key " + folder.path + "/" + key + " --licensee 'Stüdio A' --features " + features +
        " --until " + until + " --id 17 -o " + Checker::GetPath());
    return folder.Read("licence.txt");
  }
  /// The licence as a new run of the program finds it on that day.
  Checker On(const std::string& day) {
    return Checker(mine, [day] { return day; });
  }
  void ExpectState(LicenceState state, const std::string& day, const std::string& told) {
    Checker licensing = On(day);
    EXPECT_EQ(licensing.GetState(), state) << licensing.GetText();
    EXPECT_NE(licensing.GetText().find(Checker::GetPath()), std::string::npos);
    EXPECT_NE(licensing.GetText().find(told), std::string::npos) << licensing.GetText();
    EXPECT_EQ(licensing.Allows("probe"), state == LicenceState::kValid);
    EXPECT_TRUE(licensing.Allows(""));
  }

  ProbePlugin other;
  std::string mine;
};

TEST_F(Licensing, EachStateNamesTheFileAndTheReason) {
  EXPECT_EQ(Checker("").GetState(), LicenceState::kNotNeeded);
  EXPECT_TRUE(Checker("").Allows("probe"));
  ExpectState(LicenceState::kMissing, "2027-01-01", "there is no licence");
  const std::string good = Sign("probe,camera", "2027-12-31");
  ExpectState(LicenceState::kValid, "2027-12-31", "valid until 2027-12-31");
  ExpectState(LicenceState::kExpired, "2028-01-01", "ended on 2027-12-31");
  EXPECT_NE(On("2027-01-01").WhyNot("rail").find("covers probe, camera, and not \"rail\""),
            std::string::npos);

  // A mail program's line ends, blanks and mark are no change; every other one is.
  std::string mailed = "\xEF\xBB\xBF\r\n";
  for (const char c : good) mailed += c == '\n' ? std::string(" \r\n\r\n") : std::string(1, c);
  folder.Write("licence.txt", mailed);
  ExpectState(LicenceState::kValid, "2027-01-01", "Stüdio A");
  const std::size_t signature = good.find("signature");
  for (std::size_t i = 0; i + 1 < good.size(); ++i) {
    if (good[i] == '\n') continue;
    std::string changed = good;
    changed[i] ^= 1;
    folder.Write("licence.txt", changed);
    EXPECT_FALSE(On("2027-01-01").Allows("probe")) << changed;
    folder.Write("licence.txt", good.substr(0, i));
    EXPECT_FALSE(On("2027-01-01").Allows("probe")) << i;
  }
  folder.Write("licence.txt", good + "features: all\n");
  ExpectState(LicenceState::kDamaged, "2027-01-01", "\"features\" twice");
  folder.Write("licence.txt", "note: x\n" + good);
  ExpectState(LicenceState::kTampered, "2027-01-01", "was changed after it was made");
  folder.Write("licence.txt", good.substr(0, signature));
  ExpectState(LicenceState::kDamaged, "2027-01-01", "no line \"signature\"");
  folder.Write("licence.txt", std::string(100000, 'x'));
  ExpectState(LicenceState::kDamaged, "2027-01-01", "far too long");
  MakeKey("theirs.pem");
  Sign("all", "2027-12-31", "theirs.pem");
  ExpectState(LicenceState::kOtherKey, "2027-01-01", "not made for this program");
  std::filesystem::remove(Checker::GetPath());
  std::filesystem::create_directory(Checker::GetPath());
  ExpectState(LicenceState::kUnreadable, "2027-01-01", "it is no file");
  std::filesystem::remove(Checker::GetPath());
  std::filesystem::create_symlink(Checker::GetPath(), Checker::GetPath());
  ExpectState(LicenceState::kUnreadable, "2027-01-01", "can't be read");
}

TEST_F(Licensing, AClockThatIsSetBackIsSeenAndADamagedMemoryHarmsNobody) {
  Sign("all", "2030-12-31");
  const auto use = [this](const std::string& day) {
    Checker licensing = On(day);
    licensing.NoteUse();
    return licensing.GetState();
  };
  EXPECT_EQ(On("2027-05-09").GetState(), LicenceState::kValid);
  EXPECT_FALSE(std::filesystem::exists(Checker::GetSeenPath())) << "looking writes nothing";
  EXPECT_EQ(use("2027-05-10"), LicenceState::kValid);
  EXPECT_EQ(use("2027-05-09"), LicenceState::kValid) << "over the date line";
  ExpectState(LicenceState::kClockSetBack, "2027-05-08", "used on 2027-05-10 already");
  EXPECT_EQ(use("2027-05-01"), LicenceState::kClockSetBack);
  EXPECT_EQ(folder.Read("licence.seen"), "2027-05-10\n");
  EXPECT_EQ(On("2031-01-01").GetState(), LicenceState::kExpired);
  for (const std::string& damage : {std::string(), std::string("2027-05-"),
                                    std::string("\0\xff", 2), std::string("2027-13-01\n")}) {
    folder.Write("licence.seen", damage);
    EXPECT_EQ(use("2027-05-02"), LicenceState::kValid);
    EXPECT_EQ(folder.Read("licence.seen"), "2027-05-02\n");
  }
}

TEST_F(Licensing, WithoutTheFeatureARigOpensAndSavesAndIsNotMadeOrPerformed) {
  std::string warnings;
  rws::core::SetLogListener([&](rws::core::LogLevel level, const std::string& text) {
    if (level == rws::core::LogLevel::kWarning) warnings += text + "\n";
  });
  other.id = "Other";
  Start({&plugin, &other});
  const std::string rig = core->CreateTool("Probe");
  plugin.last->gain = 7.5;
  std::string problem;
  const util::xml::Tag record = core->SaveInstance(*core->FindInstance(rig), problem);
  core->DeleteAllTools();

  core->SetLicensing(On("2027-01-01"));
  EXPECT_EQ(core->CreateTool("Probe"), "");
  EXPECT_NE(warnings.find("there is no licence"), std::string::npos) << "as a box";
  EXPECT_EQ(core->CreateToolFromFactory("Probe", ""), nullptr);
  ASSERT_NE(core->LoadInstance(record, problem), nullptr) << problem;
  EXPECT_EQ(plugin.last->gain, 7.5);
  EXPECT_EQ(core->CloneTool(rig, problem), "");
  EXPECT_NE(problem.find("there is no licence"), std::string::npos);

  const std::size_t steps = plugin.log.steps.size();
  EXPECT_EQ(core->StartRecording(), rws::core::kNotLicensed);
  EXPECT_EQ(core->Resimulate(0.0, 1.0), rws::core::kNotLicensed);
  EXPECT_FALSE(core->IsRecording());
  ASSERT_NE(core->CreateTool("Other"), "");
  warnings.clear();
  ASSERT_EQ(core->BeginResimulation(0.0, 1.0), 0);
  while (core->StepResimulation()) {
  }
  core->EndResimulation();
  EXPECT_FALSE(other.log.steps.empty());
  EXPECT_EQ(plugin.log.steps.size(), steps) << "left out";
  EXPECT_NE(warnings.find("Left out, with its keys as they are: " + rig), std::string::npos);

  warnings.clear();
  util::xml::Tag scene("scene");
  core->SaveScene(scene);
  EXPECT_EQ(scene.children.size(), 2u);
  EXPECT_NE(warnings.find("Saved with rigs that can't be performed"), std::string::npos);
  EXPECT_FALSE(core->GetLibrary()
                   .Find("Probe")
                   ->GetConfigProfiles()
                   .SaveStartProfile(core->FindInstance(rig)->GetConfig())
                   .Done());

  Sign("probe", "2027-12-31");
  core->GetLicensing().Reload();
  EXPECT_NE(core->CreateTool("Probe"), "");
  EXPECT_EQ(folder.Read("licence.seen"), "2027-01-01\n");
  std::filesystem::remove(Checker::GetPath());
  EXPECT_EQ(core->StartRecording(), 0) << "what was found at the start holds";
  core->StopRecording();
}

}  // namespace
}  // namespace orv::tests
