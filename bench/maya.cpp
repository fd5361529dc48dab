// A take's keys on nodes of the stand-in for Maya: what each tick of the take costs, and the keys
// at its end. The sizes show whether a cost grows faster than the number of keys; a real host adds
// the time of its own curves. MB is what the process grew by, the stand-in's curves included; own_MB
// what of it the plug-in holds: poses of keys, undo.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Figures.h"
#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "mayahost/Host.h"
#include "util/Matrix.h"
#include "util/ReturnValue.h"

namespace {

using namespace orv::rws;
using adaptor::maya::MayaAdaptorInterface;
using orv::bench::Seconds;

constexpr double kFrame = 1.0 / 24.0;

double MegabytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1048576.0;
}

void KeysOfATake(benchmark::State& state) {
  const auto nodes = static_cast<std::size_t>(state.range(0));
  const int frames = static_cast<int>(state.range(1));
  double ticks = 0.0, keys = 0.0, grown = 0.0, own = 0.0;
  for (auto _ : state) {
    mayahost::Reset();
    MayaAdaptorInterface host;
    auto* const owner = reinterpret_cast<CInterface*>(&host);
    std::vector<adaptor::HostNode*> all;
    for (std::size_t i = 0; i < nodes; ++i)
      all.push_back(static_cast<adaptor::HostNode*>(host.CreateMeshNode(
          {owner, "Node" + std::to_string(i), "Node" + std::to_string(i)}, nullptr, nullptr, 0)));
    const double before = MegabytesInUse();
    std::vector<CInterface*> instances = {owner};
    orv::util::ReturnValue<std::vector<CInterface*>> result(instances);
    host.BeginUndoBlock("Take");
    host.BeginRecording(0.0, result);
    ticks += Seconds([&] {
      for (int frame = 1; frame <= frames; ++frame) {
        for (std::size_t i = 0; i < nodes; ++i) {
          auto pose = orv::util::Matrix<double>::rotationAxisAngle(3.0 * frame, 0.3, 1.0, 0.1);
          pose.setTranslation({0.1 * frame, static_cast<double>(i), 0.0});
          all[i]->SetWorldPose(frame * kFrame, pose, false);
        }
        host.SetCurrentTime(frame * kFrame);
      }
    });
    keys += Seconds([&] { host.EndRecording(); });
    host.EndUndoBlock();
    const double after = MegabytesInUse();
    grown = after - before;
    host.SceneGone();
    own = after - MegabytesInUse();
  }
  const auto runs = static_cast<double>(state.iterations());
  state.counters["tick_ms"] = 1000.0 * ticks / runs / frames;
  state.counters["keys_s"] = keys / runs;
  state.counters["MB"] = grown;
  state.counters["own_MB"] = own;
}
BENCHMARK(KeysOfATake)
    ->Args({100, 750})
    ->Args({1000, 75})
    ->Args({1000, 750})
    ->Unit(benchmark::kSecond)
    ->Iterations(1);

}  // namespace
