#include "app/session/anyhost/RigPlacing.h"

#include <vector>

#include "app/session/anyhost/NodePoses.h"
#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/interface/CCamera.h"

namespace orv::app {

using rws::core::CoreNode;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

/// Whether a node above this one is of the same rig.
bool IsCarried(CoreNode& node) {
  for (auto above = rws::core::ParentOf(node); above; above = rws::core::ParentOf(*above))
    if (above->GetOwner() == node.GetOwner()) return true;
  return false;
}

}  // namespace

void PlaceRig(rws::core::Instance& rig, const std::optional<Vector>& position, double scale) {
  const double now = rig.GetHost().GetAdaptor()->GetCurrentTime();
  const std::vector<CoreNode*> nodes = rig.GetNodes();
  if (nodes.empty()) return;
  const Vector here = WorldPose(*nodes.front(), now).translation();
  Matrix change;
  change.setRowLengths({scale, scale, scale});
  change.setTranslation(position.value_or(here) - here * scale);
  std::vector<CoreNode*> tops;
  for (CoreNode* node : nodes)
    if (!IsCarried(*node)) tops.push_back(node);
  for (CoreNode* node : tops) SetWorldPose(*node, now, change * WorldPose(*node, now));
}

std::optional<Vector> StandingPlace(const rws::core::Instance& rig, const Vector& foot,
                                    double scale) {
  double height = 0.0;
  if (rig.GetRig()->Extension(rws::kStandingHeight, &height, nullptr) <= 0) return {};
  return foot + Vector(0.0, height * scale, 0.0);
}

}  // namespace orv::app
