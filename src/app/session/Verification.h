// Whether a scene's keys are what its inputs and parameters come to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/TimeSpan.h"

namespace orv::app {

class SceneSession;

/// A key that is another one than a simulation comes to.
struct KeyDifference {
  double time = 0.0;  ///< s
  std::string node;
  std::string channel;  ///< "translation" (m), "rotation" (degrees), "scale" (factor)
  double amount = 0.0;  ///< in the channel's unit
};

/// What a simulation that writes nothing has found.
struct VerifyReport {
  std::string problem;  ///< why nothing could be compared; empty when all is well
  bool cancelled = false;
  TimeSpan span;                         ///< s, that was simulated
  long keys = 0, nodes = 0;              ///< that were compared
  long differing = 0;                    ///< keys
  std::optional<KeyDifference> first;    ///< in time; of the same time in the order of the scene
  std::optional<KeyDifference> largest;  ///< of the translations, else of what there is
  /// The largest difference of a translation (m) in each second from the first difference on.
  std::vector<KeyDifference> growth;
  std::vector<std::string> missing;  ///< nodes that had keys and got none, or the other way round
  std::vector<std::string> reasons;  ///< what may be why, as far as the scene tells

  bool IsSame() const { return problem.empty() && !cancelled && differing == 0 && missing.empty(); }
};

/// Simulates the checked rigs of the session's scene again, over `span` or from where their inputs
/// begin to their last key, and compares each key of their nodes to the bit. A take that began in
/// the middle of another one is simulated as it was performed: from what the other one left there.
/// The scene is as it was afterwards.
VerifyReport Verify(SceneSession& session, const std::optional<TimeSpan>& span,
                    const Monitor& monitor);

}  // namespace orv::app
