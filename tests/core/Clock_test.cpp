// The clock of a take, driven by scripted milliseconds.
#include <QEventLoop>
#include <QTimer>
#include <cmath>
#include <map>

#include "core/take/RunStatus.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using rws::core::RecordManager;

struct FakeWindow : rws::core::MainWindowView {
  std::map<int, bool> boxes;
  std::map<int, int> spinners;
  bool recording = false;
  bool GetCheckBox(int id, bool& on) override {
    const auto found = boxes.find(id);
    if (found == boxes.end()) return false;
    on = found->second;
    return true;
  }
  void SetSpinner(int id, int value) override { spinners[id] = value; }
  void SetRecordState(bool on) override { recording = on; }
};

struct FakeCountdown : rws::core::CountdownDialog {
  explicit FakeCountdown(std::vector<std::string>& log) : log(log) {}
  std::vector<std::string>& log;
  void Set(int seconds, double fraction) override {
    log.push_back(std::to_string(seconds) + ":" + std::to_string(std::lround(fraction * 100)));
  }
  void Show() override { log.push_back("show"); }
  void Hide() override { log.push_back("hide"); }
};

struct FakeUi : rws::core::UserInterface {
  FakeWindow window;
  std::vector<std::string> countdown;
  rws::core::MainWindowView* GetMainWindow() override { return &window; }
  rws::core::CountdownDialog* CreateCountdownDialog() override {
    return new FakeCountdown(countdown);
  }
  int MessageBox(const std::string&, const std::string&, unsigned) override { return 1; }
};

class Clock : public CoreTest {
 protected:
  Clock() {
    core.SetUserInterface(&ui);
    core.CreateTool("Probe");
  }
  ~Clock() override { core.SetUserInterface(nullptr); }

  /// Ticks at 0, step, 2 step, ... up to `last` ms.
  void Run(unsigned step, unsigned last) {
    for (unsigned ms = 0; ms <= last && core.IsRecording(); ms += step) Tick(ms);
  }
  const std::vector<double>& Steps() const { return plugin.log.steps; }

  FakeUi ui;
};

TEST_F(Clock, StepsEveryFrameOnceOnTheGridFromTheFirstTick) {
  ASSERT_EQ(core.StartRecording(), 0);
  EXPECT_EQ(core.StartRecording(), 71);
  EXPECT_EQ(core.Resimulate(0, 1), 71);
  EXPECT_TRUE(ui.window.recording);
  Tick(5000);  // the first tick starts the measure, whatever it says
  ASSERT_EQ(Steps(), std::vector<double>{0.04});
  for (unsigned ms = 5001; ms <= 6000; ++ms) Tick(ms);
  core.StopRecording();
  ASSERT_EQ(Steps().size(), 26u);
  for (std::size_t i = 0; i < Steps().size(); ++i)
    EXPECT_EQ(Steps()[i], static_cast<double>(i + 1) * 0.04);
  EXPECT_EQ(plugin.log.starts, std::vector<double>{0.0});
  EXPECT_EQ(plugin.log.stops, 1);
  EXPECT_FALSE(ui.window.recording);
  EXPECT_EQ(adaptor.events, (std::vector<std::string>{"begin Create Probe", "end", "begin Record",
                                                      "record", "keys", "end"}));
}

TEST_F(Clock, CatchesUpThreeFramesATickWithOneTimeWrite) {
  core.StartRecording();
  Tick(0);
  adaptor.timeWrites.clear();
  Tick(400);  // ten frames late
  EXPECT_EQ(Steps().size(), 4u);
  EXPECT_EQ(adaptor.timeWrites, std::vector<double>{0.4});
  Tick(400);
  Tick(400);
  Tick(400);
  Tick(400);
  EXPECT_EQ(Steps().size(), 11u);  // frame 11 is the one after the clock's
}

TEST_F(Clock, SlowFactorSlowsTheClockAndKeepsTheGrid) {
  core.SetSlowFactorIndex(10);
  EXPECT_EQ(core.GetSlowFactor(), 512.0);
  EXPECT_EQ(core.GetSlowFactorIndex(), 10);
  EXPECT_EQ(ui.window.spinners[115], 10);
  core.StartRecording();
  EXPECT_EQ(adaptor.slowFactor, 512);
  Run(1024, 512 * 1000 - 1024);
  EXPECT_EQ(Steps().size(), 25u);
  for (std::size_t i = 0; i < Steps().size(); ++i)
    EXPECT_EQ(Steps()[i], static_cast<double>(i + 1) * 0.04);
  core.SetSlowFactorIndex(3);
  EXPECT_EQ(adaptor.slowFactor, 4);
  core.SetSlowFactorIndex(10000);  // typed into the spinner: the clock all but stands
  EXPECT_EQ(adaptor.slowFactor, 1 << 30);
  Tick(600000);
  EXPECT_TRUE(core.IsRecording());
  EXPECT_EQ(Steps().size(), 25u);
}

