#include "app/session/anyhost/NodePoses.h"

#include "core/interface/CSnapshot.h"

namespace orv::app {

using rws::core::CoreNode;
using Matrix = util::Matrix<double>;

Matrix WorldPose(CoreNode& node, double time) {
  Matrix pose;
  if (rws::CSnapshot* const snapshot = node.GetSnapshot(time)) {
    snapshot->GetMatrix(pose.data());
    node.ReleaseSnapshot(snapshot);
  }
  return pose;
}

void SetWorldPose(CoreNode& node, double time, const Matrix& world) {
  if (rws::CSnapshot* const snapshot = node.GetSnapshot(time)) {
    snapshot->SetMatrix(world.data());
    node.ReleaseSnapshot(snapshot);
  }
}

bool IsUnder(CoreNode& node, CoreNode& ancestor) {
  if (node.IsSame(&ancestor)) return true;
  const rws::core::NodeHandle parent = rws::core::ParentOf(node);
  return parent && IsUnder(*parent, ancestor);
}

}  // namespace orv::app
