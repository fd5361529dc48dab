#include "adaptor/headless/Scene.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "adaptor/headless/GltfDocument.h"

namespace orv::rws::adaptor::headless {

using util::Matrix;

namespace {

/// Two poses' numbers closer than this are the same pose (m, factors, quaternion components).
constexpr double kSamePose = 1e-9;

template <class Visit>
void VisitTree(const std::vector<std::unique_ptr<SceneNode>>& roots, Visit visit) {
  std::vector<SceneNode*> open;
  for (auto root = roots.rbegin(); root != roots.rend(); ++root) open.push_back(root->get());
  while (!open.empty()) {
    SceneNode* node = open.back();
    open.pop_back();
    visit(*node);
    const auto& children = node->GetChildren();
    for (auto child = children.rbegin(); child != children.rend(); ++child)
      open.push_back(child->get());
  }
}

void Store(const Trs& pose, ChannelPath path, std::vector<double>& values) {
  if (path == ChannelPath::kRotation) {
    const auto& q = pose.rotation;
    values.insert(values.end(), {q.x, q.y, q.z, q.w});
  } else {
    const auto& v = path == ChannelPath::kTranslation ? pose.translation : pose.scale;
    values.insert(values.end(), {v.x, v.y, v.z});
  }
}

bool IsConstant(const std::vector<double>& values, std::size_t n) {
  for (std::size_t i = n; i < values.size(); ++i)
    if (std::abs(values[i] - values[i % n]) > kSamePose) return false;
  return true;
}

}  // namespace

Scene::Scene() = default;
Scene::~Scene() = default;

std::vector<SceneNode*> Scene::GetNodes() const {
  std::vector<SceneNode*> result;
  result.reserve(m_byName.size());
  VisitTree(m_roots, [&result](SceneNode& node) { result.push_back(&node); });
  return result;
}

SceneNode* Scene::Find(const std::string& name) const {
  const auto at = m_byName.find(name);
  return at == m_byName.end() ? nullptr : at->second;
}

SceneNode* Scene::FindTagged(const std::string& tag) const {
  if (tag.empty()) return nullptr;
  const auto [first, last] = m_byTag.equal_range(tag);
  if (first == last) return nullptr;
  if (std::next(first) == last) return first->second;
  SceneNode* found = nullptr;
  VisitTree(m_roots, [&](SceneNode& node) {
    if (found == nullptr && node.GetTag() == tag) found = &node;
  });
  return found;
}

std::string Scene::UniqueName(const std::string& wish, const SceneNode* except) const {
  const std::string base = wish.empty() ? "node" : wish;
  std::string name = base;
  for (std::size_t i = 2;; ++i) {
    const SceneNode* holder = Find(name);
    if (holder == nullptr || holder == except) return name;
    name = base + "_" + std::to_string(i);
  }
}

std::vector<std::unique_ptr<SceneNode>>& Scene::Siblings(SceneNode* parent) {
  return parent != nullptr ? parent->m_children : m_roots;
}

/// Names that are still free stay; only then the others look for new ones.
void Scene::Enter(SceneNode& root) {
  std::vector<SceneNode*> open{&root};
  std::vector<SceneNode*> nameless;
  while (!open.empty()) {
    SceneNode* node = open.back();
    open.pop_back();
    node->m_scene = this;
    NoteTag(*node);
    if (node->m_name.empty() || !m_byName.emplace(node->m_name, node).second)
      nameless.push_back(node);
    for (auto child = node->m_children.rbegin(); child != node->m_children.rend(); ++child)
      open.push_back(child->get());
  }
  for (SceneNode* node : nameless) {
    node->m_name = UniqueName(node->m_name);
    m_byName.emplace(node->m_name, node);
  }
}

void Scene::Leave(SceneNode& root) {
  std::vector<SceneNode*> open{&root};
  while (!open.empty()) {
    SceneNode* node = open.back();
    open.pop_back();
    m_byName.erase(node->m_name);
    ForgetTag(*node);
    node->m_scene = nullptr;
    for (auto& child : node->m_children) open.push_back(child.get());
  }
}

void Scene::NoteTag(SceneNode& node) {
  if (!node.m_tag.empty()) m_byTag.emplace(node.m_tag, &node);
}

void Scene::ForgetTag(SceneNode& node) {
  const auto [first, last] = m_byTag.equal_range(node.m_tag);
  const auto at =
      std::find_if(first, last, [&node](const auto& entry) { return entry.second == &node; });
  if (at != last) m_byTag.erase(at);
}

SceneNode& Scene::AddNode(const std::string& wish, SceneNode* parent, std::size_t index) {
  return Attach(std::unique_ptr<SceneNode>(new SceneNode(wish)), parent, index);
}

std::unique_ptr<SceneNode> Scene::Detach(SceneNode& node) {
  auto& list = Siblings(node.m_parent);
  const auto at = list.begin() + static_cast<std::ptrdiff_t>(node.IndexInParent());
  std::unique_ptr<SceneNode> owned = std::move(*at);
  list.erase(at);
  node.m_parent = nullptr;
  Leave(node);
  TellTree();
  return owned;
}

SceneNode& Scene::Attach(std::unique_ptr<SceneNode> node, SceneNode* parent, std::size_t index) {
  SceneNode& result = *node;
  auto& list = Siblings(parent);
  result.m_place = std::min(index, list.size());
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(result.m_place), std::move(node));
  result.m_parent = parent;
  Enter(result);
  TellTree();
  return result;
}

