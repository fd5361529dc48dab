// Recording, replay and the memory of live spinners, on a rig without nodes.
#include <cmath>

#include "core/take/ResimulateWindow.h"
#include "support/CoreTest.h"
#include "unidevice/TestDevice.h"

namespace orv::tests {
namespace {

using rws::core::ConfigElement;
using rws::core::Instance;

class Resimulation : public CoreTest {
 protected:
  Resimulation() {
    core.CreateTool("Probe");
    instance = core.List(false)[0];
    instance->FindInput("Input")->bind(&stick);
  }

  ConfigElement& Element(const std::string& label) {
    return *instance->GetConfig().FindAll(label).at(0);
  }

  /// A take from the host's time on, the stick at a value of each frame's own.
  void Take(int frames) {
    plugin.log.inputs.clear();
    core.StartRecording();
    for (int i = 0; i < frames; ++i) {
      stick.current = 0.3 + 0.6 * std::sin(0.37 * i);
      Tick(static_cast<unsigned>(i * 40));
    }
    core.StopRecording();
  }

  void Resimulate(double from, double to) {
    plugin.log.inputs.clear();
    plugin.log.steps.clear();
    ASSERT_EQ(core.BeginResimulation(from, to), 0);
    while (core.StepResimulation()) {
    }
    core.EndResimulation();
  }

