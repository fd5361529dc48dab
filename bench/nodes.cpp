// A rig that makes thousands of nodes during a take, each keyed for five seconds: what becoming,
// going, coming back, copying, saving and loading of them costs. The sizes show whether a cost
// grows faster than the number of nodes. Each row prints a hash of the poses that came out; peak_MB
// is the whole memory of a process of its own that does the take and the save.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Child.h"
#include "Figures.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot.h"
#include "util/CMesh_Box.h"
#include "util/Matrix.h"

namespace {

using namespace orv::rws;
using adaptor::headless::HeadlessSession;
using orv::bench::Seconds;

constexpr double kFrame = 0.04;
constexpr int kBirthFrames = 250;  ///< the nodes are born evenly over the first ten seconds
constexpr int kLife = 125;         ///< frames that each is keyed for
constexpr int kFrames = kBirthFrames + kLife;
constexpr int kSizes[] = {500, 1000, 5000};

int g_size = 0;  ///< nodes of one take

/// Motes that fly off in all directions and show one mesh.
class Swarm : public CCamera {
 public:
  using CCamera::CCamera;

  int Define() override {
    m_pInterface->BeginConfig();
    m_pInterface->EndConfig();
    return 0;
  }
  int Create() override {
    orv::util::CMesh_Box box(0.1, 0.1, 0.1);
    return (m_template = m_pInterface->CreateMeshNode("template", nullptr, &box, 0)) ? 0 : 1;
  }
  int Restore() override {
    m_template = m_pInterface->FindNode("template");
    for (int i = 0; m_pInterface->FindNode(NameOf(i)); ++i) {
    }
    return m_template ? 0 : 1;
  }
  int Store() override { return 0; }
  void Start(double) override { m_motes.clear(); }
  void Step(double time) override {
    const int frame = static_cast<int>(std::lround(time / kFrame));
    const int perFrame = g_size / kBirthFrames;
    for (int i = 0; frame <= kBirthFrames && i < perFrame; ++i) Add();
    const int oldest = std::max(0, (frame - kLife) * perFrame);
    for (int i = oldest; i < static_cast<int>(m_motes.size()); ++i) {
      const double age = time - (i / perFrame) * kFrame;
      orv::util::Matrix<double> m =
          orv::util::Quat<double>(0.0, std::sin(age + i), 0.1 * age, 1.0).normalized().toMatrix();
      m.setTranslation({std::sin(i) * 3 * age, 9 * age - 4.9 * age * age, std::cos(i) * 3 * age});
      CSnapshot* const snapshot =
          m_pInterface->GetSnapshot(m_motes[static_cast<std::size_t>(i)], time);
      snapshot->SetKey(m.data());
      m_pInterface->ReleaseSnapshot(snapshot);
    }
  }
  void Stop() override {}
  void Update(double) override {}

 private:
  static std::string NameOf(int i) {
    char text[32];
    std::snprintf(text, sizeof text, "mote_%05d", i + 1);
    return text;
  }
  void Add() {
    const std::string name = NameOf(static_cast<int>(m_motes.size()));
    CNode* node = m_pInterface->FindNode(name);
    if (!node) node = m_pInterface->CreateMeshNode(name, nullptr, nullptr, 0);
    node->Extension(kShareMesh, m_template, nullptr);
    node->Extension(kWrittenByRig, nullptr, nullptr);
    m_motes.push_back(node);
  }

