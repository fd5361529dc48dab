// Which runs the keys of a scene come from.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/session/anyhost/TimeSpan.h"

namespace orv::app {

class SceneSession;
struct KeptRig;
struct KeptTake;

/// A stretch of keys that one run has made, from its start on.
struct KeyStretch {
  /// Until when a rig's keys are of it (s).
  struct End {
    double time = 0.0;
    bool isReplaced = false;  ///< another run begins there, so the frame itself is not of it
    const KeptRig* settings = nullptr;  ///< by then, where they are another run's now
  };

  TimeSpan span;                    ///< s, that the run is to be simulated over
  std::map<std::string, End> rigs;  ///< by name

  /// Whether a key of the rig at `time` is of this stretch.
  bool Holds(const std::string& rig, double time) const;
};

/// What a simulation has to be cut into to come to the keys of the checked rigs: where a run began
/// in the middle of another one, what it found there is given. By the kept takes; what they say
/// nothing of is taken for one run from where the inputs begin to the last key.
std::vector<KeyStretch> FindStretches(SceneSession& session);
/// The same by gaps in the recorded inputs alone, which a take leaves at the frame that it begins
/// with; less than two where there are none.
std::vector<KeyStretch> FindStretchesByGaps(SceneSession& session);
/// The same within `span` alone.
std::vector<KeyStretch> Within(std::vector<KeyStretch> stretches, const TimeSpan& span);

/// What is otherwise now than when the keys were made, as far as the kept takes tell: parameters,
/// profiles, mappings, grounds and curves, recorded inputs, frame rate, versions.
std::vector<std::string> FindChanges(SceneSession& session);

}  // namespace orv::app
