// A scene for delivery, without rigs.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

class Monitor;
struct TimeSpan;

struct CleanResult {
  int baked = 0;  ///< nodes with their own motion now
  bool cancelled = false;
  std::vector<std::string> warnings;  ///< nodes that could not go home
};

/// The names of the nodes that `pattern` names; one that ends in * stands for all that begin so.
std::set<std::string> NodesNamed(const rws::adaptor::headless::Scene& scene,
                                 const std::string& pattern);

/// Takes all rigs out of `scene` in memory: nodes with a rig's mark go, with the exception of those
/// in `keep`, and hubs and the records too. What stays and hung on a node that goes returns to its
/// home; where that is not known, or could not hold its poses, it moves up to the nearest ancestor
/// that stays and can, or to the world. Its motion over `span` is baked as keys, one
/// per frame and one wherever it had keys between frames; what does not move gets a plain pose.
/// Everything else is left as it is; so is all when it is cancelled.
CleanResult CleanScene(rws::adaptor::headless::Scene& scene, const std::set<std::string>& keep,
                       const TimeSpan& span, const Monitor& monitor);

}  // namespace orv::app
