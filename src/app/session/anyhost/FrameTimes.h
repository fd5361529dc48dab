// Frames of a stretch of time.
#pragma once

#include <cmath>

namespace orv::app {

/// Indices of the frames within [from, to] seconds; a frame's time is its index times `duration`.
struct FrameTimes {
  FrameTimes(double from, double to, double frameDuration)
      : first(static_cast<long>(std::ceil(from / frameDuration - kSlack))),
        last(static_cast<long>(std::floor(to / frameDuration + kSlack))),
        duration(frameDuration) {}

  long count() const { return last < first ? 0 : last - first + 1; }
  double time(long index) const { return static_cast<double>(index) * duration; }

  static constexpr double kSlack = 1e-6;  ///< frames by which a bound may miss one

  long first;
  long last;
  double duration;  ///< s
};

}  // namespace orv::app
