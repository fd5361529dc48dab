// Poses and places of nodes in whatever host there is.
#pragma once

#include "core/host/CoreNode.h"
#include "util/Matrix.h"

namespace orv::app {

/// World pose at `time` (s); identity for a node that is gone.
util::Matrix<double> WorldPose(rws::core::CoreNode& node, double time);
/// Places the node without a key; what has keys goes on following them. Undoable in an open block.
void SetWorldPose(rws::core::CoreNode& node, double time, const util::Matrix<double>& world);
/// Whether `ancestor` is this node or above it.
bool IsUnder(rws::core::CoreNode& node, rws::core::CoreNode& ancestor);

}  // namespace orv::app