const std::string& Scene::Rename(SceneNode& node, const std::string& wish) {
  std::string name = UniqueName(wish, &node);
  m_byName.erase(node.m_name);
  node.m_name = std::move(name);
  m_byName.emplace(node.m_name, &node);
  TellTree();
  return node.m_name;
}

bool Scene::Move(SceneNode& node, SceneNode* parent, std::size_t index) {
  if (parent != nullptr && parent->IsUnder(node)) return false;
  auto& from = Siblings(node.m_parent);
  const auto at = from.begin() + static_cast<std::ptrdiff_t>(node.IndexInParent());
  std::unique_ptr<SceneNode> owned = std::move(*at);
  from.erase(at);
  auto& to = Siblings(parent);
  to.insert(to.begin() + static_cast<std::ptrdiff_t>(std::min(index, to.size())), std::move(owned));
  node.m_parent = parent;
  TellTree();
  return true;
}

bool Scene::Reparent(SceneNode& node, SceneNode* parent, double time, std::size_t index) {
  if (parent != nullptr && parent->IsUnder(node)) return false;
  const auto poseAt = [&node, parent](double t, Trs& pose) {
    if (parent != nullptr) return PoseUnder(parent->WorldMatrix(t), node.WorldMatrix(t), pose);
    pose = Decompose(node.WorldMatrix(t));
    return true;
  };

  const NodeAnimation before = node.GetAnimation();
  std::vector<double> times;
  for (std::size_t i = 0; i < 3; ++i) {
    if (!node.m_channels[i]) continue;
    if (!node.OwnChannel(static_cast<ChannelPath>(i)).Bake(GetFrameDuration())) {
      node.SetAnimation(before);
      return false;
    }
    const auto& own = node.m_channels[i]->GetTimes();
    times.insert(times.end(), own.begin(), own.end());
  }
  std::sort(times.begin(), times.end());
  times.erase(std::unique(times.begin(), times.end()), times.end());

  NodeAnimation after;
  std::array<std::vector<double>, 3> values;
  bool possible = poseAt(time, after.pose);
  for (std::size_t k = 0; possible && k < times.size(); ++k) {
    Trs pose;
    possible = poseAt(times[k], pose);
    for (std::size_t i = 0; i < 3; ++i) Store(pose, static_cast<ChannelPath>(i), values[i]);
  }
  if (!possible) {
    node.SetAnimation(before);
    return false;
  }
  for (std::size_t i = 0; i < 3; ++i) {
    const auto path = static_cast<ChannelPath>(i);
    const auto n = static_cast<std::size_t>(ComponentCount(path));
    // A property without keys gets some only when the old or new parent's motion asks for it.
    if (times.empty() || (!node.m_channels[i] && IsConstant(values[i], n))) continue;
    auto channel = std::make_shared<Channel>(path);
    channel->SetKeys(times, std::move(values[i]));
    after.channels[i] = std::move(channel);
  }
  node.SetAnimation(after);
  const bool hung = node.HangsOnRig();
  const std::string home = node.m_parent != nullptr ? node.m_parent->m_name : std::string();
  Move(node, parent, index);  // can be done: `parent` is not below it
  if (!node.HangsOnRig() || !node.m_tag.empty())
    node.m_home.reset();
  else if (!hung)
    node.m_home = home;
  return true;
}

bool Scene::SetFrameRate(double fps) {
  if (!std::isfinite(fps) || !(fps > 0.0)) return false;
  m_frameRate = fps;
  m_rateIsChosen = true;
  return true;
}

void Scene::PutRate(const Rate& rate) {
  m_frameRate = rate.fps;
  m_rateIsChosen = rate.isChosen;
}

bool Scene::SetRange(double start, double end) {
  if (!std::isfinite(start) || !std::isfinite(end) || end < start) return false;
  m_rangeStart = start;
  m_rangeEnd = end;
  return true;
}

bool Scene::KeyRange(double& start, double& end) const {
  double first = std::numeric_limits<double>::infinity();
  double last = -first;
  VisitTree(m_roots, [&](const SceneNode& node) {
    for (const auto& channel : node.m_channels) {
      if (!channel) continue;
      first = std::min(first, channel->GetTimes().front());
      last = std::max(last, channel->GetTimes().back());
    }
  });
  if (first > last) return false;
  start = first;
  end = last;
  return true;
}

}  // namespace orv::rws::adaptor::headless