TEST_F(Clock, FloorsTimesOnTheGridButAStartNearAFrameIsThatFrame) {
  EXPECT_EQ(core.FrameIndex(-0.1), -3);
  EXPECT_EQ(core.FrameIndex(-0.08), -2);
  EXPECT_EQ(core.FrameIndex(0.1), 2);
  EXPECT_EQ(core.FrameIndex(1e300), 2000000000);
  EXPECT_EQ(core.FrameIndex(-1e300), -2000000000);
  for (const double rate : {24.0, 25.0, 30.0, 50.0, 59.94, 60.0, 6000.0}) {
    adaptor.frameRate = rate;
    for (int i = -3000; i < 300000; i += 7) ASSERT_EQ(core.FrameIndex(i * (1.0 / rate)), i) << rate;
  }
  adaptor.frameRate = 25.0;
  adaptor.time = -0.1;
  adaptor.rangeStart = -1.0;
  core.StartRecording();
  Run(20, 100);
  ASSERT_GE(Steps().size(), 2u);
  EXPECT_DOUBLE_EQ(Steps()[0], -0.08);
  core.StopRecording();
  adaptor.time = 0.4 + 5e-6;
  core.StartRecording();
  Tick(0);
  EXPECT_EQ(plugin.log.starts, (std::vector<double>{-0.1, 10 * 0.04}));
  EXPECT_EQ(Steps().back(), 11 * 0.04);
}

TEST_F(Clock, CountsDownBeforeAnyFrameUsesNoneUpAndGivesAStoppedTakesTimeBack) {
  adaptor.time = 0.05;  // off the grid, where a frame could be lost
  core.GetPreferences().countdownSeconds = 2;
  core.StartRecording();
  EXPECT_EQ(ui.countdown, (std::vector<std::string>{"2:0", "show"}));
  Tick(0);
  Tick(500);
  EXPECT_EQ(ui.countdown.back(), "2:50");
  {
    auto other = std::make_unique<FakeUi>();  // another one takes over for a while, then none
    const auto before = ui.countdown;
    core.SetUserInterface(other.get());
    EXPECT_EQ(other->countdown, (std::vector<std::string>{"2:50", "show"}));
    EXPECT_TRUE(other->window.recording);
    Tick(600);
    EXPECT_EQ(other->countdown.back(), "2:40");
    core.SetUserInterface(nullptr);
    other.reset();
    Tick(700);
    EXPECT_EQ(ui.countdown, before) << "the old one is not called";
    core.SetUserInterface(&ui);
  }
  Tick(1995);
  EXPECT_EQ(ui.countdown.back(), "1:0");
  EXPECT_TRUE(Steps().empty());
  Tick(2010);
  EXPECT_EQ(ui.countdown.back(), "hide");
  EXPECT_EQ(Steps(), std::vector<double>{0.08});
  core.StopRecording();

  adaptor.time = 5e-6;  // a frame, nearly
  core.StartRecording();
  Tick(0);
  Tick(1000);
  core.OnKeyEvent(rws::core::kKeySpace, true, {});
  EXPECT_FALSE(core.IsRecording());
  EXPECT_EQ(core.GetClock(), 0.0);
  EXPECT_EQ(adaptor.time, 5e-6) << "where the take was asked for";
  EXPECT_EQ(plugin.log.stops, 2);
  EXPECT_EQ(Steps().size(), 1u);
}

TEST_F(Clock, ARangeEndDoublesOrStops) {
  struct Row {
    double end;
    bool grows, goesOn;
    double endAfter;
  };
  for (const Row& row :
       {Row{0.2, true, true, 1.6}, {0.2, false, false, 0.2}, {0.0, true, true, 0.0}}) {
    ui.window.boxes[113] = row.grows;
    adaptor.time = 0.0;
    adaptor.rangeEnd = row.end;
    plugin.log.steps.clear();
    core.StartRecording();
    Run(40, 1000);
    EXPECT_EQ(core.IsRecording(), row.goesOn);
    EXPECT_EQ(adaptor.rangeEnd, row.endAfter);
    EXPECT_EQ(Steps().size(), row.goesOn ? 26u : 5u);
    core.StopRecording();
  }
}

TEST_F(Clock, ATakeOfATollLengthEndsAtItsLastFrameBeforeTheRangeGrows) {
  adaptor.rangeEnd = 1.0;
  core.SetTakeLength(1.0);
  core.StartRecording();
  Tick(0);
  Tick(3000);  // far beyond the end: the last frames still come, three a tick
  for (int i = 0; i < 20; ++i) Tick(3000);
  EXPECT_FALSE(core.IsRecording());
  EXPECT_EQ(Steps().size(), 25u);
  EXPECT_EQ(Steps().back(), 1.0);
  EXPECT_EQ(adaptor.rangeEnd, 1.0);
}

