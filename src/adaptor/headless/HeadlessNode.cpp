#include "adaptor/headless/HeadlessNode.h"

#include <limits>
#include <optional>
#include <utility>

#include "adaptor/common/RestoreObjects.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

using util::AVar_Linear;

namespace {

constexpr ChannelPath kPaths[] = {ChannelPath::kTranslation, ChannelPath::kRotation,
                                  ChannelPath::kScale};

/// The numbers of one property of a pose; returns how many.
int Numbers(const Trs& pose, ChannelPath path, double out[4]) {
  if (path == ChannelPath::kRotation) {
    const auto& q = pose.rotation;
    out[0] = q.x, out[1] = q.y, out[2] = q.z, out[3] = q.w;
    return 4;
  }
  const auto& v = path == ChannelPath::kTranslation ? pose.translation : pose.scale;
  out[0] = v.x, out[1] = v.y, out[2] = v.z;
  return 3;
}

void CopyProperty(const Trs& from, ChannelPath path, Trs& to) {
  if (path == ChannelPath::kTranslation) to.translation = from.translation;
  if (path == ChannelPath::kRotation) to.rotation = from.rotation;
  if (path == ChannelPath::kScale) to.scale = from.scale;
}

std::size_t IndexOf(LensValue which) {
  return static_cast<std::size_t>(which);
}

double& Value(Lens& lens, LensValue which) {
  return which == LensValue::kFieldOfView ? lens.fieldOfView : lens.focusDistance;
}

/// Holds the tree of scene nodes that a step took out.
class HeadlessPresence final : public NodePresence {
 public:
  HeadlessPresence(HeadlessNode& node, HeadlessAdaptor& adaptor)
      : NodePresence(node), m_own(node), m_adaptor(adaptor) {}
  ~HeadlessPresence() override {
    if (m_detached) m_adaptor.LoseBelow(*m_detached);
  }

 private:
  void Detach() override {
    SceneNode& node = *m_own.GetSceneNode();
    m_parent = node.GetParent() ? &m_adaptor.NodeFor(*node.GetParent()) : nullptr;
    m_index = node.IndexInParent();
    m_detached = m_adaptor.GetScene().Detach(node);
  }
  void Attach() override {
    if (!m_detached) return;
    SceneNode* const place = m_parent && m_parent->IsValid() ? m_parent->GetSceneNode() : nullptr;
    m_adaptor.GetScene().Attach(std::move(m_detached), place, m_index);
  }

  HeadlessNode& m_own;
  HeadlessAdaptor& m_adaptor;
  std::unique_ptr<SceneNode> m_detached;
  HeadlessNode* m_parent = nullptr;
  std::size_t m_index = 0;  ///< among its siblings
};

}  // namespace

HeadlessNode::HeadlessNode(HeadlessAdaptor& adaptor, SceneNode& sceneNode)
    : HostNode(adaptor, sceneNode.GetName()), m_sceneNode(&sceneNode) {}

HeadlessAdaptor& HeadlessNode::Adaptor() {
  return static_cast<HeadlessAdaptor&>(m_adaptor);
}

double HeadlessNode::FrameDuration() {
  return m_adaptor.GetFrameDuration();
}

// --- the tree ---

HostNode* HeadlessNode::ParentNode() {
  SceneNode* const parent = m_sceneNode->GetParent();
  if (!parent) return nullptr;
  if (!m_parent || m_parent->m_sceneNode != parent) m_parent = &Adaptor().NodeFor(*parent);
  return m_parent;
}

int HeadlessNode::GetChildCount() {
  return IsValid() ? static_cast<int>(m_sceneNode->GetChildren().size()) : 0;
}

HostNode* HeadlessNode::ChildNode(int index) {
  return &Adaptor().NodeFor(*m_sceneNode->GetChildren()[static_cast<std::size_t>(index)]);
}

std::string HeadlessNode::GetSceneName() {
  return m_sceneNode ? m_sceneNode->GetName() : std::string();
}

void HeadlessNode::PutName(const std::string& wish) {
  m_sceneNode->GetScene()->Rename(*m_sceneNode, wish);
}

std::string HeadlessNode::GetTag() {
  return m_sceneNode ? m_sceneNode->GetTag() : std::string();
}

bool HeadlessNode::PutUnder(HostNode* parent) {
  SceneNode* const place = parent ? static_cast<HeadlessNode*>(parent)->m_sceneNode : nullptr;
  return m_sceneNode->GetScene()->Reparent(*m_sceneNode, place, m_adaptor.GetCurrentTime());
}

// --- poses ---

