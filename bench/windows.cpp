// The core's windows from the call that opens them until they are painted, when they have been open
// before: 50 ms at most for each, 40 ms for the parameters of the car. The medians count. And what
// they cost while a take runs: 5 % of a core at most.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <string>
#include <vector>

#include "Figures.h"
#include "adaptor/headless/HeadlessSession.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "core/windows/AllWindows.h"
#include "core/windows/Program.h"
#include "core/windows/Window.h"
#include "core/windows/Windows.h"
#include "plugins/release/all/AllRigs.h"
#include "support/TempFolder.h"
#include "unidevice/TestDevice.h"

namespace {

using namespace orv::rws::core::windows;

class BareProgram : public Program {
 public:
  bool HasCommand(int) const override { return false; }
  void RunCommand(int) override {}
};

/// Windows with a scene of one car.
struct Desk {
  Desk() {
    AddAllWindows(windows);
    car = session.GetCore().CreateToolFromFactory("4WheelerExt", "Car")->GetIdentity();
    session.GetCore().SetSelection({car});
  }

  orv::tests::TempFolder folder;
  orv::rws::adaptor::headless::HeadlessSession session{
      (orv::rws::core::DataRoot::Set(folder.path), orv::rws::addon::AllRigs())};
  BareProgram program;
  Windows windows{session.GetCore(), program};
  int car = 0;
};

class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    m_painted = m_painted || event->type() == QEvent::Paint;
    return false;
  }
  void Wait() const {
    while (!m_painted) QApplication::processEvents();
  }

 private:
  bool m_painted = false;
};

/// `drop` makes it anew each time, as when its rig is selected again after many others.
void Open(benchmark::State& state, WindowKind kind, bool ofRig, bool drop) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int argc = 1;
  char name[] = "bench";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  Desk desk;
  const int row = ofRig ? desk.car : 0;
  std::vector<double> times;
  const auto open = [&] {
    QElapsedTimer timer;
    timer.start();
    Window* window = desk.windows.Open(kind, row);
    if (!window) return -1.0;
    PaintWatch(*window->GetWidget()).Wait();
    const double ms = timer.nsecsElapsed() * 1e-6;
    desk.windows.Close(kind, row);
    if (drop) desk.windows.Drop(kind, row);
    QApplication::processEvents();
    return ms;
  };
  if (open() < 0.0) return state.SkipWithError("it can't be opened");
  for (auto _ : state) {
    times.push_back(open());
    state.SetIterationTime(times.back() * 1e-3);
  }
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  state.counters["median_ms"] = times[times.size() / 2];
}

/// Which windows stand open.
enum class Shown { kNone, kMain, kAll };

/// Share of a core that the process takes while 20 rigs are recorded.
double TakeShare(Shown shown, int ms) {
  Desk desk;
  auto& core = desk.session.GetCore();
  constexpr const char* kKinds[] = {"4WheelerExt", "MotionFilterCam", "DirectInputLink",
                                    "1DRotator"};
  for (int i = 1; i < 20; ++i) core.CreateToolFromFactory(kKinds[i % 4], "");
  if (shown != Shown::kNone) desk.windows.Open(WindowKind::kMain);
  if (shown == Shown::kAll)
    for (const WindowKind kind : {WindowKind::kToolConfig, WindowKind::kInputConfig})
      desk.windows.Open(kind, desk.car);
  const auto wait = [](int time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
  };
  core.StartRecording();
  wait(500);
  const std::clock_t before = std::clock();
  const double wall = orv::bench::Seconds([&] { wait(ms); });
  const double share = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / wall;
  core.StopRecording();
  return share;
}

void InTake(benchmark::State& state) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int argc = 1;
  char name[] = "bench";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  const int turns = orv::bench::Turns(5);
  const int ms = turns == 1 ? 300 : 3000;
  orv::bench::Runs main, all, take;
  for (auto _ : state)
    for (int i = 0; i < turns; ++i) {
      const double alone = TakeShare(Shown::kNone, ms);
      take.Add(100.0 * alone);
      main.Add(100.0 * (TakeShare(Shown::kMain, ms) - alone));
      all.Add(100.0 * (TakeShare(Shown::kAll, ms) - alone));
    }
  take.Report(state, "take_percent");
  main.Report(state, "main_percent");
  all.Report(state, "all_percent");
}

/// A round of a window with all that it paints, with 20 rigs, while every axis of two devices
/// moves. There are 15 a second.
void Live(benchmark::State& state, WindowKind kind, bool ofRig) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int argc = 1;
  char name[] = "bench";
  char* argv[] = {name, nullptr};
  QApplication application(argc, argv);
  orv::unidevice::TestDriver driver("bench");
  const std::vector<std::string> types(8, "Axis");
  orv::unidevice::TestDevice* const pads[] = {driver.plug("Pad", types),
                                              driver.plug("Wheel", types)};
  Desk desk;
  auto& core = desk.session.GetCore();
  for (int i = 1; i < 20; ++i) core.CreateToolFromFactory("4WheelerExt", "Car" + std::to_string(i));
  for (int i = 0; i < 8; ++i) core.MapInput(*core.FindByIdentity(desk.car), i, pads[0]->control(i));
  Window* window = desk.windows.Open(kind, ofRig ? desk.car : 0);
  if (!window) return state.SkipWithError("it can't be opened");
  QApplication::processEvents();
  double time = 0.0;
  for (auto _ : state) {
    time += 1.0 / 15.0;
    for (auto* pad : pads) {
      for (std::size_t i = 0; i < types.size(); ++i) pad->hardware[i] = std::sin(time + i);
      pad->update();
    }
    window->OnLive();
    QApplication::processEvents();
  }
}

}  // namespace

BENCHMARK(InTake)->Iterations(1)->Unit(benchmark::kSecond);
#define ORV_WINDOW(name, kind, ofRig, drop)                    \
  BENCHMARK_CAPTURE(Open, name, WindowKind::kind, ofRig, drop) \
      ->UseManualTime()                                        \
      ->Unit(benchmark::kMillisecond)
ORV_WINDOW(main, kMain, false, false);
ORV_WINDOW(main_anew, kMain, false, true);
ORV_WINDOW(preferences, kPreferences, false, false);
ORV_WINDOW(log, kLog, false, false);
ORV_WINDOW(hot_keys, kHotKeys, false, false);
ORV_WINDOW(why, kWhy, false, false);
ORV_WINDOW(about, kAbout, false, false);
ORV_WINDOW(devices, kDevices, false, false);
ORV_WINDOW(car_inputs, kInputConfig, true, false);
ORV_WINDOW(car_inputs_anew, kInputConfig, true, true);
ORV_WINDOW(car_parameters, kToolConfig, true, false);
ORV_WINDOW(car_parameters_anew, kToolConfig, true, true);
BENCHMARK_CAPTURE(Live, devices_live, WindowKind::kDevices, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Live, car_inputs_live, WindowKind::kInputConfig, true)
    ->Unit(benchmark::kMillisecond);
