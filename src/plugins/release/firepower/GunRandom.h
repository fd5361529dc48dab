// The chance in a gun: numbers that follow from a seed and a counter alone.
#pragma once

#include <cstdint>

namespace orv::rws::addon {

/// What a number is drawn for. Each use has numbers of its own, so that one more draw for one does
/// not change another.
enum class Chance : std::uint64_t {
  kRhythmOrder,
  kRhythm,
  kSpread,
  kSpreadTurn,
  kSpinSpeed,
  kSpinAxis,
  kSpinAxisTurn,
};

/// Bits number `counter` of a use. The mixing is that of the generator splitmix64.
inline std::uint64_t RandomBits(int seed, Chance use, int counter) {
  std::uint64_t x = static_cast<std::uint32_t>(seed);
  for (const std::uint64_t part :
       {static_cast<std::uint64_t>(use), std::uint64_t{static_cast<std::uint32_t>(counter)}}) {
    x += 0x9e3779b97f4a7c15u * (part + 1);
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
    x ^= x >> 31;
  }
  return x;
}

/// The same as a number in [0, 1).
inline double RandomNumber(int seed, Chance use, int counter) {
  return static_cast<double>(RandomBits(seed, use, counter) >> 11) * 0x1p-53;
}

/// The same, in [-1, 1).
inline double RandomDeviation(int seed, Chance use, int counter) {
  return 2.0 * RandomNumber(seed, use, counter) - 1.0;
}

}  // namespace orv::rws::addon
