// Takes in real time, and curves of inputs in the hand: how long a move takes to the picture that
// shows it and where that time goes, how many frames and pictures a second a hundred cars come to,
// what their frames cost and ask the memory for, and what long takes hold. Needs a display with
// OpenGL: xvfb-run -a -s "-screen 0 1920x1200x24" build/release/bin/bench_realtime. What a row
// measures takes half a minute; once it is seconds. HundredCarsStepped needs neither display nor
// time: it goes by a clock that is told, so its label, a hash of the poses, and its instructions
// repeat.
#include <malloc.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QOpenGLWidget>
#include <QTimer>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>
#include <mutex>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "Child.h"
#include "Figures.h"
#include "RollingTerrain.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/studio/StagePane.h"
#include "app/studio/Studio.h"
#include "app/studio/script/ScriptLine.h"
#include "app/studio/view/Graphics.h"
#include "app/studio/view/StageView.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/services/DataRoot.h"
#include "support/TempFolder.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"

namespace orv::bench {
namespace {
std::atomic<std::uint64_t> g_allocations{0};
}
}  // namespace orv::bench

void* operator new(std::size_t size) {
  ++orv::bench::g_allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace orv::bench {
namespace {

using rws::adaptor::headless::SceneNode;
using rws::core::CoreImplementation;

const char kGas[] = "Gas Pedal (Forw/Backw)";
const char kSteering[] = "Steering Wheel (Right/Left)";
constexpr char kDriver[] = "benchdriver";

/// Seconds of one run of a row.
double Length(double usual) {
  return std::getenv("ORV_BENCH_ONCE") ? 1.5 : usual;
}

void Wait(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(static_cast<int>(seconds * 1000.0), &loop, &QEventLoop::quit);
  loop.exec();
}

double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// --- the pad ---

/// A pad that any thread may move.
class Pad : public unidevice::Device {
 public:
  Pad() {
    name = "Pad";
    for (int i = 0; i < 2; ++i)
      m_axes.push_back(std::make_unique<unidevice::Control>(unidevice::kInfiniteControl, "Axis", i,
                                                            "Axis", this));
    auto driver = std::make_unique<unidevice::Driver>(kDriver);
    driver->addDevice(this);
    unidevice::DriverManager::instance().addDriver(std::move(driver));
  }
  int controlCount() const override { return 2; }
  unidevice::Control* control(int i) const override {
    return m_axes[static_cast<std::size_t>(i)].get();
  }
  bool update() override {
    for (std::size_t i = 0; i < 2; ++i) m_axes[i]->receive(places[i]);
    return true;
  }

  std::atomic<double> places[2] = {{0.0}, {0.3}};  ///< steering and gas

 private:
  std::vector<std::unique_ptr<unidevice::Control>> m_axes;
};

void MapPad(CoreImplementation& core, Pad& pad) {
  for (rws::core::Instance* rig : core.List(false))
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      const std::string& input = rig->GetProperties().entries[static_cast<std::size_t>(i)].first;
      if (input == kSteering) core.MapInput(*rig, i, pad.control(0));
      if (input == kGas) core.MapInput(*rig, i, pad.control(1));
    }
}

// --- scenes ---

/// So many cars; a single one on the playground of the examples. Why not, or nothing.
std::string FillScene(app::SceneSession& session, const std::string& folder, int cars, double rate,
                      double seconds = 600.0) {
  std::string ground = "Terrain";
  if (cars == 1) {
    const std::string file = folder + "/terrain.glb";
    const std::string make = "python3 " ORV_SOURCE "/examples/make_terrain.py " + file;
    if (std::system(make.c_str()) != 0) return make + " fails";
    if (const std::string problem = session.Open(file); !problem.empty()) return problem;
  } else {
    session.GetScene().AddNode(ground).SetMesh(RollingTerrain(kQuads100k));
  }
  auto& scene = session.GetScene();
  scene.SetFrameRate(rate);
  scene.SetRange(0.0, seconds);
  for (int i = 0; i < cars; ++i) {
    rws::core::Instance* const rig = session.GetCore().CreateToolFromFactory("4WheelerExt", {});
    const auto node = [&](const char* name) -> SceneNode& {
      return *scene.Find(rig->GetInstanceName() + "_" + name);
    };
    scene.Reparent(node("GravityDirectionMesh"), scene.Find(ground), 0.0);
    rws::adaptor::Trs pose = node("CarBodyMesh").GetPose();
    pose.translation = (cars == 1 ? Vector() : StartPlace(i, cars)) + Vector(0.0, 0.54, 0.0);
    node("CarBodyMesh").SetPose(pose);
  }
  session.GetAdaptor().ClearUndoHistory();
  return {};
}

// --- the program ---

/// One for all rows; false where no picture can be had, which is told aloud.
bool HasScreen(benchmark::State& state) {
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  static QApplication* const application = [] {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QSurfaceFormat::setDefaultFormat(app::view::MakeFormat(0));
    auto* made = new QApplication(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return made;
  }();
  (void)application;
  const std::string& problem = app::view::GetGraphics().problem;
  if (problem.empty()) return true;
  std::fprintf(stderr, "NOT MEASURED: %s (xvfb-run -a bench_realtime)\n", problem.c_str());
  if (!std::getenv("ORV_BENCH_ONCE")) state.SkipWithError(problem.c_str());
  for (auto _ : state) {
  }
  return false;
}

/// The desktop program with a scene of cars on a pad, its picture of a given size.
class Desk {
 public:
  Desk(int cars, double rate, double seconds = 600.0) {
    rws::core::DataRoot::Set(m_folder.path);
    const std::string file = m_folder.path + "/scene.glb";
    {
      app::SceneSession session;
      problem = FillScene(session, m_folder.path, cars, rate, seconds);
      if (problem.empty()) problem = session.Save(file);
    }
    if (!problem.empty()) return;
    app::StudioOptions options;
    options.language = "en";
    studio = std::make_unique<app::Studio>(options);
    if (!studio->Begin(problem)) return;
    problem = studio->ScriptOpen(file);
    pad = new Pad;
    MapPad(studio->ScriptedCore(), *pad);
  }
  ~Desk() {
    unidevice::DriverManager::instance().removeDriver(kDriver);
    studio.reset();
  }

  /// The picture's widget, so large.
  QOpenGLWidget* Show(const QSize& size) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* const stage = window->findChild<QOpenGLWidget*>("stage");
      if (!stage) continue;
      for (int i = 0; i < 4; ++i) {
        window->resize(window->size() + size - stage->size());
        Wait(0.2);
      }
      if (stage->size() != size)
        std::fprintf(stderr, "the picture is %d x %d\n", stage->width(), stage->height());
      // As somebody finds it who has looked at the scene for a moment.
      while (static_cast<app::view::StageView*>(stage)->IsMakingLevels()) Wait(0.1);
      return stage;
    }
    return nullptr;
  }

  std::string problem;
  std::unique_ptr<app::Studio> studio;
  Pad* pad = nullptr;  ///< its driver's

 private:
  tests::TempFolder m_folder;
};

// --- latency ---

double Quantile(std::vector<double> values, double part) {
  if (values.empty()) return -1.0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

/// Follows each move of the pad: through the frame that records it to the picture after that.
class Follower : public QObject, private rws::adaptor::headless::HostObserver {
 public:
  static constexpr double kStep = 0.0007;  ///< of the axis: each move has a place of its own

  Follower(Desk& desk, QOpenGLWidget& stage)
      : m_core(desk.studio->ScriptedCore()),
        m_host(static_cast<rws::adaptor::headless::HeadlessAdaptor&>(*m_core.GetAdaptor())) {
    rws::core::Instance& rig = *m_core.List(false).front();
    for (std::size_t i = 0; i < rig.GetProperties().entries.size(); ++i)
      if (rig.GetProperties().entries[i].first == kSteering) m_input = i;
    m_host.GetObservers().Add(*this);
    auto& view = static_cast<app::view::StageView&>(stage);
    view.linesWanted = [this, before = view.linesWanted](app::view::FramePacket& packet) {
      m_begun = Now();
      m_shown = m_stepped;
      m_shownStepAt = m_steppedAt;
      before(packet);
    };
    view.painted = [this, before = view.painted] {
      m_drawn = Now();
      before();
    };
    connect(&stage, &QOpenGLWidget::frameSwapped, this, [this] { NoteSwapped(); });
  }
  ~Follower() override { m_host.GetObservers().Remove(*this); }

  /// From another thread.
  void NoteMove() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_moves.push_back(Now());
  }

  std::vector<double> all, wait, queue, draw, swap;  ///< ms

 private:
  /// Behind a tick's frames.
  void OnTime(double) override {
    const auto& samples = m_core.List(false).front()->GetTracks()[m_input].samples;
    if (samples.empty()) return;
    const auto move = static_cast<std::size_t>(std::lround(samples.back().value / kStep));
    if (move <= m_stepped) return;
    m_stepped = move;
    m_steppedAt = Now();
  }
  void NoteSwapped() {
    if (m_shown <= m_seen) return;
    m_seen = m_shown;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_shown > m_moves.size()) return;
    const double moved = m_moves[m_shown - 1], now = Now();
    all.push_back((now - moved) * 1e3);
    wait.push_back((m_shownStepAt - moved) * 1e3);
    queue.push_back((m_begun - m_shownStepAt) * 1e3);
    draw.push_back((m_drawn - m_begun) * 1e3);
    swap.push_back((now - m_drawn) * 1e3);
  }

  CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  std::size_t m_input = 0;
  std::mutex m_mutex;
  std::vector<double> m_moves;  ///< when, each by its number less one
  // Numbers of moves: that a frame has recorded, that is being painted, that has been seen.
  std::size_t m_stepped = 0, m_shown = 0, m_seen = 0;
  double m_steppedAt = 0.0, m_shownStepAt = 0.0, m_begun = 0.0, m_drawn = 0.0;
};

