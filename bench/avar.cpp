// Cost of recording and reading an animated variable, per sample. The label is a sum of what was
// read, so that a speed-up that changes the answer shows.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "util/AVar_Linear.h"
#include "util/AVar_Matrix.h"
#include "util/AVar_Nearest.h"

namespace {

using orv::util::AVar_Linear;
using orv::util::AVar_Matrix;
using orv::util::AVar_Nearest;

constexpr int kSamples = 10000;
constexpr double kStep = 0.04;

std::vector<double> randomTimes() {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> anywhere(0.0, kSamples * kStep);
  std::vector<double> times(1 << 16);
  for (double& time : times) time = anywhere(random);
  return times;
}

/// Calls `read(time)` at random times; the label is the sum over the first round of them.
template <class Read>
void readAtRandomTimes(benchmark::State& state, const Read& read) {
  const std::vector<double> times = randomTimes();
  double sum = 0.0;
  for (const double time : times) sum += read(time);
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(read(times[i]));
    i = (i + 1) & (times.size() - 1);
  }
  state.SetLabel("sum " + std::to_string(sum));
  state.SetItemsProcessed(state.iterations());
}

/// Appends kSamples samples by `append(i)` each round, after `begin()`; reports the time of one.
template <class Begin, class Append>
void appendInOrder(benchmark::State& state, const Begin& begin, const Append& append) {
  for (auto _ : state) {
    begin();
    for (int i = 0; i < kSamples; ++i) append(i);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kSamples);
  state.counters["perSample"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * kSamples,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// A retake: the variable is emptied and filled again, in memory that it holds already.
void AppendLinearDouble(benchmark::State& state) {
  AVar_Linear<double> variable;
  appendInOrder(
      state, [&] { variable.cutFrom(0.0); }, [&](int i) { variable.set(i * kStep, i * 0.5); });
}
BENCHMARK(AppendLinearDouble);

/// A first take: the variable grows from nothing, page faults of fresh memory included.
void AppendLinearDoubleFresh(benchmark::State& state) {
  AVar_Linear<double> variable;
  appendInOrder(
      state, [&] { variable = {}; }, [&](int i) { variable.set(i * kStep, i * 0.5); });
}
BENCHMARK(AppendLinearDoubleFresh);

/// Peer of the first take: push_back of the same two numbers.
void AppendStdVectorFresh(benchmark::State& state) {
  std::vector<std::pair<double, double>> vector;
  appendInOrder(
      state, [&] { vector = std::vector<std::pair<double, double>>(); },
      [&](int i) { vector.emplace_back(i * kStep, i * 0.5); });
}
BENCHMARK(AppendStdVectorFresh);

/// Peer of the first take: the standard library's ordered map, told where to insert.
void AppendStdMapFresh(benchmark::State& state) {
  std::map<double, double> map;
  appendInOrder(
      state, [&] { map.clear(); }, [&](int i) { map.emplace_hint(map.end(), i * kStep, i * 0.5); });
}
BENCHMARK(AppendStdMapFresh);

void ValueLinearDouble(benchmark::State& state) {
  AVar_Linear<double> variable;
  for (int i = 0; i < kSamples; ++i) variable.set(i * kStep, i * 0.5);
  readAtRandomTimes(state, [&](double time) { return variable.value(time); });
}
BENCHMARK(ValueLinearDouble);

/// The same where samples do not stand evenly, so that no guess hits and the search runs.
void ValueLinearDoubleUneven(benchmark::State& state) {
  AVar_Linear<double> variable;
  const double end = kSamples * kStep;
  for (int i = 0; i < kSamples; ++i)
    variable.set(end * i / kSamples * i / kSamples * i / kSamples, i * 0.5);
  readAtRandomTimes(state, [&](double time) { return variable.value(time); });
}
BENCHMARK(ValueLinearDoubleUneven);

/// Peer: std::lower_bound on the same samples, then the same interpolation.
void ValueStdLowerBound(benchmark::State& state) {
  AVar_Linear<double> variable;
  for (int i = 0; i < kSamples; ++i) variable.set(i * kStep, i * 0.5);
  const auto& samples = variable.samples;
  readAtRandomTimes(state, [&](double time) {
    const auto it = std::lower_bound(samples.begin(), samples.end(), time,
                                     [](const auto& s, double t) { return s.time < t; });
    if (it == samples.end()) return samples.back().value;
    if (it == samples.begin() || it->time == time) return it->value;
    const auto& a = it[-1];
    return (it->value - a.value) * (time - a.time) / (it->time - a.time) + a.value;
  });
}
BENCHMARK(ValueStdLowerBound);

void ValueNearestDouble(benchmark::State& state) {
  AVar_Nearest<double> variable;
  for (int i = 0; i < kSamples; ++i) variable.set(i * kStep, i * 0.5);
  readAtRandomTimes(state, [&](double time) { return variable.value(time); });
}
BENCHMARK(ValueNearestDouble);

void ValueMatrix(benchmark::State& state) {
  AVar_Matrix<double> variable;
  for (int i = 0; i < kSamples; ++i) {
    auto pose = orv::util::Matrix<double>::rotationAxisAngle(i * 7.0, 0.6, 0.0, 0.8);
    pose.setTranslation({i * 0.1, 0.0, 0.0});
    variable.set(i * kStep, pose);
  }
  readAtRandomTimes(state, [&](double time) { return variable.value(time)[12]; });
}
BENCHMARK(ValueMatrix);

}  // namespace
