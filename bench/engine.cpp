// Resimulation through the whole engine: tracks, rigs, takes' buffers, keys. Each row prints a hash
// of the poses that came out, so that a speed-up that changes the answer shows.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "unidevice/Property.h"

namespace {

using orv::rws::adaptor::headless::ChannelPath;
using orv::rws::adaptor::headless::HeadlessSession;
using orv::rws::adaptor::headless::SceneNode;
using orv::rws::core::Instance;

constexpr double kFrame = 0.04;

/// A node that wanders for `frames` frames, keyed in position and rotation.
SceneNode& AddMover(HeadlessSession& session, int frames) {
  session.GetScene().SetRange(0.0, frames * kFrame);
  SceneNode& node = session.GetScene().AddNode("Mover");
  std::vector<double> times, places, turns;
  for (int i = 0; i <= frames; ++i) {
    const double t = i * kFrame;
    times.push_back(t);
    places.insert(places.end(), {std::sin(t), 1.0 + 0.1 * std::sin(9.0 * t), std::cos(0.7 * t)});
    const double half = 0.4 * std::sin(0.9 * t);
    turns.insert(turns.end(), {0.0, std::sin(half), 0.0, std::cos(half)});
  }
  node.ReplaceKeys(ChannelPath::kTranslation, 0.0, times.back(), times, places, kFrame);
  node.ReplaceKeys(ChannelPath::kRotation, 0.0, times.back(), times, turns, kFrame);
  return node;
}

std::uint64_t HashPoses(HeadlessSession& session, double end) {
  std::uint64_t hash = 1469598103934665603u;
  for (SceneNode* node : session.GetScene().GetNodes()) {
    const auto matrix = node->WorldMatrix(end);
    unsigned char bytes[sizeof matrix.m];
    std::memcpy(bytes, matrix.m, sizeof bytes);
    for (const unsigned char byte : bytes) hash = (hash ^ byte) * 1099511628211u;
  }
  return hash;
}

void RunOnce(HeadlessSession& session, int frames) {
  auto& core = session.GetCore();
  core.BeginResimulation(0.0, frames * kFrame);
  while (core.StepResimulation()) {
  }
  core.EndResimulation();
}

/// Resimulates `frames` frames of all rigs of the session again and again.
void Resimulate(benchmark::State& state, HeadlessSession& session, int frames, int rigs) {
  for (auto _ : state) {
    RunOnce(session, frames);
    state.PauseTiming();
    session.GetAdaptor().ClearUndoHistory();
    state.ResumeTiming();
  }
  const double stepped = static_cast<double>(state.iterations()) * frames;
  state.counters["frames/s"] = benchmark::Counter(stepped, benchmark::Counter::kIsRate);
  state.counters["perRig"] =
      benchmark::Counter(stepped * rigs, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.SetLabel("poses " + std::to_string(HashPoses(session, frames * kFrame)));
}

void MotionFilterCams(benchmark::State& state) {
  const int rigs = static_cast<int>(state.range(0));
  const int frames = rigs == 1 ? 10000 : 100;
  HeadlessSession session(orv::rws::addon::AllRigs());
  SceneNode& mover = AddMover(session, frames);
  for (int i = 0; i < rigs; ++i) {
    Instance* rig = session.GetCore().CreateToolFromFactory("MotionFilterCam", {});
    SceneNode* attached = session.GetScene().Find(rig->GetInstanceName() + "_AttachedCam");
    session.GetScene().Move(*attached, &mover);
  }
  Resimulate(state, session, frames, rigs);
}
BENCHMARK(MotionFilterCams)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// The single rig over as many frames as each of the thousand has, the peer of their per-rig cost.
void MotionFilterCamShort(benchmark::State& state) {
  HeadlessSession session(orv::rws::addon::AllRigs());
  SceneNode& mover = AddMover(session, 100);
  Instance* rig = session.GetCore().CreateToolFromFactory("MotionFilterCam", {});
  session.GetScene().Move(*session.GetScene().Find(rig->GetInstanceName() + "_AttachedCam"),
                          &mover);
  Resimulate(state, session, 100, 1);
}
BENCHMARK(MotionFilterCamShort)->Unit(benchmark::kMillisecond);

void DirectInputLink(benchmark::State& state) {
  constexpr int kFrames = 10000;
  HeadlessSession session(orv::rws::addon::AllRigs());
  Instance* rig = session.GetCore().CreateToolFromFactory("DirectInputLink", {});
  session.GetCore().LoadProfile(rig->GetInstanceName(), "Smooth");
  auto& tracks = rig->GetTracks();
  tracks.resize(static_cast<std::size_t>(rig->GetProperties().count()));
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    // The six channels move; live spinners, where a rig has them, rest.
    if (rig->GetProperties().entries[i].first.rfind("Spinner: ", 0) == 0) continue;
    for (int frame = 1; frame <= kFrames; ++frame)
      tracks[i].set(frame * kFrame, std::sin(0.3 * frame * kFrame * static_cast<double>(i + 1)));
  }
  Resimulate(state, session, kFrames, 1);
}
BENCHMARK(DirectInputLink)->Unit(benchmark::kMillisecond);

}  // namespace