  unidevice::Control stick{unidevice::kInfiniteControl, "Axis", 0};
  unidevice::Control lever{unidevice::kInfiniteControl, "Axis", 1};
  Instance* instance = nullptr;
};

TEST_F(Resimulation, FeedsEveryFrameWithTheInputOfTheTakeAndGivesTheControlsBack) {
  Take(50);
  const std::vector<double> taken = plugin.log.inputs;
  ASSERT_EQ(taken.size(), 50u);
  stick.current = 99.0;
  core.SetSlowFactorIndex(4);
  Resimulate(0.0, 2.0);
  EXPECT_EQ(plugin.log.inputs, taken);
  EXPECT_EQ(plugin.log.steps.front(), 0.04);
  EXPECT_EQ(plugin.log.steps.back(), 50 * 0.04);
  EXPECT_EQ(instance->FindInput("Input")->control, &stick);
  EXPECT_EQ(core.GetSlowFactorIndex(), 4);
  EXPECT_EQ(adaptor.time, 0.0);
  EXPECT_EQ(core.GetProgress(), 1.0f);

  Resimulate(2.0, 2.0);  // the last frame of the range: nothing but start and stop
  EXPECT_TRUE(plugin.log.steps.empty());
  EXPECT_EQ(core.GetProgress(), 1.0f);
}

TEST_F(Resimulation, ATakeRecordsArmedInputsAndPlaysTheOthers) {
  const int gain = 0, input = 2;
  instance->GetProperties().property(gain)->bind(&lever);
  Take(50);
  const auto whole = instance->GetTracks();
  const std::vector<double> taken = plugin.log.inputs;
  ASSERT_EQ(whole.size(), 3u);

  // Nothing is armed: a resimulation in real time, which changes no track.
  instance->SetArmed(std::vector<bool>());
  stick.current = 99.0;
  adaptor.time = 0.0;
  plugin.log.inputs.clear();
  core.StartRecording();
  EXPECT_TRUE(instance->IsFed(gain) && instance->IsFed(input));
  EXPECT_NE(core.MapInput(*instance, input, &lever), "") << "it plays";
  for (int i = 0; i < 50; ++i) Tick(static_cast<unsigned>(i * 40));
  core.StopRecording();
  EXPECT_EQ(plugin.log.inputs, taken);
  EXPECT_TRUE(instance->GetTracks() == whole);
  EXPECT_EQ(instance->FindInput("Input")->control, &stick);

  // The other one is armed, from the middle on.
  instance->SetArmed(std::vector<bool>{true, false, false});
  adaptor.time = 1.0;
  lever.current = 0.75;
  plugin.log.inputs.clear();
  core.StartRecording();
  EXPECT_TRUE(instance->IsFed(input) && !instance->IsFed(gain));
  EXPECT_EQ(core.MapInput(*instance, gain, &lever), "");
  for (int i = 0; i < 10; ++i) Tick(static_cast<unsigned>(i * 40));
  core.StopRecording();
  EXPECT_EQ(plugin.log.inputs, std::vector<double>(taken.begin() + 25, taken.begin() + 35));
  EXPECT_TRUE(instance->GetTracks()[input] == whole[input]);
  EXPECT_EQ(instance->GetTracks()[gain].samples.size(), 24u + 10u);
  EXPECT_EQ(instance->GetTracks()[gain].samples.back().value, 0.75);
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_TRUE(instance->GetTracks() == whole);
  instance->SetArmed(std::nullopt);
  EXPECT_FALSE(instance->IsPlayed(0));
}

TEST_F(Resimulation, ATakeFromTheMiddleKeepsTheInputBeforeItAndUndoBringsTheRestBack) {
  Take(50);
  const auto whole = instance->GetTracks();
  adaptor.time = 1.0;
  Take(10);
  const auto& track = instance->GetTracks().back();
  EXPECT_EQ(track.samples.size(), 24u + 10u);  // frames 1 to 24, then 26 to 35
  EXPECT_EQ(track.samples[23], whole.back().samples[23]);
  EXPECT_EQ(track.samples[24].time, 26 * 0.04);
  const auto second = instance->GetTracks();
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(instance->GetTracks(), whole);
  ASSERT_TRUE(adaptor.HostRedo());
  EXPECT_EQ(instance->GetTracks(), second);
}

TEST_F(Resimulation, AControlThatGoesDuringTheRunDoesNotComeBack) {
  auto gone = std::make_unique<unidevice::Control>(unidevice::kInfiniteControl, "Axis", 0);
  instance->FindInput("Input")->bind(gone.get());
  Take(5);
  core.BeginResimulation(0.0, 0.2);
  core.StepResimulation();
  gone.reset();
  core.EndResimulation();
  EXPECT_EQ(instance->FindInput("Input")->control, nullptr);
}

TEST_F(Resimulation, ADeviceThatIsUnpluggedInATakeLeavesItsInputAtTheOffsetUntilItReturns) {
  unidevice::TestDriver pads("pads");
  unidevice::TestDevice* pad = nullptr;
  const auto plug = [&] {
    pad = pads.plug("Pad", {"Axis"});
    pad->hardware = {0.8};
  };
  plug();
  unidevice::Property& input = *instance->FindInput("Input");
  input.offset = 0.125;
  input.deadzone = 0.0;
  input.assign(pad->control(0));
  pad->destroy();
  Take(1);
  plug();  // between two takes
  plugin.log.inputs.clear();
  adaptor.time = 0.0;
  core.StartRecording();
  unsigned ms = 0;
  const auto run = [&](int frames) {
    for (int i = 0; i < frames; ++i) Tick(ms += 40);
  };
  run(3);
  pad->destroy();
  run(3);
  plug();
  run(3);
  core.StopRecording();
  const std::vector<double> expected{0.925, 0.925, 0.925, 0.125, 0.125, 0.125, 0.925, 0.925, 0.925};
  ASSERT_EQ(plugin.log.inputs.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_DOUBLE_EQ(plugin.log.inputs[i], expected[i]) << i;
  const std::vector<double> taken = plugin.log.inputs;
  Resimulate(0.0, 0.36);
  EXPECT_EQ(plugin.log.inputs, taken);
  EXPECT_EQ(input.control, pad->control(0));
}

TEST_F(Resimulation, AnInputWithoutATrackReadsItsDefaultAndMayComeAtAnyStart) {
  plugin.ways.growsAtStart = true;
  Take(5);
  instance->AddInput("Late", 7)->offset = 0.25;
  Resimulate(0.0, 0.2);
  EXPECT_EQ(plugin.log.steps.size(), 5u);
  EXPECT_EQ(instance->GetTracks().size(),
            static_cast<std::size_t>(instance->GetProperties().count()));
  EXPECT_EQ(instance->FindInput("Late")->read(), 0.25);
  EXPECT_EQ(instance->FindInput("Late1")->control, nullptr);
  EXPECT_EQ(instance->GetTracks()[3].samples.size(), 5u) << "of the input that came with the take";
}

TEST_F(Resimulation, LiveSpinnersRepeatTheirTakeUntilTheUserSetsThem) {
  unidevice::Control dial(unidevice::kInfiniteControl, "Axis", 1);
  instance->FindInput("Spinner: Gain")->bind(&dial);
  instance->FindInput("Spinner: Count")->bind(&dial);
  dial.current = 0.3;
  Take(10);
  const double end = plugin.last->gain;
  EXPECT_NEAR(end, 1.0 + 10 * 0.3, 1e-12);
  EXPECT_EQ(plugin.last->count, 6);  // a spinner of whole numbers turns too
  plugin.log.callbacks.clear();
  adaptor.time = 0.4;
  dial.current = 0.0;
  Take(2);
  EXPECT_EQ(plugin.log.callbacks, (std::vector<std::string>{"Gain", "Count", "Gain", "Count"}))
      << "a rate of 0";
  ASSERT_TRUE(adaptor.HostUndo());

  // Beyond the take the last input goes on; the next run begins at the same place all the same.
  Resimulate(0.0, 0.8);
  const double beyond = plugin.last->gain;
  EXPECT_NEAR(beyond, 1.0 + 20 * 0.3, 1e-12);
  Resimulate(0.0, 0.4);
  EXPECT_EQ(plugin.last->gain, end);

  Element("Gain").SetNumber(50.0);
  Resimulate(0.0, 0.4);
  EXPECT_NEAR(plugin.last->gain, 53.0, 1e-12);

  // A track from elsewhere begins at the parameter's present value, as a take with it would.
  const double present = plugin.last->gain;
  auto track = instance->GetTracks()[0];
  ASSERT_EQ(instance->GetProperties().property(0)->name, "Spinner: Gain");
  instance->SetTrack(0, track);
  Resimulate(0.0, 0.4);
  EXPECT_NEAR(plugin.last->gain, present + 3.0, 1e-12);
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(plugin.last->gain, present);

  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(plugin.last->gain, 50.0);
  ASSERT_TRUE(adaptor.HostUndo());
  ASSERT_TRUE(adaptor.HostUndo());
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(plugin.last->gain, 1.0);
  EXPECT_EQ(plugin.last->count, 3);
}

/// Keeps the texts that it was last given.
struct StatusUi : rws::core::UserInterface {
  rws::core::ResimulationStatus status;
  struct View : rws::core::ResimulationView {
    explicit View(StatusUi& o) : owner(o) {}
    void Open(bool, bool) override {}
    void SetStatus(const rws::core::ResimulationStatus& s) override { owner.status = s; }
    void SetProgress(float) override {}
    void Close() override {}
    StatusUi& owner;
  };
  rws::core::ResimulationView* CreateResimulationView() override { return new View(*this); }
  int MessageBox(const std::string&, const std::string&, unsigned) override { return 1; }
};

TEST_F(Resimulation, TheWindowPacesTheRunInSlices) {
  StatusUi ui;
  core.SetUserInterface(&ui);
  adaptor.rangeEnd = 10.0;
  Take(5);
  unsigned now = 0;
  core.tickCount = [&now] { return now += 10; };  // ten milliseconds pass at every look
  plugin.log.steps.clear();
  ASSERT_EQ(core.Resimulate(2.0, 4.0), 0);
  EXPECT_TRUE(plugin.log.steps.empty());
  EXPECT_EQ(ui.status.title, "0% - 99 hrs and 59 minutes");
  EXPECT_EQ(ui.status.range, "Resimulating frame 50 to 100...");
  EXPECT_EQ(ui.status.currentFrame, "Current frame: 50");
  EXPECT_EQ(ui.status.framesDone, "0 out of 50 frames.");
  core.EndResimulation();  // the stop button in the first second
  EXPECT_TRUE(plugin.log.steps.empty());

  ASSERT_EQ(core.Resimulate(0.0, 4.0), 0);
  rws::core::RecordManager::ResimulateWindow& window = core.GetResimulateWindow();
  window.OnTimer(1, 0);
  const std::size_t slice = plugin.log.steps.size();
  EXPECT_EQ(slice, 50u);  // 500 ms of work
  EXPECT_TRUE(core.IsResimulating());
  window.OnTimer(2, 0);
  EXPECT_EQ(plugin.log.steps.size(), slice);
  StatusUi other;
  const std::string shown = ui.status.title;
  core.SetUserInterface(&other);  // in the midst of the run
  EXPECT_EQ(other.status.framesDone, "50 out of 100 frames.");
  window.OnTimer(1, 0);
  window.OnTimer(1, 0);
  EXPECT_FALSE(core.IsResimulating());
  EXPECT_EQ(plugin.log.steps.size(), 100u);
  EXPECT_EQ(ui.status.title, shown) << "the old one is not called";
  core.SetUserInterface(nullptr);
}

TEST_F(Resimulation, UndoReachesARigThatWasDeletedAndBroughtBack) {
  std::string problem;
  ASSERT_TRUE(core.EditParameter(*instance, Element("Gain").GetId(), "7", problem));
  Take(5);
  const auto taken = instance->GetTracks();
  plugin.last->m_pInterface->PushUndo(nullptr);
  core.Delete(core.Find("Probe_01"), true);
  ASSERT_TRUE(adaptor.HostUndo());  // rebuilt from its record
  instance = core.FindInstance("Probe_01");
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(instance->GetTracks(), taken);
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(adaptor.HostUndo());
    for (const auto& track : instance->GetTracks()) EXPECT_TRUE(track.samples.empty());
    ASSERT_TRUE(adaptor.HostRedo());
    EXPECT_EQ(instance->GetTracks(), taken);
  }
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(plugin.last->gain, 7.0);
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(plugin.last->gain, 1.0);
}

TEST_F(Resimulation, ARequestThatIsRefusedInATakeLeavesTheTakeAlone) {
  core.StartRecording();
  Tick(0);
  std::string problem;
  EXPECT_EQ(core.LoadProfile("Probe_01", "Absent"), "there is no profile \"Absent\"");
  EXPECT_FALSE(core.EditParameter(*instance, Element("Gain").GetId(), "much", problem));
  plugin.ways.failDefine = 1;
  EXPECT_EQ(core.CreateTool("Probe"), "");
  Tick(40);
  core.StopRecording();
  EXPECT_EQ(core.List(false).size(), 1u);
  EXPECT_EQ(instance->GetTracks().back().samples.size(), 2u);
  EXPECT_EQ(adaptor.events.back(), "end");
}

TEST_F(Resimulation, NamesCountUpAndRefuseWhatCannotBeAName) {
  EXPECT_EQ(core.CreateTool("Unheard of"), "");
  EXPECT_EQ(core.CreateTool("Probe"), "Probe_02");
  EXPECT_EQ(core.UniqueName("Probe_01"), "Probe_03");
  EXPECT_EQ(core.UniqueName("Probe_09"), "Probe_09");
  EXPECT_EQ(core.UniqueName("Free"), "Free");
  auto* row = core.Find("Probe_02");
  EXPECT_NE(core.Rename(row, "a.b"), "");
  EXPECT_NE(core.Rename(row, "Probe_01"), "");
  EXPECT_EQ(core.Rename(row, "Probe_99"), "");
  EXPECT_EQ(core.UniqueName("Probe_99"), "Probe_100");
  EXPECT_EQ(core.List(false)[1]->GetInstanceName(), "Probe_99");
  ASSERT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(core.List(false)[1]->GetInstanceName(), "Probe_02");
}

TEST_F(Resimulation, TheInterfaceAnswersItsOddCallsAsTold) {
  int size = 7;
  plugin.last->m_pInterface->ClearUserData();
  EXPECT_EQ(instance->GetUserData(&size), nullptr);
  EXPECT_EQ(size, 0);
  instance->SetUserData(nullptr, 0);
  EXPECT_NE(instance->GetUserData(&size), nullptr);
  EXPECT_EQ(size, 0);
  EXPECT_EQ(instance->FindNode("none"), nullptr);
  EXPECT_FALSE(instance->HasExtension(99));
  std::vector<int> codes;
  instance->GetExtensions(codes);
  EXPECT_EQ(codes, (std::vector<int>{41, 43, 58, 38, 39}));
  for (const int code : {40, 61, 64}) EXPECT_EQ(instance->Extension(code, nullptr, nullptr), 0);
  EXPECT_NE(instance->Extension(43, nullptr, nullptr), 0);
}

}  // namespace
}  // namespace orv::tests
