// Animation for hosts without a plug-in.
#pragma once

#include <string>
#include <vector>

#include "adaptor/common/Space.h"
#include "app/session/anyhost/TimeSpan.h"

namespace orv::rws::adaptor::headless {
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app {

class Monitor;

struct AnimatedResult {
  long frames = 0;
  long nodes = 0;
  bool isCancelled = false;
  std::string error;  ///< why nothing was written; empty when it was
  std::vector<std::string> warnings;
};

/// Whether `path` ends as one of the files that `WriteAnimated` writes: .anim, .ma or .usda.
bool IsAnimatedFile(const std::string& path);

/// Writes the nodes in `only`, or all when it is empty, with their poses in each frame of `span`:
/// as curves to paste (.anim), as a Maya scene (.ma), both in centimetres, or as a USD stage
/// (.usda) in metres. Whole or not at all.
AnimatedResult WriteAnimated(const rws::adaptor::headless::Scene& scene,
                             const std::vector<const rws::adaptor::headless::SceneNode*>& only,
                             const TimeSpan& span, rws::adaptor::UpAxis up, const std::string& path,
                             const Monitor& monitor);

}  // namespace orv::app
