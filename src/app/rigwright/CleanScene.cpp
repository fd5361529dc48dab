#include "app/rigwright/CleanScene.h"

#include <utility>
#include <vector>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/FrameTimes.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/ProgressBar.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::Channel;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using rws::adaptor::headless::Trs;
using Quat = util::Quat<double>;

/// A node that leaves its rig, with its poses relative to its new parent.
struct BakedNode {
  SceneNode* node = nullptr;
  SceneNode* parent = nullptr;  ///< null is the world
  std::vector<Trs> poses;
};

bool staysIn(const SceneNode& node, const std::set<std::string>& keep) {
  return node.tag().empty() || keep.count(node.name()) != 0;
}

/// The nearest ancestor that stays; `moves` tells whether a node that goes lies between.
SceneNode* newParent(const SceneNode& node, const std::set<std::string>& keep, bool& moves) {
  SceneNode* above = node.parent();
  moves = above && !staysIn(*above, keep);
  while (above && !staysIn(*above, keep)) above = above->parent();
  return above;
}

Trs relativePose(const BakedNode& baked, double time) {
  const util::Matrix<double> world = baked.node->worldMatrix(time);
  if (!baked.parent) return rws::adaptor::headless::decompose(world);
  return rws::adaptor::headless::decompose(baked.parent->worldMatrix(time).affineInverse() * world);
}

/// One property of all poses: as keys, or as the static pose when it never changes.
void bakeProperty(SceneNode& node, ChannelPath path, const std::vector<double>& times,
                  const std::vector<double>& values) {
  const auto width = static_cast<std::size_t>(componentCount(path));
  bool still = true;
  for (std::size_t i = width; i < values.size() && still; ++i)
    still = values[i] == values[i - width];
  if (still) {
    node.removeChannel(path);
    return;
  }
  Channel channel(path);
  channel.setKeys(times, values);
  node.setChannel(std::move(channel));
}

void applyPoses(const BakedNode& baked, const std::vector<double>& times) {
  std::vector<double> translations, rotations, scales;
  Quat before = baked.poses.front().rotation;
  for (const Trs& pose : baked.poses) {
    // Of the two quaternions of a rotation the one next to the frame before.
    Quat q = pose.rotation;
    if (q.x * before.x + q.y * before.y + q.z * before.z + q.w * before.w < 0.0) q = -q;
    before = q;
    translations.insert(translations.end(),
                        {pose.translation.x, pose.translation.y, pose.translation.z});
    rotations.insert(rotations.end(), {q.x, q.y, q.z, q.w});
    scales.insert(scales.end(), {pose.scale.x, pose.scale.y, pose.scale.z});
  }
  baked.node->setPose(baked.poses.front());
  bakeProperty(*baked.node, ChannelPath::kTranslation, times, translations);
  bakeProperty(*baked.node, ChannelPath::kRotation, times, rotations);
  bakeProperty(*baked.node, ChannelPath::kScale, times, scales);
}

void removeRigNodes(Scene& scene, const std::set<std::string>& keep) {
  const std::vector<SceneNode*> nodes = scene.nodes();
  // Children stand behind their parents: from the back, a node goes after all that is below it.
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
    if (staysIn(**node, keep))
      (*node)->setTag({});
    else
      scene.detach(**node);
  }
  scene.rigs().clear();
}

}  // namespace

int cleanScene(Scene& scene, const std::set<std::string>& keep, double from, double to,
               ProgressBar& progress) {
  std::vector<BakedNode> bakedNodes;
  for (SceneNode* node : scene.nodes()) {
    bool moves = false;
    SceneNode* parent = newParent(*node, keep, moves);
    if (staysIn(*node, keep) && moves) bakedNodes.push_back({node, parent, {}});
  }
  const FrameTimes frames(from, to, scene.frameDuration());
  std::vector<double> times;
  for (long i = 0; i < frames.count(); ++i) {
    times.push_back(frames.time(frames.first + i));
    for (BakedNode& baked : bakedNodes) baked.poses.push_back(relativePose(baked, times.back()));
    progress.set(i);
    if (isInterrupted()) return -1;
  }
  // All poses are known before anything moves: one may be the parent of another.
  for (const BakedNode& baked : bakedNodes) {
    scene.move(*baked.node, baked.parent);
    if (!baked.poses.empty()) applyPoses(baked, times);
  }
  removeRigNodes(scene, keep);
  return static_cast<int>(bakedNodes.size());
}

}  // namespace orv::app