TEST_F(Clock, AStopBetweenTwoTicksEndsTheTakeForGood) {
  core.StartRecording();
  Tick(0);
  Tick(40);
  core.OnKeyEvent(rws::core::kKeyEscape, true, {});
  EXPECT_FALSE(core.IsRecording());
  EXPECT_FALSE(core.IsTimerRunning(RecordManager::kTakeTimer));
  const std::size_t steps = Steps().size();
  Tick(80);
  EXPECT_EQ(Steps().size(), steps);
}

TEST_F(Clock, ATakeGoesOnWhileAMenuThatOpenedInItRunsALoopOfItsOwn) {
  QEventLoop program;
  std::size_t before = 0, during = 0;
  QTimer::singleShot(60, &program, [&] {
    QEventLoop menu;
    QTimer::singleShot(400, &menu, [&] { menu.quit(); });
    before = Steps().size();
    menu.exec();
    during = Steps().size() - before;
    program.quit();
  });
  core.StartRecording();
  program.exec();
  EXPECT_GE(during, 5u) << "of the 10 frames in 0.4 s";
  EXPECT_TRUE(core.IsRecording());
}

TEST_F(Clock, TheStateOfATakeIsToldInWords) {
  const auto text = [this] { return rws::core::GetRunStatus(core).text.filled(); };
  EXPECT_EQ(text(), "Ready.");
  core.GetPreferences().countdownSeconds = 2;
  core.StartRecording();
  Run(40, 1000);
  EXPECT_EQ(text(), "The take begins in 1 s.");
  core.OnKeyEvent(rws::core::kKeyEscape, true, {});
  EXPECT_EQ(text(), "Ready.") << "Escape ends the countdown";
  core.GetPreferences().countdownSeconds = 0;
  core.StartRecording();
  Run(40, 400);
  EXPECT_EQ(text(), "Recording frame 11 (0.44 s).");
  Tick(1000);
  EXPECT_EQ(text(), "Recording frame 14 (0.56 s), 12 frames behind.");
  core.StopRecording();
  core.BeginResimulation(0.0, 0.4);
  for (int i = 0; i < 6; ++i) core.StepResimulation();
  EXPECT_EQ(text(), "Resimulating frame 7 (60 %).");
  core.EndResimulation();
}

TEST_F(Clock, ControlZThrowsTheTakeAwayAndStartsAnother) {
  adaptor.time = 0.2;
  core.StartRecording();
  Run(40, 400);
  auto& track = core.List(false)[0]->GetTracks().back();
  EXPECT_EQ(track.samples.size(), 11u);
  core.OnKeyEvent(rws::core::kKeyZ, true, {true, true, false});
  EXPECT_EQ(plugin.log.starts.size(), 1u);  // control alone
  core.OnKeyEvent(rws::core::kKeyZ, true, {true, false, false});
  EXPECT_TRUE(core.IsRecording());
  EXPECT_EQ(plugin.log.starts, (std::vector<double>{0.2, 0.2})) << "from where it began";
  EXPECT_TRUE(core.List(false)[0]->GetTracks().back().samples.empty());
}

TEST_F(Clock, OnlyCheckedRowsTakePartAndAllAreUpdated) {
  const std::string second = core.CreateTool("Probe");
  core.SetChecked(core.Find(second), false);
  core.UpdateTime(0.0);
  EXPECT_EQ(plugin.log.updates, 2);
  core.StartRecording();
  Tick(0);
  EXPECT_EQ(plugin.log.starts.size(), 1u);
  EXPECT_EQ(Steps().size(), 1u);
  core.UpdateTime(0.0);
  EXPECT_EQ(plugin.log.updates, 3);
  core.StopRecording();
  core.DeleteAllTools();  // without rigs a take still runs
  adaptor.time = 0.0;
  core.GetPreferences().countdownSeconds = 1;
  core.StartRecording();
  Run(40, 2000);
  EXPECT_NEAR(adaptor.time, 1.0, 1e-9);
}

TEST_F(Clock, TimersCarryIdsOfTheirCallersChoice) {
  struct Timers : rws::core::TimerManager {
    std::vector<int> seen;
    void OnTimer(int id, unsigned) override { seen.push_back(id); }
  } timers;
  timers.StartTimer(7, 0.0);
  timers.StartTimer(7, 0.0);  // in place of the first
  while (timers.seen.size() < 3) QCoreApplication::processEvents();
  EXPECT_EQ(timers.seen, (std::vector<int>{7, 7, 7}));
  timers.KillTimer(7);
  EXPECT_FALSE(timers.IsTimerRunning(7));
  QCoreApplication::processEvents();
  EXPECT_EQ(timers.seen.size(), 3u);
  timers.startTimer(0);  // one that nobody asked for under an id
  while (timers.seen.size() < 4) QCoreApplication::processEvents();
  EXPECT_EQ(timers.seen.back(), -1);
}

}  // namespace
}  // namespace orv::tests
