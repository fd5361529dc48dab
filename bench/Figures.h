// Figures of a benchmark: medians and minima of interleaved runs, and a hash of what came out.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace orv::bench {

/// Runs that a row is made of: `usual` to read its figures, one to see that it works.
inline int Turns(int usual) {
  return std::getenv("ORV_BENCH_ONCE") ? 1 : usual;
}

/// Wall seconds of one call.
template <class Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The runs of one thing that is timed, in the unit that is reported.
struct Runs {
  std::vector<double> values;

  void Add(double value) { values.push_back(value); }
  double Median() const {
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    return sorted.empty() ? 0.0 : sorted[sorted.size() / 2];
  }
  double Least() const {
    return values.empty() ? 0.0 : *std::min_element(values.begin(), values.end());
  }
  void Report(benchmark::State& state, const std::string& name) const {
    state.counters[name] = Median();
    state.counters[name + "_min"] = Least();
  }
};

/// FNV-1a over the bytes of numbers.
struct Hash {
  std::uint64_t value = 1469598103934665603u;

  void Add(const double* numbers, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      unsigned char bytes[8];
      std::memcpy(bytes, numbers + i, 8);
      for (const unsigned char byte : bytes) value = (value ^ byte) * 1099511628211u;
    }
  }
};

}  // namespace orv::bench
