// A program on the same floor as the command line and without it: it makes a scene, fits a car,
// resimulates with progress, changes its mind, and draws a picture. What it cancels or takes back
// must leave the scene as it was, to the byte of its file, but for the takes that are kept with it.
#include <QGuiApplication>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/plot/PlotPainter.h"
#include "app/plot/PlotScene.h"
#include "app/session/Losses.h"
#include "app/session/NodePlacing.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/CarFit.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/takes/KeptTakes.h"
#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/instances/Instance.h"
#include "support/TempFolder.h"
#include "support/WithoutTakes.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"

namespace {

using namespace orv;
using app::Monitor;
using app::TimeSpan;
using rws::core::Instance;

int g_failures = 0;

void check(bool good, const std::string& what) {
  if (good) return;
  std::fprintf(stderr, "FAILED: %s\n", what.c_str());
  ++g_failures;
}

/// A user's car of five meshes, and a rig that has not been fitted to it.
void makeScene(app::SceneSession& session) {
  auto& scene = session.GetScene();
  scene.SetRange(0.0, 2.0);
  const auto add = [&scene](const char* name, const util::CMesh& mesh, double x, double y,
                            double z) {
    auto& node = scene.AddNode(name);
    node.SetMesh(mesh);
    node.SetPose({{x, y, z}, {}, {1.0, 1.0, 1.0}});
  };
  add("Ground", util::CMesh_Box(200.0, 1.0, 200.0), 0.0, -0.5, 0.0);
  add("Shell", util::CMesh_Box(1.6, 0.5, 3.0), 0.0, 0.7, 0.0);
  add("FL", util::CMesh_Cylinder(0.3, 0.2, 16, 0), -0.75, 0.3, -1.2);
  add("FR", util::CMesh_Cylinder(0.3, 0.2, 16, 0), 0.75, 0.3, -1.2);
  add("BL", util::CMesh_Cylinder(0.3, 0.2, 16, 0), -0.75, 0.3, 1.2);
  add("BR", util::CMesh_Cylinder(0.3, 0.2, 16, 0), 0.75, 0.3, 1.2);
  check(session.GetCore().CreateToolFromFactory(app::kFittedKind, "Car") != nullptr,
        "a car is made");
}

/// Counts what the core tells of checks.
struct CheckWatch : util::MessageNode {
  explicit CheckWatch(rws::core::CoreImplementation& core) : MessageNode("CheckWatch") {
    connect(&core);
  }
  void onMessage(util::Message& message, bool) override {
    if (rws::core::NewsIn<rws::core::RowChecked>(message)) ++told;
  }
  int told = 0;
};

class Work {
 public:
  Work(app::SceneSession& session, const tests::TempFolder& folder)
      : m_session(session), m_folder(folder) {}

  void fit();
  void resimulate();
  void onlyOne();
  void changeTiming();
  void cancel();
  void cancelTake();
  void plot();

 private:
  std::string file() const {
    check(tests::saveWithoutTakes(m_session, m_folder.path + "/now.glb").empty(),
          "the scene is saved");
    return m_folder.Read("now.glb");
  }
  rws::core::CoreNode* node(const char* name) const {
    return m_session.GetAdaptor().FindSceneNode(name);
  }
  Instance& car() const { return *m_session.GetCore().FindInstance("Car"); }
  std::size_t undoEntries() const { return m_session.GetAdaptor().GetUndo().entryNames().size(); }
  /// `change` must change the file, in one step of undo that gives the old one back.
  void expectOneStep(const std::string& what, const std::function<void()>& change) const {
    const std::string before = file();
    const std::size_t entries = undoEntries();
    change();
    const std::string after = file();
    check(after != before, what + " changes the scene");
    check(undoEntries() == entries + 1, what + " is one step of undo");
    check(m_session.GetAdaptor().HostUndo() && file() == before, what + " can be undone");
    check(m_session.GetAdaptor().HostRedo() && file() == after, what + " can be redone");
  }
  /// `change` must leave nothing behind, not even something to undo or redo.
  void expectNothing(const std::string& what, const std::function<void()>& change) const {
    const std::string before = file();
    const std::size_t entries = undoEntries();
    const double time = m_session.GetAdaptor().GetCurrentTime();
    change();
    check(file() == before, what + " leaves the scene as it was");
    check(undoEntries() == entries, what + " leaves no step of undo");
    check(m_session.GetAdaptor().GetUndo().redoName().empty(), what + " leaves nothing to redo");
    check(m_session.GetAdaptor().GetCurrentTime() == time, what + " leaves the time");
  }

