#include "app/studio/view/SceneFrames.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "util/FrameGrid.h"

namespace orv::app::view {

using rws::adaptor::Colour;
using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using util::Matrix;
using util::Vector3;

namespace {

constexpr Colour kCurveColour{0.25f, 0.55f, 0.9f}, kCameraColour{0.75f, 0.6f, 0.15f};
const int kCameraSign = 0;  ///< its address stands for the sign of a camera

bool IsMirrored(const Matrix<double>& m) {
  const Vector3<double> x = m.axisRow(0), y = m.axisRow(1), z = m.axisRow(2);
  return x.x * (y.y * z.z - y.z * z.y) + x.y * (y.z * z.x - y.x * z.z) +
             x.z * (y.x * z.y - y.y * z.x) <
         0.0;
}

/// The box around a box that a pose has moved.
util::Box Moved(const util::Box& box, const Matrix<double>& pose) {
  util::Box moved;
  if (box.isEmpty()) return moved;
  const Vector3<double> middle = pose.transformPoint(box.middle());
  const Vector3<double> half = (box.high - box.low) * 0.5;
  Vector3<double> reach;
  for (int axis = 0; axis < 3; ++axis)
    for (int i = 0; i < 3; ++i) reach[i] += std::abs(pose[4 * axis + i]) * half[axis];
  moved.low = middle - reach;
  moved.high = middle + reach;
  return moved;
}

/// Wide and flat, as what everything else stands on.
bool IsGround(const util::Box& box) {
  constexpr double kLeastWidth = 20.0;  ///< m
  const Vector3<double> size = box.high - box.low;
  return std::min(size.x, size.z) > kLeastWidth && size.y < 0.25 * std::min(size.x, size.z);
}

bool IsFinite(const Matrix<double>& m) {
  double sum = 0.0;
  for (int i = 0; i < 16; ++i) sum += std::abs(m[i]);
  return std::isfinite(sum);
}

std::uint8_t ByteOf(float value) {
  return static_cast<std::uint8_t>(std::lround(255.0f * std::clamp(value, 0.0f, 1.0f)));
}

}  // namespace

/// A node that shows something, or may at the next change.
struct SceneFrames::Shown {
  SceneNode* node = nullptr;
  HeadlessNode* host = nullptr;
  ModelKey key;
  std::shared_ptr<const Model> model;  ///< null for nothing
  Colour tint{1.0f, 1.0f, 1.0f};
  bool visible = true;  ///< its own; nodes below one that is hidden are not listed
  bool selected = false, mirrored = false;
  bool ofRig = false;
  Matrix<double> world;
  util::Box box;
};

SceneFrames::SceneFrames(rws::adaptor::headless::HeadlessAdaptor& host) : m_host(host) {
  m_host.GetObservers().Add(*this);
}

SceneFrames::~SceneFrames() {
  m_host.GetObservers().Remove(*this);
}

// --- which nodes ---

SceneFrames::ModelKey SceneFrames::KeyOf(const SceneNode& node) {
  int mesh = 0;
  if (const auto document = node.GetFileMesh(mesh)) return {document.get(), mesh};
  if (node.HasMesh()) return {node.GetMesh(), 0};
  if (node.GetCurve()) return {node.GetCurve(), 0};
  if (node.GetLens()) return {&kCameraSign, 0};
  return {};
}

void SceneFrames::ListNodes() {
  m_isTreeOld = false;
  Disarrange();
  m_shown.clear();
  for (auto& [key, held] : m_models) held.isUsed = false;
  const auto& scene = m_host.GetScene();
  // What has gone may not even be looked at.
  const std::vector<SceneNode*> nodes = scene.GetNodes();
  const std::unordered_set<const SceneNode*> there(nodes.begin(), nodes.end());
  const auto isGone = [&](const SceneNode* node) {
    return m_scene != &scene || !there.count(node);
  };
  for (Picture& picture : m_pictures) {
    if (isGone(picture.through)) picture.through = nullptr;
    if (isGone(picture.followed)) picture.followed = nullptr;
  }
  m_selection.erase(std::remove_if(m_selection.begin(), m_selection.end(), isGone),
                    m_selection.end());
  m_scene = &scene;
  AddNodes(scene.GetRoots(), true);
  for (auto at = m_models.begin(); at != m_models.end();)
    at = at->second.isUsed ? std::next(at) : m_models.erase(at);
  m_files.DropUnused();
}

void SceneFrames::AddNodes(const std::vector<std::unique_ptr<SceneNode>>& nodes, bool visible) {
  // A list of its own: a scene may be deeper than the stack.
  struct Open {
    const std::vector<std::unique_ptr<SceneNode>>* nodes;
    bool visible, selected, ofRig;
  };
  std::vector<Open> open{{&nodes, visible, false, false}};
  while (!open.empty()) {
    const Open at = open.back();
    open.pop_back();
    for (const auto& node : *at.nodes) {
      Shown shown;
      shown.node = node.get();
      shown.host = &m_host.NodeFor(*node);
      shown.visible = node->IsVisible();
      shown.selected = at.selected || std::find(m_selection.begin(), m_selection.end(),
                                                node.get()) != m_selection.end();
      shown.key = KeyOf(*node);
      shown.ofRig = at.ofRig || !node->GetTag().empty() || node->IsHub();
      if (at.visible && shown.visible && shown.key.owner) shown.model = FindModel(*node, shown.key);
      const Colour own = node->GetColour();
      int mesh = 0;
      // A file's material has its colour already.
      shown.tint = node->GetFileMesh(mesh) ? Colour{1.0f, 1.0f, 1.0f}
                   : node->HasMesh()       ? own
                   : node->GetCurve()      ? kCurveColour
                                           : kCameraColour;
      open.push_back(
          {&node->GetChildren(), at.visible && shown.visible, shown.selected, shown.ofRig});
      m_shown.push_back(std::move(shown));
    }
  }
}

bool SceneFrames::HasChanged(const Shown& shown) const {
  const SceneNode& node = *shown.node;
  if (node.IsVisible() != shown.visible || !(KeyOf(node) == shown.key)) return true;
  int mesh = 0;
  return node.HasMesh() && !node.GetFileMesh(mesh) && node.GetColour() != shown.tint;
}

// --- what they look like ---

std::shared_ptr<const Model> SceneFrames::FindModel(const SceneNode& node, const ModelKey& key) {
  HeldModel& held = m_models[key];
  held.isUsed = true;
  if (held.model) return held.model;
  int mesh = 0;
  if (const auto document = node.GetFileMesh(mesh))
    held.owner = document;
  else if (node.HasMesh())
    held.owner = node.SharedMesh();
  else
    held.owner = node.GetSharedCurve();
  held.model = ShareModel(MakeModel(node));
  return held.model;
}

Model SceneFrames::MakeModel(const SceneNode& node) {
  int mesh = 0;
  if (const auto document = node.GetFileMesh(mesh)) return m_files.Read(document, mesh);
  if (node.HasMesh()) return MakeModel(MakeMeshData(*node.GetMesh()));
  const rws::adaptor::Curve* curve = node.GetCurve();
  return MakeModel(curve ? MakeLineData(curve->points, curve->closed) : MakeCameraSign());
}

Model SceneFrames::MakeModel(MeshData mesh) {
  Model model;
  Model::Part part;
  part.material.doubleSided = true;  // as rigs make them, both sides mean something
  part.mesh = m_pool.Share(std::move(mesh));
  model.box = part.mesh->box;
  if (!part.mesh->indices.empty()) model.parts.push_back(std::move(part));
  return model;
}

/// Nodes with equal meshes and materials have one model, wherever the file or the rig has them
/// from.
std::shared_ptr<const Model> SceneFrames::ShareModel(Model model) {
  for (const auto& [key, held] : m_models) {
    if (!held.model || held.model->parts.size() != model.parts.size()) continue;
    const auto isSame = [](const Model::Part& a, const Model::Part& b) {
      return a.mesh == b.mesh && a.material == b.material;
    };
    if (std::equal(model.parts.begin(), model.parts.end(), held.model->parts.begin(), isSame))
      return held.model;
  }
  return std::make_shared<const Model>(std::move(model));
}

// --- each picture ---

double SceneFrames::GetTime() const {
  return m_clock ? m_clock() : m_host.GetCurrentTime();
}

/// Whether somebody wants to know where it is, though there may be nothing to be seen.
bool SceneFrames::IsPose(const Shown& shown) const {
  return shown.selected ||
         std::any_of(m_pictures.begin(), m_pictures.end(), [&shown](const Picture& picture) {
           return shown.node == picture.through || shown.node == picture.followed;
         });
}

Matrix<double> SceneFrames::ReadPose(const Shown& shown, double time) const {
  Matrix<double> below;
  if (!m_preview.empty())
    for (const SceneNode* at = shown.node; at; at = at->GetParent()) {
      for (const auto& [node, world] : m_preview)
        if (node == at) return world * below;
      below = at->LocalMatrix(time) * below;
    }
  return shown.host->GetWorldPose(time);
}

void SceneFrames::Read() {
  if (!m_isTreeOld && m_scene == &m_host.GetScene())
    m_isTreeOld = std::any_of(m_shown.begin(), m_shown.end(),
                              [this](const Shown& shown) { return HasChanged(shown); });
  if (m_isTreeOld || m_scene != &m_host.GetScene()) ListNodes();
  const double time = GetTime();
  bool isTurned = false;
  for (Shown& shown : m_shown) {
    if (!shown.model && !IsPose(shown)) continue;
    shown.world = ReadPose(shown, time);
    if (!IsFinite(shown.world)) shown.world = {};
    if (!shown.model) {
      shown.box = {};
      shown.box.add(shown.world.translation());
      continue;
    }
    shown.box = Moved(shown.model->box, shown.world);
    const bool mirrored = IsMirrored(shown.world);
    isTurned = isTurned || mirrored != shown.mirrored;
    shown.mirrored = mirrored;
  }
  if (isTurned) Disarrange();
}

util::Box SceneFrames::GetBox(BoxOf what) const {
  util::Box box, rest;
  for (const Shown& shown : m_shown) {
    if (what == BoxOf::kSelection ? !shown.selected : !shown.model) continue;
    // A camera high above its car would make the car small.
    if (shown.node->GetLens())
      rest.add(shown.box);
    else if (what != BoxOf::kMatter || shown.ofRig)
      box.add(shown.box);
    else if (!IsGround(shown.box))
      rest.add(shown.box);
  }
  return box.isEmpty() ? rest : box;
}

const SceneFrames::Shown* SceneFrames::Find(const SceneNode* node) const {
  if (!node || m_isTreeOld) return nullptr;
  const auto at = std::find_if(m_shown.begin(), m_shown.end(),
                               [node](const Shown& shown) { return shown.node == node; });
  return at == m_shown.end() ? nullptr : &*at;
}

bool SceneFrames::GetLens(std::size_t picture, SourceLens& lens) {
  const SceneNode* through = m_pictures[picture].through;
  const Shown* shown = Find(through);
  if (!shown || !through->GetLens()) return false;
  lens.pose = shown->world;
  // Keys of a lens are the host's, not the scene's.
  lens.fieldOfView = shown->host->GetLensValue(rws::adaptor::LensValue::kFieldOfView, GetTime());
  const double aspect = through->GetLens()->aspectRatio;
  lens.aspect = aspect > 0.0 ? aspect : 16.0 / 9.0;
  if (const auto& backdrop = through->GetBackdrop()) {
    const int frame = util::frameAtOrBefore(GetTime(), m_host.GetFrameDuration());
    lens.backdrop = {m_backdrops.Find(*backdrop, frame), static_cast<float>(backdrop->opacity)};
  }
  return true;
}

bool SceneFrames::GetGuide(std::size_t picture, SourceGuide& guide) {
  const Shown* shown = Find(m_pictures[picture].followed);
  if (!shown) return false;
  guide.node = shown->node;
  guide.pose = shown->world;
  guide.turns = m_pictures[picture].turns;
  return true;
}

void SceneFrames::Write(std::size_t number, FramePacket& packet) {
  Picture& picture = m_pictures[number];
  if (picture.packet != &packet) Arrange(picture, packet);
  for (std::size_t i = 0; i < picture.places.size(); ++i) {
    const Matrix<double>& world = m_shown[picture.places[i]].world;
    Instance& instance = packet.instances[i];
    for (int row = 0; row < 3; ++row) {
      for (int column = 0; column < 3; ++column)
        instance.pose[4 * row + column] = static_cast<float>(world[4 * column + row]);
      instance.pose[4 * row + 3] = static_cast<float>(world[12 + row] - packet.origin[row]);
    }
  }
  SortBlended(picture, packet);
}

void SceneFrames::Disarrange() {
  ++m_structure;
  for (Picture& picture : m_pictures) picture.packet = nullptr;
}

/// Equal models come to lie together.
void SceneFrames::Arrange(Picture& picture, FramePacket& packet) {
  picture.packet = &packet;
  picture.places.clear();
  packet.structure = m_structure;
  packet.instances.clear();
  packet.materials.clear();
  packet.batches.clear();
  packet.blended.clear();
  std::vector<std::vector<std::size_t>> groups;
  std::map<std::tuple<const Model*, bool, bool>, std::size_t> groupOf;
  for (std::size_t i = 0; i < m_shown.size(); ++i) {
    const Shown& shown = m_shown[i];
    if (!shown.model || shown.model->parts.empty()) continue;
    const bool isSign = !shown.node->HasMesh();
    if (isSign && !m_hasSigns) continue;
    // The signs of cameras would stand in the picture of one.
    if (picture.through && (shown.node == picture.through || shown.key.owner == &kCameraSign))
      continue;
    const auto [at, isNew] = groupOf.emplace(
        std::make_tuple(shown.model.get(), shown.mirrored, shown.ofRig), groups.size());
    if (isNew) groups.emplace_back();
    groups[at->second].push_back(i);
  }
  for (std::vector<std::size_t>& group : groups) {
    std::stable_partition(group.begin(), group.end(),
                          [this](std::size_t i) { return m_shown[i].selected; });
    AddGroup(picture, packet, group);
  }
}

void SceneFrames::AddGroup(Picture& picture, FramePacket& packet,
                           const std::vector<std::size_t>& group) const {
  Batch batch;
  batch.first = static_cast<std::uint32_t>(packet.instances.size());
  batch.count = static_cast<std::uint32_t>(group.size());
  batch.mirrored = m_shown[group.front()].mirrored;
  batch.ofRig = m_shown[group.front()].ofRig;
  for (const std::size_t i : group) {
    const Shown& shown = m_shown[i];
    Instance instance{};
    for (std::size_t k = 0; k < 3; ++k) instance.colour[k] = ByteOf(shown.tint[k]);
    instance.colour[3] = 255;
    instance.id = static_cast<std::uint32_t>(i + 1);
    packet.instances.push_back(instance);
    picture.places.push_back(i);
    batch.selected += shown.selected ? 1 : 0;
  }
  for (const Model::Part& part : m_shown[group.front()].model->parts) {
    auto material = std::find(packet.materials.begin(), packet.materials.end(), part.material);
    if (material == packet.materials.end())
      material = packet.materials.insert(material, part.material);
    batch.mesh = part.mesh;
    batch.material = static_cast<std::uint32_t>(material - packet.materials.begin());
    if (part.material.alpha != AlphaMode::kBlend) {
      packet.batches.push_back(batch);
      continue;
    }
    for (std::uint32_t i = 0; i < batch.count; ++i) {
      Batch single = batch;
      single.first += i;
      single.count = 1;
      single.selected = i < batch.selected ? 1 : 0;
      packet.blended.push_back(std::move(single));
    }
  }
}

void SceneFrames::SortBlended(const Picture& picture, FramePacket& packet) const {
  const auto distance = [this, &picture, &packet](const Batch& batch) {
    return (m_shown[picture.places[batch.first]].box.middle() - packet.origin).lengthSquared();
  };
  std::sort(packet.blended.begin(), packet.blended.end(), [&](const Batch& a, const Batch& b) {
    const double one = distance(a), other = distance(b);
    return one != other ? one > other : a.first < b.first;
  });
}

// --- selection and camera ---

void SceneFrames::Select(std::vector<const SceneNode*> nodes) {
  if (nodes == m_selection) return;
  m_selection = std::move(nodes);
  m_isTreeOld = true;
}

const SceneFrames::SceneNode* SceneFrames::FindNode(std::uint32_t id) const {
  return m_isTreeOld || id == 0 || id > m_shown.size() ? nullptr : m_shown[id - 1].node;
}

std::shared_ptr<const Model> SceneFrames::GetModel(const MeshLook& look) {
  const void* owner = look.file ? static_cast<const void*>(look.file.get()) : look.mesh.get();
  const auto held = m_models.find({owner, look.number});
  if (held != m_models.end() && held->second.model) return held->second.model;
  return ShareModel(look.file ? m_files.Read(look.file, look.number)
                              : MakeModel(MakeMeshData(*look.mesh)));
}

/// Null for a node that has gone since the latest Read.
const SceneNode* SceneFrames::IfThere(const SceneNode* node) const {
  if (!node || !m_isTreeOld) return node;
  const std::vector<SceneNode*> nodes = m_host.GetScene().GetNodes();
  return std::find(nodes.begin(), nodes.end(), node) != nodes.end() ? node : nullptr;
}

void SceneFrames::LookThrough(const SceneNode* node, std::size_t picture) {
  if (node == m_pictures[picture].through) return;
  m_pictures[picture].through = node;
  m_pictures[picture].packet = nullptr;
}

void SceneFrames::Follow(const SceneNode* node, bool turns, std::size_t picture) {
  m_pictures[picture].followed = node;
  m_pictures[picture].turns = turns;
}

void SceneFrames::SetSignsVisible(bool visible) {
  if (std::exchange(m_hasSigns, visible) != visible) Disarrange();
}

std::vector<std::string> SceneFrames::TakeOdd() {
  std::vector<std::string> odd = m_files.TakeOdd();
  for (std::string& text : m_backdrops.TakeOdd()) odd.push_back(std::move(text));
  return odd;
}

}  // namespace orv::app::view
