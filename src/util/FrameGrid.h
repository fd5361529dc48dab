// The grid of frames: a frame's time is its index times the duration of a frame.
#pragma once

#include <algorithm>
#include <cmath>

namespace orv::util {

/// A time this close to a frame is that frame (s).
inline constexpr double kFrameTolerance = 1e-5;
/// Part of a frame by which the bounds of a stretch of time may miss one.
inline constexpr double kFrameSlack = 1e-6;
/// Where whole indices end, some 2.5 years at 25 frames per second.
inline constexpr int kMostFrames = 2000000000;

// In all of these `duration` is that of a frame (s), above 0, and times are in seconds.

/// Index of the frame at `time`, or of the next one when no frame lies within the tolerance.
inline double frameAtOrAfter(double time, double duration) {
  const double nearest = std::round(time / duration);
  if (std::abs(time - nearest * duration) <= kFrameTolerance) return nearest;
  return std::ceil(time / duration);
}

/// Index of the frame that `time` lies in: the last one at or before it, with no tolerance but for
/// what a product of index and duration may fall short of its frame by a rounding. Held within
/// kMostFrames.
inline int frameAtOrBefore(double time, double duration) {
  if (!(std::abs(time / duration) < kMostFrames)) return time < 0.0 ? -kMostFrames : kMostFrames;
  const double nearest = std::round(time / duration);
  if (std::abs(nearest * duration - time) <= 1e-12 * std::max(1.0, std::abs(time)))
    return static_cast<int>(nearest);
  const int cut = static_cast<int>(time / duration);
  return time < 0.0 && cut * duration > time ? cut - 1 : cut;
}

/// Index of the nearest frame, halves away from 0; also the number of frames in a length of time.
inline long nearestFrame(double time, double duration) {
  return std::lround(time / duration);
}

/// Index of the first frame of a stretch that begins at `from`, by the slack.
inline long firstFrameFrom(double from, double duration) {
  return static_cast<long>(std::ceil(from / duration - kFrameSlack));
}
/// Index of the last frame of a stretch that ends at `to`, by the slack.
inline long lastFrameUntil(double to, double duration) {
  return static_cast<long>(std::floor(to / duration + kFrameSlack));
}

/// Time of the nearest frame when it lies within the tolerance, else `time` itself.
inline double snapToFrame(double time, double duration) {
  const double onGrid = std::round(time / duration) * duration;
  return std::abs(onGrid - time) <= kFrameTolerance ? onGrid : time;
}

/// Time of the frame before `time`. A multiple of the duration and never a difference of times, so
/// that it equals, bit for bit, the time under which that frame was stored.
inline double frameBefore(double time, double duration) {
  return (frameAtOrAfter(time, duration) - 1.0) * duration;
}

/// Time of the first frame after `time`: the first that a take from `time` on steps.
inline double frameAfter(double time, double duration) {
  const double index = frameAtOrAfter(time, duration);
  const bool between = index * duration > time + kFrameTolerance;
  return (between ? index : index + 1.0) * duration;
}

}  // namespace orv::util
