#include "app/plot/PlotSubject.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotShots.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "util/Angles.h"

namespace orv::app {

using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using rws::core::Instance;
using Matrix = util::Matrix<double>;

namespace {

/// All but the projectiles of a gun, which are keyed but are not what the rig is.
std::vector<SceneNode*> SceneNodesOf(const Instance& rig) {
  std::vector<SceneNode*> nodes;
  for (rws::core::CoreNode* node : rig.GetNodes()) {
    if (IsShot(node->GetName())) continue;
    if (SceneNode* own = static_cast<HeadlessNode*>(node)->GetSceneNode()) nodes.push_back(own);
  }
  return nodes;
}

bool Moves(const std::vector<Matrix>& poses) {
  return std::any_of(poses.begin(), poses.end(),
                     [&](const Matrix& pose) { return pose != poses.front(); });
}

/// Whether the node or one above it is of the rig, whose nodes are `own`, and keyed.
bool IsKeyedOrCarried(const SceneNode& node, const std::set<const SceneNode*>& own) {
  for (const SceneNode* above = &node; above; above = above->GetParent())
    if (above->HasKeys() && own.count(above) > 0) return true;
  return false;
}

}  // namespace

std::vector<Matrix> PosesOf(const SceneNode& node, const std::vector<double>& times) {
  std::vector<Matrix> poses;
  for (const double time : times) poses.push_back(node.WorldMatrix(time));
  return poses;
}

double AngleBetween(const Matrix& a, const Matrix& b) {
  const auto p = util::Quat<double>::fromMatrix(a);
  const auto q = util::Quat<double>::fromMatrix(b);
  const util::Quat<double> turn = p.conjugate() * q;
  const double sine = util::Vector3<double>(turn.x, turn.y, turn.z).length();
  return 2.0 * std::atan2(sine, std::abs(turn.w)) * util::kDegreesPerRadian;
}

SceneNode* RigNode(const Instance& rig, const std::string& name) {
  for (rws::core::CoreNode* node : rig.GetNodes())
    if (node->GetName() == name) return static_cast<HeadlessNode*>(node)->GetSceneNode();
  return nullptr;
}

std::vector<const SceneNode*> RigNodes(const Instance& rig, const std::string& start) {
  std::vector<const SceneNode*> nodes;
  for (rws::core::CoreNode* node : rig.GetNodes()) {
    if (node->GetName().compare(0, start.size(), start) != 0) continue;
    if (const SceneNode* own = static_cast<HeadlessNode*>(node)->GetSceneNode())
      nodes.push_back(own);
  }
  return nodes;
}

bool IsCameraRig(const Instance& rig) {
  std::vector<std::string> categories;
  rig.GetTool()->GetCategories(categories);
  return std::find(categories.begin(), categories.end(), "Camera") != categories.end();
}

PlotSubject PlotSubjectOf(Instance& rig, const std::vector<double>& times) {
  PlotSubject subject;
  subject.rig = &rig;
  const std::vector<SceneNode*> nodes = SceneNodesOf(rig);
  for (SceneNode* node : nodes)
    if (!subject.chief && node->HasKeys()) subject.chief = node;
  for (SceneNode* node : nodes)
    if (!subject.chief && Moves(PosesOf(*node, times))) subject.chief = node;
  if (!subject.chief && !nodes.empty()) subject.chief = nodes.front();
  if (!subject.chief) return subject;
  subject.chiefPoses = PosesOf(*subject.chief, times);
  const bool isCamera = IsCameraRig(rig);
  const std::set<const SceneNode*> own(nodes.begin(), nodes.end());
  for (SceneNode* node : nodes) {
    if (node->IsUnder(*subject.chief)) continue;
    if (!isCamera && IsKeyedOrCarried(*node, own)) continue;
    subject.followedPoses = PosesOf(*node, times);
    if (!Moves(subject.followedPoses)) continue;
    subject.followed = node;
    break;
  }
  return subject;
}

}  // namespace orv::app
