// What a plot shows of one rig.
#pragma once

#include <string>
#include <vector>

#include "util/Matrix.h"

namespace orv::rws::adaptor::headless {
class SceneNode;
}
namespace orv::rws::core {
class Instance;
}

namespace orv::app {

/// What a rig moves, and what that follows. Poses are world poses, one per time of the plot.
struct PlotSubject {
  rws::core::Instance* rig = nullptr;
  rws::adaptor::headless::SceneNode* chief = nullptr;     ///< null for a rig without nodes
  rws::adaptor::headless::SceneNode* followed = nullptr;  ///< null when there is nothing
  std::vector<util::Matrix<double>> chiefPoses, followedPoses;
};

/// The chief node is the first that the rig has keyed; what it follows, the first other one that
/// moves without being carried by it. For rigs that are no cameras that one has no keys, and
/// nothing that the rig keys carries it: a vehicle keys much that it does not follow.
PlotSubject PlotSubjectOf(rws::core::Instance& rig, const std::vector<double>& times);

std::vector<util::Matrix<double>> PosesOf(const rws::adaptor::headless::SceneNode& node,
                                          const std::vector<double>& times);
/// Degrees between two orientations.
double AngleBetween(const util::Matrix<double>& a, const util::Matrix<double>& b);
/// The rig's node of this name within the rig, such as "FollowCam"; null when there is none.
rws::adaptor::headless::SceneNode* RigNode(const rws::core::Instance& rig, const std::string& name);
/// The rig's nodes whose names within the rig begin so, in the order of their creation.
std::vector<const rws::adaptor::headless::SceneNode*> RigNodes(const rws::core::Instance& rig,
                                                               const std::string& start);
bool IsCameraRig(const rws::core::Instance& rig);

}  // namespace orv::app
