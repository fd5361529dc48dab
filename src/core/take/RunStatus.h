// What goes on, in words.
#pragma once

#include "core/CoreMessages.h"
#include "util/Sentence.h"

namespace orv::rws::core {

class RecordManager;

/// The state of a take or resimulation, to be read when a window paints.
struct RunStatus {
  RunState state = RunState::kIdle;
  int secondsLeft = 0;    ///< of a countdown, from 1 up
  int frame = 0;          ///< stepped last
  double time = 0.0;      ///< of that frame (s)
  int framesBehind = 0;   ///< of a take: how many have fallen due and are not stepped yet
  double progress = 0.0;  ///< of a resimulation, 0 to 1
  util::Sentence text;
};

/// Costs next to nothing and changes nothing.
RunStatus GetRunStatus(const RecordManager& manager);

}  // namespace orv::rws::core
