// Names for nodes that come from another scene.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace orv::rws::adaptor::headless {
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app {

/// Renames the nodes of `added` so that `scene` has none of their names, the homes that they name
/// along with them. `wish` tells what a node would be called. Gives the new name of each old one.
std::map<std::string, std::string> TakeFreeNames(
    rws::adaptor::headless::Scene& added, const rws::adaptor::headless::Scene& scene,
    const std::function<std::string(const rws::adaptor::headless::SceneNode&)>& wish);

}  // namespace orv::app
