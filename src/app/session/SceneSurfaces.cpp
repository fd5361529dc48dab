#include "app/session/SceneSurfaces.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/RigPlacing.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "util/CMesh.h"
#include "util/MeshRays.h"

namespace orv::app {

using rws::adaptor::headless::HeadlessAdaptor;
using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using util::Vector3;

namespace {

constexpr double kFarAway = 1e12;  ///< m; as far as anything may stand
/// Points within this of the lowest are as low (m), and so many of them are looked at.
constexpr double kAsLow = 1e-4;
constexpr std::size_t kMostPoints = 64;

}  // namespace

SceneSurfaces::SceneSurfaces(HeadlessAdaptor& host, double time,
                             const std::vector<SceneNode*>& without) {
  std::unordered_set<const SceneNode*> gone(without.begin(), without.end());
  std::unordered_set<const rws::CInterface*> rigs;
  for (SceneNode* node : without)
    if (const rws::CInterface* owner = host.NodeFor(*node).GetOwner()) rigs.insert(owner);
  // Parents come before their children.
  for (SceneNode* node : host.GetScene().GetNodes()) {
    if (!node->IsVisible() || gone.count(node) || gone.count(node->GetParent())) {
      gone.insert(node);
      continue;
    }
    HeadlessNode& known = host.NodeFor(*node);
    if (known.GetOwner() && rigs.count(known.GetOwner())) continue;
    m_nodes.push_back(node);
    if (!node->HasMesh()) continue;
    const util::Matrix<double> inverse = known.GetWorldPose(time).affineInverse();
    std::shared_ptr<const util::MeshRays> rays = known.GetRays(time);
    if (rays && inverse[15] != 0.0) m_surfaces.push_back({node, inverse, std::move(rays)});
  }
}

SceneSurfaces::~SceneSurfaces() = default;

bool SceneSurfaces::Meet(const Vector3<double>& origin, const Vector3<double>& direction,
                         Hit& hit) const {
  double nearest = kFarAway;
  bool isHit = false;
  for (const Surface& surface : m_surfaces) {
    util::MeshRays::Hit found;
    if (!surface.rays->intersect(surface.inverse.transformPoint(origin),
                                 surface.inverse.transformVector(direction), nearest, found))
      continue;
    nearest = found.t;
    hit = {found.t, origin + direction * found.t, surface.node};
    isHit = true;
  }
  return isHit;
}

LowestPoints FindLowest(const SceneNode& node, double time) {
  LowestPoints lowest;
  double least = kFarAway;
  std::vector<const SceneNode*> open{&node};
  while (!open.empty()) {
    const SceneNode* at = open.back();
    open.pop_back();
    if (!at->IsVisible()) continue;
    for (const auto& child : at->GetChildren()) open.push_back(child.get());
    const util::CMesh* mesh = at->GetMesh();
    if (!mesh) continue;
    const util::Matrix<double> world = at->WorldMatrix(time);
    for (const auto& vertex : mesh->vertices) {
      const Vector3<double> point = world.transformPoint({vertex.x, vertex.y, vertex.z});
      if (!std::isfinite(point.x + point.y + point.z)) continue;
      lowest.box.add(point);
      if (point.y < least - kAsLow) lowest.points.clear();
      if (point.y > least + kAsLow) continue;
      least = std::min(least, point.y);
      if (lowest.points.size() < kMostPoints) lowest.points.push_back(point);
    }
  }
  if (lowest.points.empty()) {
    lowest.points = {node.WorldMatrix(time).translation()};
    lowest.box.add(lowest.points.front());
  }
  return lowest;
}

std::optional<double> FindRise(rws::core::CoreImplementation& core, HeadlessAdaptor& host,
                               const SceneSurfaces& surfaces, SceneNode& node, double time) {
  const LowestPoints lowest = FindLowest(node, time);
  // From above: what is sunk into the ground comes up.
  const double top = lowest.box.high.y;
  const auto groundBelow = [&](const Vector3<double>& point) -> std::optional<double> {
    SceneSurfaces::Hit hit;
    if (surfaces.Meet({point.x, top, point.z}, {0.0, -1.0, 0.0}, hit)) return hit.point.y;
    return top >= 0.0 ? std::optional<double>(0.0) : std::nullopt;
  };
  const HeadlessNode& known = host.NodeFor(node);
  for (const rws::core::Instance* rig : core.List(false)) {
    if (rig != known.GetOwner() || rig->GetNodes().empty() || rig->GetNodes().front() != &known)
      continue;
    const Vector3<double> place = node.WorldMatrix(time).translation();
    const std::optional<double> ground = groundBelow(place);
    if (!ground) return {};
    if (const auto stand = StandingPlace(*rig, {place.x, *ground, place.z}, 1.0))
      return stand->y - place.y;
  }
  std::optional<double> rise;
  for (const Vector3<double>& point : lowest.points)
    if (const std::optional<double> ground = groundBelow(point))
      rise = std::max(rise.value_or(*ground - point.y), *ground - point.y);
  return rise;
}

}  // namespace orv::app