  CNode* m_template = nullptr;
  std::vector<CNode*> m_motes;
};

class SwarmPlugin : public CCameraPlugin {
 public:
  CCamera* CreateObject(const CreationRecord& record) override { return new Swarm(record); }
  std::string GetId() override { return "Swarm"; }
  std::string GetName() override { return "Orvel Swarm"; }
  std::string GetCategory() override { return "Accessory"; }
  std::string GetDescription() override { return "Makes nodes in a take."; }
  void Destroy() override {}
};

/// A session with one swarm, and a file to save it to, which goes with it.
class Stage {
 public:
  Stage() : m_session({&m_plugin}) {
    m_path =
        (std::filesystem::temp_directory_path() / ("nodes_" + std::to_string(getpid()))).string() +
        ".glb";
    m_session.GetScene().SetRange(0.0, kFrames * kFrame);
    m_session.GetCore().CreateToolFromFactory("Swarm", "Swarm_01");
  }
  ~Stage() { std::filesystem::remove(m_path); }

  HeadlessSession& Session() { return m_session; }
  core::CoreImplementation& Core() { return m_session.GetCore(); }
  adaptor::headless::HeadlessAdaptor& Host() { return m_session.GetAdaptor(); }
  core::InstanceReference* Row() { return Core().Find("Swarm_01"); }
  const std::string& Path() const { return m_path; }

  void Take() {
    Core().BeginResimulation(0.0, kFrames * kFrame);
    while (Core().StepResimulation()) {
    }
    Core().EndResimulation();
  }
  bool Save() {
    std::string error;
    return m_session.Save(m_path, error);
  }
  bool Load() {
    std::string error;
    return m_session.Open(m_path, error) && m_session.TakeWarnings().empty();
  }
  std::uint64_t HashPoses() {
    orv::bench::Hash hash;
    for (auto* node : m_session.GetScene().GetNodes())
      hash.Add(node->WorldMatrix(0.5 * kFrames * kFrame).data(), 16);
    return hash.value;
  }

 private:
  SwarmPlugin m_plugin;
  HeadlessSession m_session;
  std::string m_path;
};

/// Peak memory (MB) of a process that does the take and the save, and perhaps opens the file after;
/// negative when it failed.
double PeakMegabytes(bool load) {
  const auto peak = orv::bench::InChild([load] {
    bool done = false;
    {
      Stage stage;
      stage.Take();
      done = stage.Save() && (!load || stage.Load());
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return done ? static_cast<double>(usage.ru_maxrss) * 1024.0 / 1e6 : -1.0;
  });
  return peak.value_or(-1.0);
}

void Nodes(benchmark::State& state) {
  g_size = static_cast<int>(state.range(0));
  const double peak = PeakMegabytes(false), peakWithLoad = PeakMegabytes(true);
  state.counters["peak_MB"] = peak;
  state.counters["peak_load_MB"] = peakWithLoad;
  for (auto _ : state) {
    if (peak < 0.0 || peakWithLoad < 0.0) state.SkipWithError("the take of its own failed");
    Stage stage;
    const auto timed = [&](const char* name, const std::function<void()>& work) {
      state.counters[name] = 1e3 * Seconds(work);
    };
    timed("take", [&] { stage.Take(); });
    state.SetLabel("poses " + std::to_string(stage.HashPoses()));
    timed("undo", [&] { stage.Host().HostUndo(); });
    timed("redo", [&] { stage.Host().HostRedo(); });
    std::string problem;
    timed("clone", [&] { stage.Core().Clone(stage.Row(), problem); });
    timed("clone_undo", [&] { stage.Host().HostUndo(); });
    timed("rename", [&] { stage.Core().Rename(stage.Row(), "Flock"); });
    timed("rename_undo", [&] { stage.Host().HostUndo(); });
    timed("delete", [&] { stage.Core().Delete(stage.Row(), true); });
    timed("delete_undo", [&] { stage.Host().HostUndo(); });
    timed("save", [&] {
      if (!stage.Save()) state.SkipWithError("the file can't be written");
    });
    state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(stage.Path())) / 1e6;
    timed("load", [&] {
      if (!stage.Load()) state.SkipWithError("the file can't be read");
    });
    timed("save_again", [&] { stage.Save(); });
  }
}
BENCHMARK(Nodes)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2])->Iterations(1)->Unit(
    benchmark::kMillisecond);

}  // namespace