  app::SceneSession& m_session;
  const tests::TempFolder& m_folder;
};

void Work::fit() {
  const app::CarModel model{node("Shell"), {node("FL"), node("FR"), node("BL"), node("BR")}};
  expectNothing("a fit to wheels in a wrong order", [&] {
    const app::CarFit fit = app::FitCar(
        car(), {model.body, {model.wheels[1], model.wheels[0], model.wheels[3], model.wheels[2]}});
    check(fit.problem.why.find("roof") != std::string::npos, "it is told: " + fit.problem.why);
  });
  expectOneStep("a fit", [&] {
    const app::CarFit fit = app::FitCar(car(), model);
    check(!fit.problem, fit.problem.why);
    check(std::abs(fit.frame.wheelbase - 2.4) < 1e-6, "the wheelbase is measured");
  });
  node("Car_GravityDirectionMesh")->SetParent(node("Ground"));
  expectOneStep("a placing", [&] {
    auto* const ground = m_session.GetAdaptor().FindSceneNode("Ground");
    check(app::PlaceNode(*ground, {{{0.0, -0.6, 0.0}}, {}, {}}, 0.0).error.empty(), "it is placed");
  });
}

void Work::resimulate() {
  const std::string path =
      m_folder.Write("in.csv",
                     "time,Gas Pedal (Forw/Backw),Steering Wheel (Right/Left)\n"
                     "0,1,0\n2,1,0.6\n");
  app::InputFile inputs;
  check(inputs.Load(m_session.GetCore(), path).empty(), "the inputs are read");
  auto& adaptor = m_session.GetAdaptor();
  expectOneStep("a file's inputs", [&] {
    adaptor.BeginUndoBlock("Inputs");
    inputs.PutIntoTracks();
    adaptor.EndUndoBlock();
  });
  long last = 0;
  const Monitor monitor([&](long done, long total, double seconds) {
    check(done > last && done <= total && total == 75 && seconds >= 0.0, "progress goes on");
    last = done;
  });
  expectOneStep("a resimulation", [&] {
    const app::RunResult run = app::Resimulate(m_session.GetCore(), {0.0, 3.0}, monitor);
    check(run.began && !run.cancelled && run.frames == 75, "all frames are stepped");
  });
  check(last > 0, "progress is told");
  app::StretchRange(m_session, {0.0, 3.0});
  check(app::PlaybackRange(m_session.GetScene()) == TimeSpan{0.0, 3.0}, "the range grows");
}

/// A rig that is unchecked is stepped alone; what is told leaves its check as it was.
void Work::onlyOne() {
  auto& core = m_session.GetCore();
  core.CreateToolFromFactory(app::kFittedKind, "Other");
  core.SetChecked(core.Find("Car"), false);
  CheckWatch watch(core);
  expectOneStep("a run of one rig", [&] {
    const auto run = app::Resimulate(core, {0.0, 1.0}, Monitor(), {core.Find("Car")});
    check(run.began && run.frames == 25, "it is stepped");
    check(watch.told == 4, "both rows' checks are told, there and back");
  });
  check(!core.Find("Car")->IsChecked() && core.Find("Other")->IsChecked(), "the checks are back");
  core.SetChecked(core.Find("Car"), true);
  core.DeleteTool("Other");
}

void Work::changeTiming() {
  const double rate = m_session.GetScene().GetFrameRate();
  expectOneStep("another range and rate", [&] {
    check(app::SetTiming(m_session, {0.5, 2.5}, 30.0), "they are set");
  });
  expectNothing("a range that runs backwards", [&] {
    check(!app::SetTiming(m_session, {2.0, 1.0}, 24.0), "it is refused");
  });
  check(m_session.GetScene().GetFrameRate() == 30.0, "the rate is the new one");
  check(app::SetTiming(m_session, {0.0, 3.0}, rate), "they are set back");
}

void Work::cancel() {
  std::atomic<bool> stop{false};
  const Monitor monitor([&](long, long, double) { stop = true; }, &stop);
  expectNothing("a cancelled resimulation", [&] {
    const app::RunResult run = app::Resimulate(m_session.GetCore(), {1.0, 3.0}, monitor);
    check(run.cancelled && run.frames > 0 && run.frames < 50, "it was under way");
  });
  check(m_session.FindLosses().keys.empty(), "no key is lost");
}

void Work::cancelTake() {
  std::atomic<bool> stop{false};
  const Monitor monitor([&](long done, long, double) { stop = done > 2; }, &stop);
  expectNothing("a cancelled take", [&] {
    app::TakeRun take(m_session.GetCore());
    check(take.Begin(1.0, 60.0, monitor, [] { QCoreApplication::quit(); }), "it begins");
    QCoreApplication::exec();
    check(take.GetResult().cancelled && take.GetResult().frames > 2, "it was under way");
  });
}

void Work::plot() {
  const auto picture = [&](const Monitor& monitor) {
    return app::PlotScene(m_session.GetScene(), m_session.GetCore().List(false), {0.0, 3.0},
                          "car.glb", monitor);
  };
  std::atomic<bool> stop{true};
  check(picture(Monitor({}, &stop)).cancelled, "a picture can be cancelled");
  const std::string svg = app::DrawSvg(app::SheetOf({picture(Monitor())}));
  for (const char* text : {"Car", "car.glb, top view", "Suspension travel", "Gas Pedal"})
    check(svg.find(text) != std::string::npos, std::string("the picture shows ") + text);
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  const tests::TempFolder folder;
  setenv("RIGWRIGHT_DATA_ROOT", (folder.path + "/root").c_str(), 1);
  const std::string scene = folder.path + "/scene.glb";
  {
    app::SceneSession made;
    makeScene(made);
    check(made.Save(scene).empty(), "the new scene is saved");
  }
  app::SceneSession session;
  check(!session.Open(folder.path + "/gone.glb").empty(), "a file that is not there is refused");
  check(session.Open(scene).empty() && session.TakeWarnings().empty(), "the scene opens");
  Work work(session, folder);
  work.fit();
  work.resimulate();
  work.onlyOne();
  work.changeTiming();
  work.cancel();
  work.cancelTake();
  work.plot();
  std::printf("%s\n", g_failures ? "there were failures" : "all is well");
  return g_failures ? 1 : 0;
}
