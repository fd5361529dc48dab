// Frames of a stretch of time.
#pragma once

#include "util/FrameGrid.h"

namespace orv::app {

/// Indices of the frames within [from, to] seconds; a frame's time is its index times `duration`.
struct FrameTimes {
  FrameTimes(double from, double to, double frameDuration)
      : first(util::firstFrameFrom(from, frameDuration)),
        last(util::lastFrameUntil(to, frameDuration)),
        duration(frameDuration) {}

  long Count() const { return last < first ? 0 : last - first + 1; }
  double Time(long index) const { return static_cast<double>(index) * duration; }

  long first;
  long last;
  double duration;  ///< s
};

}  // namespace orv::app
