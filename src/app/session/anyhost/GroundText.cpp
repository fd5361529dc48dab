#include "app/session/anyhost/GroundText.h"

#include <tuple>

#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::GroundReport;
using rws::core::Instance;

namespace {

bool IsSame(const GroundReport& a, const GroundReport& b) {
  const auto parts = [](const GroundReport& g) {
    return std::tie(g.title, g.declaredBy, g.nodes, g.meshes, g.triangles, g.isStored, g.otherwise);
  };
  return parts(a) == parts(b);
}

}  // namespace

std::optional<GroundReport> GroundOf(Instance& rig) {
  GroundReport report;
  if (rig.GetRig()->Extension(rws::kTellGround, &report, nullptr) <= 0) return {};
  return report;
}

std::string GroundText(const GroundReport& ground) {
  const std::string title = ground.title + ": ";
  if (ground.meshes == 0) return title + ground.otherwise;
  return title + (ground.isStored ? "the stored copy" : Joined(ground.nodes)) + " (" +
         util::counted(ground.meshes, "mesh", "meshes") + ", " +
         util::counted(ground.triangles, "triangle") + ")";
}

GroundWatch::GroundWatch(rws::core::CoreImplementation& core) : m_core(core) {
  for (Instance* rig : core.List(false)) m_before.push_back(GroundOf(*rig));
}

std::vector<std::pair<Instance*, GroundReport>> GroundWatch::Changes(
    const std::string& node) const {
  std::vector<std::pair<Instance*, GroundReport>> changed;
  std::size_t i = 0;
  for (Instance* rig : m_core.List(false)) {
    const auto& before = m_before.at(i++);
    std::optional<GroundReport> now = GroundOf(*rig);
    if (!now || (before && IsSame(*now, *before) && now->declaredBy != node)) continue;
    changed.emplace_back(rig, *std::move(now));
  }
  return changed;
}

}  // namespace orv::app
