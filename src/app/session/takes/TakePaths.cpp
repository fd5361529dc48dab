#include "app/session/takes/TakePaths.h"

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/takes/KeptTake.h"
#include "core/CoreImplementation.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace {

constexpr int kPathSteps = 160;

}  // namespace

std::vector<TakePath> PathsOf(const KeptTake& take, const rws::core::CoreImplementation& core,
                              rws::adaptor::headless::Scene& scene) {
  std::vector<TakePath> paths;
  for (const KeptRig& rig : take.rigs) {
    const rws::core::Instance* instance = core.FindInstance(rig.name);
    const auto nodes = instance ? instance->GetNodes() : std::vector<rws::core::CoreNode*>();
    const auto* node = nodes.empty() ? nullptr : scene.Find(nodes.front()->GetSceneName());
    if (!node) continue;
    TakePath path{rig.name, {}};
    for (int i = 0; i <= kPathSteps; ++i) {
      const double part = i / static_cast<double>(kPathSteps);
      const double time = take.range.from + (take.range.to - take.range.from) * part;
      const auto place = node->WorldMatrix(time).translation();
      path.places.emplace_back(place.x, place.z);
    }
    paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace orv::app
