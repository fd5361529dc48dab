// What windows need of devices, mappings and hot keys.
#include <filesystem>

#include "../unidevice/TestDevice.h"
#include "core/HotKeys.h"
#include "core/config/InputConflicts.h"
#include "core/services/CalibrationFile.h"
#include "core/take/Diagnosis.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using namespace rws::core;
using unidevice::Calibration;
using Kind = Reason::Kind;

class Inputs : public DataRootTest {
 protected:
  Inputs() { Begin(); }
  ~Inputs() override {
    core.reset();
    unidevice::DriverManager::instance().calibrations().replace({});
  }
  void Begin() { Start({&plugin}); }
  Instance& Rig(std::size_t i) { return *core->List(false).at(i); }

  unidevice::TestDriver driver{"inputs"};
  unidevice::TestDevice* pad = driver.plug("Pad", {"Axis", "Button"});
};

TEST_F(Inputs, CalibrationsOutliveTheProgramAndADamagedFileIsLeftAlone) {
  const unidevice::ControlChoice axis{"Pad", "Axis", 0}, away{"Pedals", "Axis", 1};
  const Calibration pedal{Calibration::Kind::kPedal, -1.0, 0.8};
  EXPECT_EQ(core->SetCalibration(axis, pedal), "");
  EXPECT_EQ(core->SetCalibration(away, {Calibration::Kind::kAxis, 0.1, 1.0, -0.9}), "");
  EXPECT_NE(core->SetCalibration({"", "Axis", 0}, pedal), "");
  EXPECT_NE(core->SetCalibration({"Pedals", "Axis", -1}, pedal), "");
  EXPECT_NE(core->SetCalibration({"Pad", "Button", 0}, pedal), "");
  EXPECT_NE(core->SetCalibration(axis, {Calibration::Kind::kPedal, 0.1, 0.2}), "");

  core->CreateTool("Probe");
  core->MapInput(Rig(0), 2, pad->control(0));
  core->StartRecording();
  EXPECT_NE(core->ClearCalibration(axis), "") << "in a take";
  pad->hardware[0] = -0.1;
  for (unsigned ms = 0; ms < 200; ms += 40) core->OnTimer(RecordManager::kTakeTimer, ms);
  core->StopRecording();
  EXPECT_NEAR(Rig(0).GetTracks()[2].samples.back().value, 0.5, 1e-12) << "as calibrated";

  const auto& table = unidevice::DriverManager::instance().calibrations();
  Begin();
  ASSERT_EQ(table.all().size(), 2u);
  EXPECT_EQ(*table.find(axis), pedal);
  EXPECT_EQ(core->ClearCalibration(axis), "");
  EXPECT_NE(core->ClearCalibration(axis), "");
  Begin();
  EXPECT_EQ(table.all().size(), 1u);

  const std::string name = CalibrationFile::Path().substr(folder.path.size() + 1);
  const std::string whole = folder.Read(name);
  for (const std::string& damaged :
       {whole.substr(0, whole.size() / 2), std::string("<other/>"),
        std::string("<calibrations><control device=\"P\" type=\"Axis\" "
                    "index=\"0\" kind=\"pedal\" rest=\"0\" "
                    "full=\"nan\"/></calibrations>")}) {
    folder.Write(name, damaged);
    Begin();
    EXPECT_TRUE(table.all().empty()) << damaged;
    EXPECT_NE(core->SetCalibration(axis, pedal).find("damaged"), std::string::npos);
    EXPECT_TRUE(table.all().empty()) << "what can't be kept doesn't act";
    EXPECT_EQ(folder.Read(name), damaged);
  }
}

TEST_F(Inputs, SharedControlsAndTakenOnesAreFoundBoundOrAway) {
  for (int i = 0; i < 2; ++i) core->CreateTool("Probe");
  const unidevice::ControlChoice axis{"Pad", "Axis", 0}, button{"Pad", "Button", 0};
  EXPECT_EQ(core->MapInputTo(Rig(0), 2, axis.tag()), "");
  EXPECT_EQ(core->MapInputTo(Rig(1), 2, unidevice::pairTag(button, axis)), "");
  EXPECT_NE(core->MapInputTo(Rig(1), 0, button.tag()), "") << "a live spinner takes no button";
  EXPECT_EQ(core->MapInputTo(Rig(1), 0, util::xml::Tag("wrong")), "it names no control");
  const auto shared = FindSharedControls(*core, false);
  ASSERT_EQ(shared.size(), 1u);
  EXPECT_EQ(shared[0].control, axis);
  ASSERT_EQ(shared[0].uses.size(), 2u);
  EXPECT_EQ(shared[0].uses[1].row, Rig(1).GetIdentity());
  EXPECT_EQ(ControlsTaken(Rig(1), 0).size(), 2u);
  EXPECT_TRUE(ControlsTaken(Rig(1), 2).empty());
  core->SetChecked(core->FindRow(Rig(0).GetIdentity()), false);
  EXPECT_TRUE(FindSharedControls(*core, true).empty());
  pad->destroy();
  EXPECT_EQ(FindSharedControls(*core, false).size(), 1u);
  core->Undo();  // the check
  core->Undo();
  EXPECT_TRUE(FindSharedControls(*core, false).empty());
  EXPECT_EQ(core->LoadInputFactorySettings(Rig(0)), "");
  EXPECT_TRUE(ControlsOf(*Rig(0).GetProperties().property(2)).empty());
}

