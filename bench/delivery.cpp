// Writing 30 s of moving nodes, chains of four, as files for other programs. Each row prints a hash
// of the file beside the time.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/delivery/AnimatedFile.h"
#include "util/AtomicFile.h"

namespace {

using namespace orv;
using namespace orv::rws::adaptor::headless;

constexpr int kFrames = 751;
constexpr double kFrame = 0.04;  ///< s

void fill(Scene& scene, int nodes) {
  std::vector<double> times;
  for (int i = 0; i < kFrames; ++i) times.push_back(i * kFrame);
  SceneNode* above = nullptr;
  for (int n = 0; n < nodes; ++n) {
    above = &scene.AddNode("Node 1", n % 4 == 0 ? nullptr : above);
    std::vector<double> places, turns, scales;
    for (const double t : times) {
      const double a = std::sin(t + n), half = 2.0 * t;
      places.insert(places.end(), {t, a, a * t});
      turns.insert(turns.end(), {std::sin(half) * 0.6, std::sin(half) * 0.8, 0.0, std::cos(half)});
      scales.insert(scales.end(), {1.0, 1.0 + 0.1 * a, 1.0});
    }
    Channel place(ChannelPath::kTranslation), turn(ChannelPath::kRotation),
        scale(ChannelPath::kScale);
    place.SetKeys(times, places);
    turn.SetKeys(times, turns);
    scale.SetKeys(times, scales);
    above->SetChannel(place);
    above->SetChannel(turn);
    above->SetChannel(scale);
  }
}

void deliver(benchmark::State& state, const char* ending) {
  Scene scene;
  fill(scene, static_cast<int>(state.range(0)));
  const std::string path =
      (std::filesystem::temp_directory_path() / ("delivery_" + std::to_string(getpid()) + ending))
          .string();
  const app::TimeSpan span{0.0, (kFrames - 1) * kFrame};
  for (auto _ : state) {
    const auto written =
        app::WriteAnimated(scene, {}, span, rws::adaptor::UpAxis::kY, path, app::Monitor());
    if (!written.error.empty()) state.SkipWithError(written.error.c_str());
  }
  std::string bytes;
  util::readFile(path, bytes);
  std::filesystem::remove(path);
  state.counters["file_MB"] = static_cast<double>(bytes.size()) / 1e6;
  state.counters["hash"] = static_cast<double>(std::hash<std::string>{}(bytes) % 1000000);
}

BENCHMARK_CAPTURE(deliver, anim, ".anim")->Arg(28)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deliver, ma, ".ma")->Arg(28)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deliver, usda, ".usda")->Arg(28)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
