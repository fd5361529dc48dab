#include "adaptor/headless/SceneNode.h"

#include <algorithm>
#include <utility>

#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/Scene.h"

namespace orv::rws::adaptor::headless {

using util::CMesh;
using util::Matrix;

bool operator==(const Lens& a, const Lens& b) {
  return a.fieldOfView == b.fieldOfView && a.focusDistance == b.focusDistance &&
         a.nearClip == b.nearClip && a.farClip == b.farClip && a.aspectRatio == b.aspectRatio;
}

namespace {
std::size_t IndexOf(ChannelPath path) {
  return static_cast<std::size_t>(path);
}
}  // namespace

/// Takes the tree apart level by level, so that a deep one needs no deep stack.
SceneNode::~SceneNode() {
  std::vector<std::unique_ptr<SceneNode>> open = std::move(m_children);
  while (!open.empty()) {
    std::unique_ptr<SceneNode> node = std::move(open.back());
    open.pop_back();
    for (auto& child : node->m_children) open.push_back(std::move(child));
    node->m_children.clear();
  }
}

std::size_t SceneNode::IndexInParent() const {
  if (m_parent == nullptr && m_scene == nullptr) return 0;
  const auto& list = m_parent != nullptr ? m_parent->m_children : m_scene->GetRoots();
  if (m_place < list.size() && list[m_place].get() == this) return m_place;
  // Many nodes come and go at the end of the list, the latest first.
  const auto at =
      std::find_if(list.rbegin(), list.rend(), [this](const auto& n) { return n.get() == this; });
  m_place = static_cast<std::size_t>(list.rend() - at) - 1;
  return m_place;
}

bool SceneNode::IsUnder(const SceneNode& ancestor) const {
  for (const SceneNode* node = this; node != nullptr; node = node->m_parent)
    if (node == &ancestor) return true;
  return false;
}

void SceneNode::SetPose(const Trs& pose) {
  m_pose = pose;
}

const Channel* SceneNode::GetChannel(ChannelPath path) const {
  return m_channels[IndexOf(path)].get();
}

bool SceneNode::HasKeys() const {
  return std::any_of(m_channels.begin(), m_channels.end(), [](const auto& c) { return !!c; });
}

/// The channel, made where there is none, and copied where somebody else holds it too.
Channel& SceneNode::OwnChannel(ChannelPath path) {
  std::shared_ptr<Channel>& channel = m_channels[IndexOf(path)];
  if (!channel)
    channel = std::make_shared<Channel>(path);
  else if (channel.use_count() > 1)
    channel = std::make_shared<Channel>(*channel);
  return *channel;
}

void SceneNode::SetChannel(Channel channel) {
  std::shared_ptr<Channel>& slot = m_channels[IndexOf(channel.GetPath())];
  slot = channel.IsEmpty() ? nullptr : std::make_shared<Channel>(std::move(channel));
}

void SceneNode::RemoveChannel(ChannelPath path) {
  m_channels[IndexOf(path)].reset();
}

bool SceneNode::ReplaceKeys(ChannelPath path, double start, double end,
                            const std::vector<double>& times, const std::vector<double>& values,
                            double frameDuration) {
  Channel& channel = OwnChannel(path);
  const bool done = channel.ReplaceKeys(start, end, times, values, frameDuration);
  if (channel.IsEmpty()) {
    RemoveChannel(path);
    return done;
  }
  for (const std::shared_ptr<Channel>& other : m_channels)
    if (other && other.get() != &channel) channel.ShareTimes(*other);
  return done;
}

NodeAnimation SceneNode::GetAnimation() const {
  NodeAnimation result;
  result.pose = m_pose;
  for (std::size_t i = 0; i < 3; ++i) result.channels[i] = m_channels[i];
  return result;
}

void SceneNode::SetAnimation(const NodeAnimation& animation) {
  m_pose = animation.pose;
  for (std::size_t i = 0; i < 3; ++i) {
    // Every writer goes through OwnChannel, which copies what is shared.
    m_channels[i] = std::const_pointer_cast<Channel>(animation.channels[i]);
  }
}

Trs SceneNode::LocalTrs(double time) const {
  Trs pose = m_pose;
  double v[4];
  if (const Channel* c = m_channels[0].get()) {
    c->Evaluate(time, v);
    pose.translation = {v[0], v[1], v[2]};
  }
  if (const Channel* c = m_channels[1].get()) {
    c->Evaluate(time, v);
    pose.rotation = {v[0], v[1], v[2], v[3]};
  }
  if (const Channel* c = m_channels[2].get()) {
    c->Evaluate(time, v);
    pose.scale = {v[0], v[1], v[2]};
  }
  return pose;
}

Matrix<double> SceneNode::LocalMatrix(double time) const {
  // A file's matrix may hold what a pose can't (shear): it counts as long as nobody moved the node.
  if (m_source && m_source->matrix && !HasKeys() && m_pose == m_source->animation.pose)
    return *m_source->matrix;
  return Compose(LocalTrs(time));
}

Matrix<double> SceneNode::WorldMatrix(double time) const {
  return m_parent != nullptr ? m_parent->WorldMatrix(time) * LocalMatrix(time) : LocalMatrix(time);
}

void SceneNode::SetVisible(bool visible) {
  m_visible = visible;
}

void SceneNode::SetTag(const std::string& tag) {
  if (m_scene != nullptr) m_scene->ForgetTag(*this);
  m_tag = tag;
  if (m_scene != nullptr) m_scene->NoteTag(*this);
}

void SceneNode::SetLens(const Lens& lens) {
  m_lens = lens;
}

void SceneNode::SetCurve(const Curve& curve) {
  m_curve = std::make_shared<const Curve>(curve);
}

bool SceneNode::HasMesh() const {
  return m_ownMesh ? m_mesh != nullptr : m_source && m_source->hasTriangles;
}

std::shared_ptr<const CMesh> SceneNode::SharedMesh() const {
  if (!m_mesh && !m_ownMesh && HasMesh()) m_mesh = m_source->document->Triangles(m_source->mesh);
  return m_mesh;
}

const CMesh* SceneNode::GetMesh() const {
  return SharedMesh().get();
}

std::shared_ptr<const GltfDocument> SceneNode::GetFileMesh(int& mesh) const {
  if (m_ownMesh || !HasMesh() || m_source->mesh < 0) return nullptr;
  mesh = m_source->mesh;
  return m_source->document;
}

void SceneNode::SetMesh(const CMesh& mesh) {
  SetMesh(MakeSharedMesh(mesh));
}

/// Giving back the mesh that came from the file makes it the file's again.
void SceneNode::SetMesh(std::shared_ptr<const CMesh> mesh) {
  m_ownMesh = true;
  if (m_source && m_source->hasTriangles && mesh &&
      mesh == m_source->document->Triangles(m_source->mesh))
    m_ownMesh = false;
  if (m_source && !m_source->hasTriangles && !mesh) m_ownMesh = false;
  m_mesh = std::move(mesh);
}

void SceneNode::SetColour(const Colour& colour) {
  m_colour = colour;
}

}  // namespace orv::rws::adaptor::headless
