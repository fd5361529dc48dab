// Why nothing moves.
#pragma once

#include <vector>

#include "util/Sentence.h"

namespace orv::rws::core {

class CoreImplementation;

/// What keeps a rig from moving in a take.
struct Reason {
  enum class Severity {
    kNote,      ///< worth knowing
    kWarning,   ///< part of what is expected won't happen
    kPrevents,  ///< the rig, or the whole take, stands still
  };
  enum class Kind {
    kNoRig,
    kRunning,         ///< a take or a resimulation runs already
    kRangeEmpty,      ///< the playback range
    kRangeOver,       ///< the time stands at its end or behind it
    kSlow,            ///< the slow factor is high
    kUnchecked,       ///< the row
    kGroupUnchecked,  ///< a group around the row
    kNoLicence,
    kNoInput,       ///< none of the rig's inputs is mapped
    kDeviceAbsent,  ///< the control that an input is mapped to is not there
    kSwallowed,     ///< a control moves, and the input's response makes nothing of it
    kNoGround,
  };

  Severity severity = Severity::kNote;
  Kind kind = Kind::kNoRig;
  int row = 0;     ///< InstanceReference::GetId of the rig; 0: of the take as a whole
  int input = -1;  ///< index of the input that is meant
  util::Sentence text;
  util::Sentence remedy;  ///< what to do
};

/// All that can be found, of the take as a whole first, then rig by rig in their order. Changes
/// nothing and may be asked for at any time; devices are as they were polled last, so that a dead
/// zone tells more while they are awake.
std::vector<Reason> Diagnose(CoreImplementation& core);

}  // namespace orv::rws::core
