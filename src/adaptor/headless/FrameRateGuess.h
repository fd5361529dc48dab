/// The frame rate of a scene that tells none.
#pragma once

#include <vector>

namespace orv::rws::adaptor::headless {

class Scene;

/// What the key times of a scene tell about its frame rate.
struct FrameRateGuess {
  /// False for fewer than three different times, which fit a rate by accident, and for times that
  /// fit all whole rates, such as whole seconds.
  bool tells = false;
  std::vector<double> rates;  ///< common rates that all times fit, the likeliest first

  /// Rates that fit as well as the first and are no multiples of it.
  std::vector<double> Rivals() const;
};

/// Of the common rates: 25 when it fits, then whole ones before those of 1000/1001 of them, lower
/// before higher, since keys on frames of 24 stand on those of 48 too.
FrameRateGuess GuessFrameRate(const Scene& scene);

}  // namespace orv::rws::adaptor::headless