void Latency(benchmark::State& state) {
  if (!HasScreen(state)) return;
  const auto rate = static_cast<double>(state.range(0));
  const QSize size(static_cast<int>(state.range(1)), static_cast<int>(state.range(2)));
  for (auto _ : state) {
    Desk desk(1, rate);
    QOpenGLWidget* const stage = desk.problem.empty() ? desk.Show(size) : nullptr;
    if (!stage) return state.SkipWithError(("no picture: " + desk.problem).c_str());
    Follower follower(desk, *stage);
    desk.studio->ScriptedCore().StartRecording();
    Wait(0.5);
    std::atomic<bool> goesOn{true};
    std::thread hand([&] {
      std::mt19937 random(1);
      std::uniform_int_distribution<int> pause(50, 130);
      for (int i = 1; goesOn; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(pause(random)));
        follower.NoteMove();
        desk.pad->places[0] = i * Follower::kStep;
      }
    });
    Wait(Length(40.0));
    goesOn = false;
    hand.join();
    desk.studio->ScriptedCore().StopRecording();
    const auto tell = [&state](const char* name, const std::vector<double>& values) {
      state.counters[std::string(name) + "_median_ms"] = Quantile(values, 0.5);
      state.counters[std::string(name) + "_p95_ms"] = Quantile(values, 0.95);
    };
    tell("a_all", follower.all);
    tell("b_wait_and_step", follower.wait);
    tell("c_to_paint", follower.queue);
    tell("d_draw", follower.draw);
    tell("e_to_seen", follower.swap);
    state.counters["moves"] = static_cast<double>(follower.all.size());
    const auto& view = static_cast<app::view::StageView&>(*stage);
    state.counters["triangles"] = static_cast<double>(view.GetCounts().triangles);
    const auto figures = static_cast<app::StagePane&>(*desk.studio->GetStage()).GetFigures();
    state.counters["pictures"] = static_cast<double>(figures.painted);
    state.counters["dropped"] = static_cast<double>(figures.dropped);
    state.counters["scale"] = view.GetPictureQuality().scale;
  }
}
BENCHMARK(Latency)
    ->Args({25, 1280, 720})
    ->Args({60, 640, 360})
    ->Iterations(1)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();

