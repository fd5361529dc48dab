// Seconds and the host's frames.
#pragma once

#include <maya/MAnimControl.h>
#include <maya/MDGContext.h>
#include <maya/MDGContextGuard.h>
#include <maya/MTime.h>

namespace orv::rws::adaptor::maya {

/// Frames a second of a unit of time; 0 for one that counts none.
double FrameRateOf(MTime::Unit unit);
/// A time of the host's, which is a frame of the scene's unit where it lies within half a tick of
/// one.
MTime ToHostTime(double seconds);
/// In seconds; frames count as their number times a frame's duration.
double ToSeconds(const MTime& time);

/// What `read` finds in the scene at `time` (s), without the host's time being moved.
template <class Read>
auto ReadAt(double time, Read read) {
  const MTime host = ToHostTime(time);
  if (host == MAnimControl::currentTime()) return read();
  MDGContext context(host);
  const MDGContextGuard guard(context);
  return read();
}

}  // namespace orv::rws::adaptor::maya
