// The grid of frames that a take steps on.
#pragma once

#include <cmath>

namespace orv::rws::addon {

/// A time this close to a frame is that frame (s).
inline constexpr double kFrameTolerance = 1e-5;

/// Index of the frame at `time`, or of the next one when no frame lies within the tolerance.
/// `duration` is that of a frame (s), above 0.
inline double FrameIndex(double time, double duration) {
  const double nearest = std::round(time / duration);
  if (std::abs(time - nearest * duration) <= kFrameTolerance) return nearest;
  return std::ceil(time / duration);
}

/// Time of the frame before `time` (s). A multiple of the duration and never a difference of times,
/// so that it equals, bit for bit, the time under which that frame was stored.
inline double FrameBefore(double time, double duration) {
  return (FrameIndex(time, duration) - 1.0) * duration;
}

/// Time of the first frame after `time` (s): the first that a take from `time` on steps.
inline double FrameAfter(double time, double duration) {
  const double index = FrameIndex(time, duration);
  const bool between = index * duration > time + kFrameTolerance;
  return (between ? index : index + 1.0) * duration;
}

}  // namespace orv::rws::addon
