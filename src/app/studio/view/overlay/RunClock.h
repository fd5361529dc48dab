// Which frame of a run the scene shows.
#pragma once

#include "core/CoreImplementation.h"

namespace orv::app::view {

/// Time of the latest frame that a run has stepped, or of its start (s); between two steps.
inline double GetLatestFrame(rws::core::CoreImplementation& core) {
  // A resimulation tells the frame that it is about to step.
  return core.GetFrameTime() - (core.IsResimulating() ? core.GetFrameDuration() : 0.0);
}

}  // namespace orv::app::view
