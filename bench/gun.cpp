// The gun through the whole engine: frames of many living projectiles over a ground of 100,352
// triangles, and a take of 5,000 with its undo, its file and its memory. Labels hold a hash of the
// poses, so that a speed-up that changes the answer shows.
#include <unistd.h>

#include <QCoreApplication>

#include <cstdio>
#include <fstream>

#include "Child.h"
#include "Figures.h"
#include "RollingTerrain.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"

namespace orv::bench {
namespace {

using rws::adaptor::headless::HeadlessSession;
using rws::adaptor::headless::SceneNode;

/// A gun 20 m over the ground that fires to all sides for as many frames as it takes.
class GunScene {
 public:
  /// `each` projectiles a frame for `shots` frames; they bounce on the ground.
  GunScene(int each, int shots, double lifeTime) : session(rws::addon::AllRigs()) {
    auto& scene = session.GetScene();
    scene.SetFrameRate(1.0 / kFrame);
    scene.SetRange(0.0, 1000.0);
    SceneNode& ground = scene.AddNode("Ground");
    static const util::CMesh terrain = RollingTerrain(kQuads100k);
    ground.SetMesh(terrain);
    m_gun = session.GetCore().CreateToolFromFactory("Firepower", "Gun");
    scene.Reparent(*scene.Find("Gun_collision"), &ground, 0.0);
    auto pose = scene.Find("Gun_fire trigger")->GetPose();
    pose.translation = {0.0, 20.0, 0.0};
    scene.Find("Gun_fire trigger")->SetPose(pose);
    for (const auto& [label, value] : {std::pair{"Rate of fire (rounds/s)", 25.0},
                                       {"Bullets/discharge", double(each)},
                                       {"Spread Angle (degrees)", 180.0},
                                       {"Muzzle Velocity (m/s)", 30.0},
                                       {"Lifetime (seconds)", lifeTime},
                                       {"Pitch Bullet", 1.0},
                                       {"elasticity (%)", 70.0}})
      for (auto* element : m_gun->GetConfig().FindAll(label)) {
        element->SetNumber(value);
        element->Apply();
      }
    util::AVar_Linear<double> fire;
    fire.set(kFrame, 1.0);
    fire.set(shots * kFrame, 1.0);
    fire.set((shots + 1) * kFrame, 0.0);
    m_gun->SetTrack(0, fire);
    session.GetAdaptor().ClearUndoHistory();
  }

  /// Milliseconds of each frame of a resimulation, the last entry being the take's end.
  std::vector<double> Run(int frames) {
    auto& core = session.GetCore();
    std::vector<double> times;
    core.BeginResimulation(0.0, frames * kFrame);
    for (bool more = true; more;)
      times.push_back(1e3 * Seconds([&] { more = core.StepResimulation(); }));
    times.push_back(1e3 * Seconds([&] { core.EndResimulation(); }));
    return times;
  }
  std::string HashPoses(int frames) {
    Hash hash;
    int count = 0;
    for (SceneNode* node : session.GetScene().GetNodes()) {
      count += node->GetName().rfind("Gun_bullet_", 0) == 0;
      for (const int frame : {1, frames / 2, frames})
        hash.Add(node->WorldMatrix(frame * kFrame).data(), 16);
    }
    return std::to_string(count) + " projectiles, poses " + std::to_string(hash.value);
  }

  HeadlessSession session;

 private:
  rws::core::Instance* m_gun;
};

/// Frames in which all of `state.range(0)` projectiles fly and bounce.
void FramesOfLivingProjectiles(benchmark::State& state) {
  constexpr int kShots = 5, kFrames = 100;
  GunScene scene(static_cast<int>(state.range(0)) / kShots, kShots, 10.0);
  Runs frame, each;
  for (auto _ : state) {
    const std::vector<double> times = scene.Run(kFrames);
    Runs flying;
    for (int i = kShots + 1; i < kFrames; ++i) flying.Add(times[static_cast<std::size_t>(i)]);
    frame.Add(flying.Median());
    each.Add(flying.Median() * 1e3 / static_cast<double>(state.range(0)));
    scene.session.GetAdaptor().ClearUndoHistory();
  }
  frame.Report(state, "frame_ms");
  each.Report(state, "us_each");
  state.SetLabel(scene.HashPoses(kFrames));
}
BENCHMARK(FramesOfLivingProjectiles)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Iterations(Turns(5))
    ->Unit(benchmark::kMillisecond);

double PeakMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0.0;
    if (word == "VmHWM:" && status >> kilobytes) return kilobytes * 1024.0 / 1e6;
  }
  return -1.0;
}

struct TakeFigures {
  double first = 0.0, last = 0.0, end = 0.0, save = 0.0, undo = 0.0, redo = 0.0;  ///< ms
  double peakTaken = 0.0, peakSaved = 0.0;                                        ///< MB
};

/// 5,000 projectiles of 125 frames each: 10 a frame for 20 s.
TakeFigures LongTake() {
  constexpr int kShots = 500, kFrames = 625;
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  GunScene scene(10, kShots, 5.0);
  TakeFigures figures;
  const std::vector<double> times = scene.Run(kFrames);
  Runs first, last;
  for (int i = 130; i < 180; ++i) first.Add(times[static_cast<std::size_t>(i)]);
  for (int i = 445; i < 495; ++i) last.Add(times[static_cast<std::size_t>(i)]);
  figures.first = first.Median();
  figures.last = last.Median();
  figures.end = times.back();
  figures.peakTaken = PeakMegabytes();
  auto& adaptor = scene.session.GetAdaptor();
  figures.undo = 1e3 * Seconds([&] { adaptor.HostUndo(); });
  figures.redo = 1e3 * Seconds([&] { adaptor.HostRedo(); });
  const std::string path = "/tmp/bench_gun_" + std::to_string(getpid()) + ".glb";
  std::string error;
  figures.save = 1e3 * Seconds([&] { scene.session.Save(path, error); });
  figures.peakSaved = PeakMegabytes();
  std::remove(path.c_str());
  return figures;
}

/// In a process of its own, for its memory.
void TakeOfFiveThousand(benchmark::State& state) {
  TakeFigures figures;
  for (auto _ : state) {
    const auto taken = InChild(LongTake);
    if (!taken) state.SkipWithError("the take failed");
    figures = taken.value_or(TakeFigures{});
  }
  state.counters["frame_of_the_first_ms"] = figures.first;
  state.counters["frame_of_the_last_ms"] = figures.last;
  state.counters["end_ms"] = figures.end;
  state.counters["undo_ms"] = figures.undo;
  state.counters["redo_ms"] = figures.redo;
  state.counters["save_ms"] = figures.save;
  state.counters["peak_taken_MB"] = figures.peakTaken;
  state.counters["peak_saved_MB"] = figures.peakSaved;
}
BENCHMARK(TakeOfFiveThousand)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv::bench
