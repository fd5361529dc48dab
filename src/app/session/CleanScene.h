// A scene for delivery, without rigs.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

class ProgressBar;

struct CleanResult {
  int baked = 0;                      ///< nodes with their own motion now; -1: interrupted
  std::vector<std::string> warnings;  ///< nodes that could not go home
};

/// Takes all rigs out of `scene` in memory: nodes with a rig's mark go, with the exception of those
/// in `keep`, and hubs and the records too. What stays and hung on a node that goes returns to its
/// home; where that is not known, or could not hold its poses, it moves up to the nearest ancestor
/// that stays and can, or to the world. Its motion from `from` to `to` (s) is baked as keys, one
/// per frame and one wherever it had keys between frames; what does not move gets a plain pose.
/// Everything else is left as it is.
CleanResult cleanScene(rws::adaptor::headless::Scene& scene, const std::set<std::string>& keep,
                       double from, double to, ProgressBar& progress);

}  // namespace orv::app
