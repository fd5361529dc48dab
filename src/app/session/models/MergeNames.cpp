#include "app/session/models/MergeNames.h"

#include <set>
#include <vector>

#include "adaptor/headless/Scene.h"

namespace orv::app {

using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;

std::map<std::string, std::string> TakeFreeNames(
    Scene& added, const Scene& scene, const std::function<std::string(const SceneNode&)>& wish) {
  std::map<std::string, std::string> names;
  std::set<std::string> given;
  const std::vector<SceneNode*> nodes = added.GetNodes();
  // Who can keep its name does; the others stay clear of all names on both sides.
  const auto keeps = [&](const SceneNode& node) {
    return wish(node) == node.GetName() && scene.Find(node.GetName()) == nullptr;
  };
  for (const SceneNode* node : nodes)
    if (keeps(*node)) given.insert(node->GetName());
  for (SceneNode* node : nodes) {
    const std::string old = node->GetName();
    std::string name = old;
    if (!keeps(*node)) {
      const std::string base = wish(*node);
      name = base;
      for (int i = 2; scene.Find(name) != nullptr || given.count(name) > 0 ||
                      (added.Find(name) != nullptr && added.Find(name) != node);
           ++i)
        name = base + "_" + std::to_string(i);
      given.insert(name);
      added.Rename(*node, name);
    }
    names.emplace(old, name);
  }
  for (SceneNode* node : nodes) {
    if (!node->GetHome()) continue;
    const auto home = names.find(*node->GetHome());
    if (home != names.end()) node->SetHome(home->second);
  }
  return names;
}

}  // namespace orv::app