void HeadlessNode::WriteTrs(double time, const Trs& local, bool key) {
  Trs pose = m_sceneNode->GetPose();
  for (const ChannelPath path : kPaths) {
    if (!key) {
      if (!m_sceneNode->GetChannel(path)) CopyProperty(local, path, pose);
      continue;
    }
    double numbers[4];
    const int count = Numbers(local, path, numbers);
    m_sceneNode->ReplaceKeys(path, time, time, {time},
                             std::vector<double>(numbers, numbers + count), FrameDuration());
  }
  m_sceneNode->SetPose(pose);
}

std::string HeadlessNode::WriteKeys(double from, const std::vector<PoseSample>& take) {
  std::vector<double> times;
  times.reserve(take.size());
  for (const PoseSample& sample : take) times.push_back(sample.time);
  const NodeAnimation old = m_sceneNode->GetAnimation();
  bool written = true;
  for (const ChannelPath path : kPaths) {
    std::vector<double> values;
    values.reserve(times.size() * 4);
    for (const PoseSample& sample : take) {
      double v[4];
      const auto n = static_cast<std::size_t>(Numbers(sample.local, path, v));
      const double* const last = values.size() >= n ? &values[values.size() - n] : nullptr;
      // The same rotation with the other sign is nearer to the key before: readers that do not
      // look for the short way take it too. The sign leaves a pose's matrix as it is, bit for bit.
      if (n == 4 && last && last[0] * v[0] + last[1] * v[1] + last[2] * v[2] + last[3] * v[3] < 0.0)
        for (double& number : v) number = -number;
      values.insert(values.end(), v, v + n);
    }
    written = m_sceneNode->ReplaceKeys(path, from, std::numeric_limits<double>::infinity(), times,
                                       values, FrameDuration()) &&
              written;
  }
  if (written) return {};
  m_sceneNode->SetAnimation(old);
  return "its old curve is too long to be sampled per frame (shorten it)";
}

// --- the lens ---

double HeadlessNode::ReadLens(LensValue which, double time) const {
  const AVar_Linear<double>& keys = m_lensKeys[IndexOf(which)];
  if (!keys.samples.empty()) return keys.value(time);
  Lens lens = *m_sceneNode->GetLens();
  return Value(lens, which);
}

void HeadlessNode::WriteLens(LensValue which, double time, double value) {
  AVar_Linear<double>& keys = m_lensKeys[IndexOf(which)];
  if (!keys.samples.empty()) {
    keys.set(time, value);
    return;
  }
  Lens lens = *m_sceneNode->GetLens();
  Value(lens, which) = value;
  m_sceneNode->SetLens(lens);
}

void HeadlessNode::WriteLensKeys(LensValue which, double from, const AVar_Linear<double>& take) {
  AVar_Linear<double>& keys = m_lensKeys[IndexOf(which)];
  keys.cutFrom(from - Channel::kSameTime);
  keys.samples.insert(keys.samples.end(), take.samples.begin(), take.samples.end());
}

bool HeadlessNode::HasLensKeys() const {
  return !m_lensKeys[0].samples.empty() || !m_lensKeys[1].samples.empty();
}

// --- undo ---

Exchange HeadlessNode::SavePose() {
  return [this, saved = m_sceneNode->GetAnimation()]() mutable {
    if (!m_sceneNode) return;
    NodeAnimation now = m_sceneNode->GetAnimation();
    m_sceneNode->SetAnimation(saved);
    saved = std::move(now);
  };
}

Exchange HeadlessNode::SavePlace() {
  struct Place {
    HeadlessNode* parent;
    std::size_t index;
    NodeAnimation animation;
    std::optional<std::string> home;
  };
  const auto look = [this] {
    return Place{static_cast<HeadlessNode*>(ParentNode()), m_sceneNode->IndexInParent(),
                 m_sceneNode->GetAnimation(), m_sceneNode->GetHome()};
  };
  return [this, look, saved = look()]() mutable {
    if (!IsValid() || (saved.parent && !saved.parent->IsValid())) return;
    Place now = look();
    SceneNode* const place = saved.parent ? saved.parent->m_sceneNode : nullptr;
    if (m_sceneNode->GetScene()->Move(*m_sceneNode, place, saved.index)) {
      m_sceneNode->SetAnimation(saved.animation);
      m_sceneNode->SetHome(saved.home);
    }
    saved = std::move(now);
  };
}

Exchange HeadlessNode::SaveLens() {
  return [this, lens = *m_sceneNode->GetLens(), keys = m_lensKeys]() mutable {
    if (!m_sceneNode) return;
    const Lens now = *m_sceneNode->GetLens();
    m_sceneNode->SetLens(lens);
    lens = now;
    std::swap(keys, m_lensKeys);
  };
}

std::unique_ptr<NodePresence> HeadlessNode::MakePresence() {
  return std::make_unique<HeadlessPresence>(*this, Adaptor());
}

}  // namespace orv::rws::adaptor::headless
