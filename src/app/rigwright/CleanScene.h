// A scene for delivery, without rigs.
#pragma once

#include <set>
#include <string>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

class ProgressBar;

/// Takes all rigs out of `scene` in memory: nodes with a rig's mark go, with the exception of those
/// in `keep`, and the records too. What stays and hung below a rig's node moves up to the nearest
/// ancestor that stays, or to the world, and its motion from `from` to `to` (s) is baked as keys,
/// one per frame; what does not move gets a plain pose. Everything else is left as it is.
/// The number of nodes that were baked; -1 when the user interrupted it.
int cleanScene(rws::adaptor::headless::Scene& scene, const std::set<std::string>& keep, double from,
               double to, ProgressBar& progress);

}  // namespace orv::app