// --- a curve in the hand ---

constexpr double kDriveSeconds = 30.0;  ///< s

/// The demo's drive with its curves shown, seen from high above, the car selected. Pixels of the
/// strip's place of the steering at a time; why not, or nothing.
std::string ShowCurves(Desk& desk, double time, QPoint& place) {
  CoreImplementation& core = desk.studio->ScriptedCore();
  app::InputFile inputs;
  const std::string problem = inputs.Load(core, ORV_SOURCE "/examples/drive_hills.csv");
  if (!problem.empty()) return problem;
  inputs.PutIntoTracks();
  if (!app::Resimulate(core, {0.0, kDriveSeconds}, app::Monitor()).began) return "no drive";
  core.SetSelection({core.GetRows().front()->GetId()});
  const auto ask = [&](const std::string& text) {
    app::ScriptLine line;
    std::string wrong;
    app::ScriptLine::Parse(text, line, wrong);
    return line.verb == "view" ? desk.studio->ScriptView(line) : desk.studio->ScriptTakes(line);
  };
  ask("view eye target=-14,0,-60 distance=160 yaw=0 pitch=80");
  ask("curves on tool=points");
  Wait(0.5);
  const rws::core::Instance& rig = *core.List(false).front();
  for (std::size_t i = 0; i < rig.GetProperties().entries.size(); ++i)
    if (rig.GetProperties().entries[i].first == kSteering) {
      const auto& track = const_cast<rws::core::Instance&>(rig).GetTracks()[i];
      const auto at =
          ask("curves at=" + std::to_string(time) + "," + std::to_string(track.value(time)));
      place = {at["x"].get<int>(), at["y"].get<int>()};
    }
  return {};
}

