// How a rig that drives by itself is led along a line.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "util/QTransform.h"

namespace orv::rws {

/// The answer of a rig to kFollowLine: its own mode of following a target, and where this target is
/// to stand for the rig to be where the line is, when the line is there.
struct LineToFollow {
  // Asked for.
  std::vector<util::QTransform<double>> line;  ///< world poses of `lineNode`, one a frame; may be
                                               ///< empty
  double start = 0.0;                          ///< time of the first (s)

  // Told of every rig that can.
  std::string lineNode;             ///< the rig's node whose way a line is
  std::string targetNode;           ///< the rig's node that it follows
  std::vector<std::string> inputs;  ///< which the mode drives in their place: they are to rest
  /// Parameters by their labels: the mode itself, and what the first frame needs.
  std::vector<std::pair<std::string, double>> mode;
  /// The same that have it follow as closely as it can, whatever its profile asks of the mode.
  std::vector<std::pair<std::string, double>> sharp;
  double size = 0.0;  ///< of the rig (m): what is near on its scale
  /// World places of the target, one a frame of the line, by the present parameters (m).
  std::vector<util::Vector3<double>> targets;
};

}  // namespace orv::rws
