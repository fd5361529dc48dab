// The noise of a car: a number that follows from a counter alone.
#pragma once

#include <cstdint>

namespace orv::rws::addon {

/// Counts `seed` on and gives a number in [0, 1).
inline double DrawRandom(int& seed) {
  seed = static_cast<int>(static_cast<std::uint32_t>(seed) + 1u);
  const auto s = static_cast<std::uint32_t>(seed);
  const std::uint32_t x = (s << 13) ^ s;
  const std::uint32_t n = ((x * x * 15731u + 789221u) * x + 0xd208dd0du) & 0x7fffffffu;
  return n * 0.5 * 9.313225746154785e-10;
}

}  // namespace orv::rws::addon