TEST_F(Inputs, NoShippedProfileUsesAHotKey) {
  int keys = 0;
  const auto conflicts = [](const std::vector<std::string>& keys) {
    std::string text = "<profile name='P'>";
    for (const std::string& key : keys)
      text += "<property name='" + key + "'><control device='Keyboard' index='0' type='" + key +
              "'/></property>";
    return FindHotKeyConflicts(unidevice::parseTag(text + "</profile>")).size();
  };
  for (const auto& entry : std::filesystem::recursive_directory_iterator(ORV_SOURCE_DIR "/data")) {
    const std::string file = entry.path().string();
    if (file.find("inputprofile") == std::string::npos || !entry.is_regular_file()) continue;
    util::xml::Element root;
    ASSERT_EQ(root.load(file), 0) << file;
    std::vector<util::xml::Tag> profiles;
    ASSERT_TRUE(InputProfileManager::Parse(root, "P", profiles)) << file;
    for (const auto& profile : profiles)
      for (const HotKeyConflict& conflict : FindHotKeyConflicts(profile))
        ADD_FAILURE() << file << ": " << conflict.text.filled();
    if (file.find("Keyboard") != std::string::npos) ++keys;
  }
  EXPECT_GE(keys, 8);
  EXPECT_EQ(conflicts({"Space"}), 1u) << "for the start needs Ctrl and Alt";
  EXPECT_EQ(conflicts({"Z", "Left_Shift"}), 0u);
  EXPECT_EQ(conflicts({"Z", "Right_Control"}), 1u);
}

TEST_F(Inputs, HotKeysDoWhatTheirRowSaysAndNothingElse) {
  core->CreateTool("Probe");
  const auto key = [&](int code, KeyModifiers held = {}) { return core->HandleKey(code, held); };
  EXPECT_FALSE(key(kKeySpace));
  EXPECT_FALSE(key(kKeyEscape));
  EXPECT_FALSE(key(kKeyPlus));
  EXPECT_FALSE(key(kKeyZ, {true, false, false}));
  EXPECT_TRUE(key(kKeySpace, {true, false, true}));
  ASSERT_TRUE(core->GetRunState() == RunState::kRecording);
  EXPECT_TRUE(key(kKeyPlus, {false, true, false}));
  EXPECT_TRUE(key(VirtualKeyOf(Qt::Key_Plus, true)));
  EXPECT_EQ(core->GetSlowFactorIndex(), 3);
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(key(kKeyAdd));
  EXPECT_EQ(core->GetSlowFactorIndex(), 10);
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(key(kKeyMinus));
  EXPECT_EQ(core->GetSlowFactorIndex(), 1);
  EXPECT_FALSE(key(kKeyZ));
  EXPECT_FALSE(key(70));
  EXPECT_TRUE(key(kKeyZ, {true, false, false}));
  EXPECT_EQ(plugin.log.starts.size(), 2u);
  EXPECT_TRUE(key(kKeyEscape));
  EXPECT_TRUE(core->GetRunState() == RunState::kIdle);
  core->BeginResimulation(0.0, 0.2);
  EXPECT_FALSE(key(kKeyEscape));
  core->EndResimulation();
}

TEST_F(Inputs, TheDiagnosisNamesWhatKeepsARigFromMovingAndChangesNothing) {
  const auto kinds = [&] {
    std::string text;
    for (const Reason& reason : Diagnose(*core)) {
      text += std::to_string(static_cast<int>(reason.kind)) + " ";
      EXPECT_EQ(reason.text.filled().find('%'), std::string::npos) << reason.text.filled();
      EXPECT_FALSE(reason.remedy.filled().empty());
    }
    return text;
  };
  const auto list = [](std::initializer_list<Kind> wanted) {
    std::string text;
    for (const Kind kind : wanted) text += std::to_string(static_cast<int>(kind)) + " ";
    return text;
  };
  EXPECT_EQ(kinds(), list({Kind::kNoRig}));
  core->CreateTool("Probe");
  Instance& rig = Rig(0);
  EXPECT_EQ(kinds(), list({Kind::kNoInput}));
  core->MapInput(rig, 2, pad->control(0));
  EXPECT_EQ(kinds(), "");
  const DevicePolling::Wake awake(*core);
  pad->hardware[0] = 0.08;
  core->OnTimer(DevicePolling::kTimer, 0);
  EXPECT_EQ(kinds(), list({Kind::kSwallowed}));
  core->SetInputResponse(rig, 2, {1.0, 1.0, 0.05, 0.0});
  EXPECT_EQ(kinds(), "");
  pad->destroy();
  std::string problem;
  InstanceReference* const group = core->CreateGroup("Set", problem);
  core->MoveInto(core->FindRow(rig.GetIdentity()), group);
  core->SetChecked(group, false);
  core->SetChecked(core->FindRow(rig.GetIdentity()), false);
  core->SetSlowFactorIndex(5);
  adaptor.time = adaptor.rangeEnd;
  const std::size_t calls = adaptor.events.size();
  EXPECT_EQ(kinds(), list({Kind::kRangeOver, Kind::kSlow, Kind::kUnchecked, Kind::kGroupUnchecked,
                           Kind::kDeviceAbsent}));
  EXPECT_EQ(Diagnose(*core).back().input, 2);
  EXPECT_EQ(adaptor.events.size(), calls);
  adaptor.rangeEnd = adaptor.rangeStart;
  EXPECT_EQ(kinds().substr(0, 2), list({Kind::kRangeEmpty}));
  core->StartRecording();
  EXPECT_EQ(kinds().substr(0, 2), list({Kind::kRunning}));
  core->StopRecording();
}

}  // namespace
}  // namespace orv::tests