/// From a move of the mouse that drags a point of the steering, up and down, to the picture with
/// the car's new path.
void CurveToPicture(benchmark::State& state) {
  if (!HasScreen(state)) return;
  for (auto _ : state) {
    Desk desk(1, 25.0, kDriveSeconds);
    QPoint place;
    QOpenGLWidget* const stage = desk.problem.empty() ? desk.Show({1280, 720}) : nullptr;
    if (stage) desk.problem = ShowCurves(desk, static_cast<double>(state.range(0)), place);
    if (!stage || !desk.problem.empty())
      return state.SkipWithError(("no picture: " + desk.problem).c_str());
    auto* const strip = stage->window()->findChild<QWidget*>("317");
    if (!strip) return state.SkipWithError("no strip of curves");
    const auto send = [&](QEvent::Type type, int down) {
      const QPoint at = place + QPoint(0, down);
      QMouseEvent event(type, at, strip->mapToGlobal(at),
                        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(strip, &event);
    };
    Runs handled, shown;
    int same = 0;
    double begun = 0.0;
    QEventLoop loop;
    QObject::connect(stage, &QOpenGLWidget::frameSwapped, &loop, &QEventLoop::quit);
    send(QEvent::MouseButtonPress, 0);
    QImage before = stage->grabFramebuffer();
    for (int i = 0; i < Turns(100); ++i) {
      begun = Now();
      send(QEvent::MouseMove, i % 2 ? 4 + i % 7 : -4 - i % 5);
      handled.Add((Now() - begun) * 1e3);
      QTimer::singleShot(2000, &loop, &QEventLoop::quit);
      loop.exec();
      shown.Add((Now() - begun) * 1e3);
      const QImage after = stage->grabFramebuffer();
      if (after == before) ++same;
      before = after;
      Wait(0.05);
    }
    send(QEvent::MouseButtonRelease, 0);
    state.counters["handled_median_ms"] = Quantile(handled.values, 0.5);
    state.counters["shown_median_ms"] = Quantile(shown.values, 0.5);
    state.counters["shown_p95_ms"] = Quantile(shown.values, 0.95);
    if (same > 0) return state.SkipWithError("a move has changed nothing in the picture");
  }
}
BENCHMARK(CurveToPicture)->Arg(2)->Arg(15)->Arg(26)->Iterations(1)->Unit(benchmark::kSecond);

// --- a hundred cars ---

struct Pace {
  double frames = 0.0, seconds = 0.0;
};

Pace Perform(CoreImplementation& core, double seconds) {
  core.StartRecording();
  Wait(0.5);  // what the first frames make
  Pace pace;
  const double begin = Now(), first = core.GetFrameTime();
  Wait(Length(seconds));
  pace.seconds = Now() - begin;
  pace.frames = (core.GetFrameTime() - first) / core.GetFrameDuration();
  return pace;
}

void HundredCarsAlone(benchmark::State& state) {
  if (!HasScreen(state)) return;
  const tests::TempFolder folder;
  rws::core::DataRoot::Set(folder.path);
  for (auto _ : state) {
    app::SceneSession session;
    const std::string problem =
        FillScene(session, folder.path, 100, static_cast<double>(state.range(0)));
    if (!problem.empty()) return state.SkipWithError(problem.c_str());
    auto* const pad = new Pad;
    MapPad(session.GetCore(), *pad);
    const Pace pace = Perform(session.GetCore(), 15.0);
    session.GetCore().StopRecording();
    unidevice::DriverManager::instance().removeDriver(kDriver);
    state.counters["frames_per_s"] = pace.frames / pace.seconds;
  }
}
BENCHMARK(HundredCarsAlone)->Arg(60)->Arg(25)->Iterations(1)->Unit(benchmark::kSecond);

void HundredCarsShown(benchmark::State& state) {
  if (!HasScreen(state)) return;
  for (auto _ : state) {
    Desk desk(100, static_cast<double>(state.range(0)));
    if (!desk.problem.empty() || !desk.Show({1280, 720}))
      return state.SkipWithError(("no picture: " + desk.problem).c_str());
    const Pace pace = Perform(desk.studio->ScriptedCore(), 15.0);
    const auto& stage = static_cast<app::StagePane&>(*desk.studio->GetStage());
    state.counters["frames_per_s"] = pace.frames / pace.seconds;
    state.counters["pictures_per_s"] = stage.GetFigures().perSecond;
    state.counters["latency_median_ms"] = stage.GetFigures().medianMs;
    desk.studio->ScriptedCore().StopRecording();
  }
}
BENCHMARK(HundredCarsShown)->Arg(60)->Arg(25)->Iterations(1)->Unit(benchmark::kSecond);

void HundredCarsStepped(benchmark::State& state) {
  int argc = 0;
  std::optional<QCoreApplication> application;  // for timers
  if (!QCoreApplication::instance()) application.emplace(argc, nullptr);
  const tests::TempFolder folder;
  rws::core::DataRoot::Set(folder.path);
  app::SceneSession session;
  FillScene(session, folder.path, 100, 60.0);
  auto* const pad = new Pad;
  CoreImplementation& core = session.GetCore();
  MapPad(core, *pad);
  core.StartRecording();
  unsigned ms = 0;
  const auto perform = [&](int frames) {
    const double first = core.GetFrameTime();
    for (; core.GetFrameTime() < first + (frames - 0.5) * core.GetFrameDuration(); ms += 4) {
      pad->places[0] = 0.3 * std::sin(ms * 1e-3);
      core.OnTimer(rws::core::RecordManager::kTakeTimer, ms);
    }
  };
  perform(20);  // what the first frames make
  const int frames = 100 * Turns(10);
  const std::uint64_t before = g_allocations;
  for (auto _ : state) {
    const double seconds = Seconds([&] { perform(frames); });
    state.counters["frame_us"] = seconds / frames * 1e6;
  }
  state.counters["allocations_a_frame"] = static_cast<double>(g_allocations - before) / frames;
  Hash hash;
  for (SceneNode* node : session.GetScene().GetNodes())
    hash.Add(session.GetAdaptor()
                 .FindSceneNode(node->GetName())
                 ->GetWorldPose(core.GetFrameTime())
                 .data(),
             16);
  state.SetLabel("poses " + std::to_string(hash.value));
  core.StopRecording();
  unidevice::DriverManager::instance().removeDriver(kDriver);
}
BENCHMARK(HundredCarsStepped)->Iterations(1)->Unit(benchmark::kSecond);

// --- long takes ---

constexpr int kMinutes = 5;

struct Memory {
  double megabytes[kMinutes + 1] = {}, written = 0.0;
};

double ResidentMegabytes() {
  std::ifstream status("/proc/self/statm");
  double whole = 0.0, resident = 0.0;
  status >> whole >> resident;
  return resident * 4096.0 / 1e6;
}

/// What the process holds at each minute of a take of ten cars by a clock that is told, and when
/// its keys have been written.
Memory TakeTenCars() {
  const tests::TempFolder folder;
  rws::core::DataRoot::Set(folder.path);
  app::SceneSession session;
  Memory memory;
  if (!FillScene(session, folder.path, 10, 60.0).empty()) return memory;
  auto* const pad = new Pad;
  CoreImplementation& core = session.GetCore();
  MapPad(core, *pad);
  malloc_trim(0);
  core.StartRecording();
  const unsigned most = std::getenv("ORV_BENCH_ONCE") ? 5 : 60 * kMinutes;
  for (unsigned ms = 0; ms <= 1000 * most; ms += 5) {
    pad->places[0] = 0.3 * std::sin(ms * 1e-3);
    core.OnTimer(rws::core::RecordManager::kTakeTimer, ms);
    if (ms % 60000 == 0) memory.megabytes[ms / 60000] = ResidentMegabytes();
  }
  core.StopRecording();
  memory.written = ResidentMegabytes();
  return memory;
}

void FiveMinutesOfTenCars(benchmark::State& state) {
  std::optional<Memory> memory;
  for (auto _ : state)
    if (!(memory = InChild(TakeTenCars))) return state.SkipWithError("the take failed");
  for (int i = 0; i <= kMinutes; ++i)
    state.counters["minute" + std::to_string(i) + "_MB"] = memory->megabytes[i];
  state.counters["written_MB"] = memory->written;
}
BENCHMARK(FiveMinutesOfTenCars)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace orv::bench
