// Moving a node of a rig outside of takes.
#pragma once

#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"
#include "plugins/common/SnapshotGuard.h"

namespace orv::rws::addon {

/// Places the node at `pose` (world) at `time`; undoable in an open block.
inline void PlaceNode(CInterface& core, const RigSceneNode& node, double time,
                      const util::Matrix<double>& pose) {
  const SnapshotGuard snapshot(core, node.GetNode(), time);
  if (snapshot) snapshot->SetMatrix(pose.data());
}

}  // namespace orv::rws::addon
