/// The frame rate of a scene that tells none.
#pragma once

#include <cstddef>
#include <vector>

namespace orv::rws::adaptor::headless {

class Scene;

/// What the key times of a scene tell about its frame rate.
struct FrameRateGuess {
  std::size_t times = 0;      ///< different key times seen
  std::vector<double> rates;  ///< common rates that all of them fit, the likeliest first

  /// Fewer keys than this fit a rate by accident.
  static constexpr std::size_t kFewest = 3;
  bool tells() const { return times >= kFewest; }
  /// Rates that fit as well as the first and are no multiples of it.
  std::vector<double> rivals() const;
};

/// Of the common rates: 25 when it fits, then whole ones before those of 1000/1001 of them, lower
/// before higher, since keys on frames of 24 stand on those of 48 too.
FrameRateGuess guessFrameRate(const Scene& scene);

}  // namespace orv::rws::adaptor::headless
