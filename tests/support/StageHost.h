// A host that is as unlike rig space as the real ones are: centimetres, Z up, rotations as angles
// in another order for each node, one curve a channel, a queue of undo of its own.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "adaptor/common/HostAdaptor.h"
#include "adaptor/common/HostChannels.h"
#include "adaptor/common/HostNode.h"
#include "adaptor/common/RestoreObjects.h"
#include "adaptor/common/Space.h"
#include "util/AVar_Linear.h"

namespace orv::tests::stage {

using namespace rws::adaptor;
using util::Matrix;

inline const Space kSpace{UpAxis::kZ, 100.0};
inline constexpr double kFieldOfView = 45.0;     ///< of a new camera (degrees)
inline constexpr double kFocusDistance = 500.0;  ///< of a new camera (cm)

/// What a copy of an object takes along.
struct Content {
  /// Rows of `values` and `curves`: nine of the pose (cm, radians), then the lens (degrees, cm).
  enum Channel { kPose = 0, kFieldOfViewRow = 9, kFocusRow, kChannels };

  std::string name, tag;
  bool shown = true;
  ChannelFrame frame;
  std::array<double, kChannels> values{0, 0, 0, 0, 0, 0, 1, 1, 1, kFieldOfView, kFocusDistance};
  std::array<util::AVar_Linear<double>, kChannels> curves;
  bool isCamera = false;
  bool isMesh = false;
  std::shared_ptr<const util::CMesh> mesh;
  std::shared_ptr<const Curve> curve;
  Colour colour{0.5f, 0.5f, 0.5f};
};

/// An object of the host. Owned by its parent, by the stage, or by an undo step.
struct Object : Content {
  using Children = std::vector<std::unique_ptr<Object>>;

  Object* parent = nullptr;
  bool onStage = false;
  Children children;

  double At(int channel, double time) const {
    const auto& keys = curves[static_cast<std::size_t>(channel)];
    return keys.samples.empty() ? values[static_cast<std::size_t>(channel)] : keys.value(time);
  }
  util::Vector3<double> Three(int first, double time) const {
    return {At(first, time), At(first + 1, time), At(first + 2, time)};
  }
  Matrix<double> Local(double time) const {
    return MatrixOf({Three(0, time), Three(3, time), Three(6, time)}, frame);
  }
  Matrix<double> World(double time) const {
    return parent ? parent->World(time) * Local(time) : Local(time);
  }
  template <class Visit>
  void ForAll(Visit visit) {
    visit(*this);
    for (const auto& child : children) child->ForAll(visit);
  }
  std::unique_ptr<Object> Copy(bool deep) const {
    auto copy = std::make_unique<Object>();
    static_cast<Content&>(*copy) = *this;
    for (const auto& child : children) {
      if (!deep) break;
      copy->children.push_back(child->Copy(true));
      copy->children.back()->parent = copy.get();
    }
    return copy;
  }
};

class Host;

class Node final : public HostNode {
 public:
  Node(Host& host, Object& object);

  bool IsValid() override { return m_object && m_object->onStage; }
  int GetChildCount() override {
    return IsValid() ? static_cast<int>(m_object->children.size()) : 0;
  }
  std::string GetSceneName() override { return m_object ? m_object->name : std::string(); }
  std::string GetTag() override { return m_object ? m_object->tag : std::string(); }
  Object* GetObject() { return m_object; }
  std::intptr_t Extension(int code, void* a, void* b) override {
    keyStatesForgotten += code == rws::kForgetTransformKeys;
    return HostNode::Extension(code, a, b);
  }

  int keyStatesForgotten = 0;

 private:
  friend class Host;
  using Pose = std::pair<decltype(Object::values), decltype(Object::curves)>;

  bool Exists() const override { return m_object != nullptr; }
  HostNode* ParentNode() override;
  HostNode* ChildNode(int index) override;
  bool PutUnder(HostNode* parent) override;
  void PutName(const std::string& wish) override;
  void PutTag(const std::string& tag) override { m_object->tag = tag; }
  bool IsShown() const override { return m_object->shown; }
  void PutShown(bool shown) override { m_object->shown = shown; }

  Matrix<double> ReadWorld(double time) override {
    return kSpace.WorldToRig(m_object->World(time));
  }
  Matrix<double> ReadLocal(double time) override {
    const Matrix<double> local = m_object->Local(time);
    return m_object->parent ? local : kSpace.WorldToRig(local);
  }
  Trs ReadTrs(double time) override { return Decompose(ReadLocal(time)); }
  bool HasOwnKeys() const override {
    return std::any_of(m_object->curves.begin(), m_object->curves.begin() + 9,
                       [](const auto& curve) { return !curve.samples.empty(); });
  }
  void WriteTrs(double time, const Trs& local, bool key) override;
  std::string WriteKeys(double from, const std::vector<PoseSample>& take) override;

  bool HasLens() const override { return m_object->isCamera; }
  double ReadLens(LensValue which, double time) const override {
    return m_object->At(Row(which), time) / Unit(which);
  }
  void WriteLens(LensValue which, double time, double value) override {
    Write(Row(which), time, value * Unit(which), false);
  }
  void WriteLensKeys(LensValue which, double from, const util::AVar_Linear<double>& take) override;

  std::shared_ptr<const Curve> CurveAt(double) const override { return m_object->curve; }
  bool HasMesh() const override { return m_object->isMesh; }
  std::shared_ptr<const util::CMesh> SharedMesh() const override { return m_object->mesh; }
  void PutMesh(std::shared_ptr<const util::CMesh> mesh) override {
    m_object->isMesh = mesh != nullptr;
    m_object->mesh = std::move(mesh);
  }
  Colour ReadColour() const override { return m_object->colour; }
  void PutColour(const Colour& colour) override { m_object->colour = colour; }

  Exchange SavePose() override {
    return [this, saved = Pose(m_object->values, m_object->curves)]() mutable {
      if (!m_object) return;
      std::swap(saved.first, m_object->values);
      std::swap(saved.second, m_object->curves);
    };
  }
  Exchange SavePlace() override;
  Exchange SaveLens() override { return SavePose(); }
  std::unique_ptr<NodePresence> MakePresence() override;

  using LocalPoses = std::map<double, Trs>;
  /// `poseAt` at each of the node's keys, or now.
  LocalPoses PosesAtKeys(const std::function<Trs(double)>& poseAt);
  void WritePoses(const LocalPoses& poses);

  static int Row(LensValue which) {
    return which == LensValue::kFieldOfView ? Object::kFieldOfViewRow : Object::kFocusRow;
  }
  static double Unit(LensValue which) {
    return which == LensValue::kFieldOfView ? 1.0 : kSpace.metre;
  }
  HostChannels Channels(const Trs& local, const util::Vector3<double>& previousAngles) const {
    const Trs pose = m_object->parent ? local : kSpace.TopLevelToHost(local);
    return ChannelsOf(pose, m_object->frame, previousAngles);
  }
  /// A key with `key` or where there are keys, else the value.
  void Write(int channel, double time, double value, bool key) {
    auto& curve = m_object->curves[static_cast<std::size_t>(channel)];
    if (key || !curve.samples.empty())
      curve.set(time, value);
    else
      m_object->values[static_cast<std::size_t>(channel)] = value;
  }
  Host& Stage();

  Object* m_object;
};

/// The adaptor, with its scene and the files that were saved.
class Host final : public HostAdaptor {
 public:
  ~Host() override { ClearUndoHistory(); }

  Object& Add(const std::string& name, Object* parent = nullptr) {
    auto object = std::make_unique<Object>();
    object->name = name;
    object->frame.order = static_cast<RotationOrder>(1 + m_made++ % (kRotationOrders - 1));
    object->frame.rotatePivot = {10.0, -20.0, 5.0};
    return Attach(std::move(object), parent);
  }
  Object* Find(const std::string& name) {
    Object* found = nullptr;
    ForAll([&](Object& object) {
      if (!found && object.name == name) found = &object;
    });
    return found;
  }
  Node& NodeFor(Object& object) {
    Node*& node = m_nodeOf[&object];
    if (!node) {
      auto made = std::make_unique<Node>(*this, object);
      node = made.get();
      Keep(std::move(made));
    }
    return *node;
  }
  Node& HandOut(Object& object) {
    Enlist(NodeFor(object));
    return NodeFor(object);
  }
  /// Writes a pose of rig space, as a user's hand would.
  void Place(Object& object, const Trs& world, std::optional<double> keyAt = {}) {
    static_cast<HostNode&>(NodeFor(object))
        .SetWorldPose(keyAt.value_or(0.0), Compose(world), !!keyAt);
  }
  std::string UniqueName(const std::string& wish, const Object* except) {
    std::string name = wish;
    for (int i = 1;; ++i) {
      const Object* const holder = Find(name);
      if (!holder || holder == except) return name;
      name = wish + std::to_string(i);
    }
  }
  Object& Attach(std::unique_ptr<Object> object, Object* parent,
                 std::size_t index = ~std::size_t{}) {
    Object& root = *object;
    root.parent = parent;
    root.ForAll([&](Object& each) {
      each.name = UniqueName(each.name, nullptr);
      each.onStage = true;
    });
    Object::Children& list = parent ? parent->children : m_roots;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(index, list.size())),
                std::move(object));
    return root;
  }
  std::unique_ptr<Object> Detach(Object& object) {
    Object::Children& list = object.parent ? object.parent->children : m_roots;
    const auto at = list.begin() + static_cast<std::ptrdiff_t>(IndexOf(object));
    std::unique_ptr<Object> detached = std::move(*at);
    list.erase(at);
    object.ForAll([](Object& each) { each.onStage = false; });
    return detached;
  }
  std::size_t IndexOf(const Object& object) {
    const Object::Children& list = object.parent ? object.parent->children : m_roots;
    const auto at = std::find_if(list.begin(), list.end(),
                                 [&](const auto& each) { return each.get() == &object; });
    return static_cast<std::size_t>(at - list.begin());
  }
  /// The objects of a detached tree go for good.
  void Lose(Object& root) {
    root.ForAll([this](Object& object) {
      const auto at = m_nodeOf.find(&object);
      if (at == m_nodeOf.end()) return;
      Delist(*at->second);
      at->second->m_object = nullptr;
      m_nodeOf.erase(at);
    });
  }

  void SaveAs(const std::string& file) {
    Object::Children& copies = m_files[file];
    copies.clear();
    for (const auto& root : m_roots) copies.push_back(root->Copy(true));
  }
  void Open(const std::string& file) {
    Forget();
    m_nodeOf.clear();
    m_roots.clear();
    for (const auto& root : m_files.at(file)) Attach(root->Copy(true), nullptr);
  }

  void TakeFile(const std::string& file, Host& from) {
    m_files[file] = std::move(from.m_files[file]);
  }

  double frameRate = 30000.0 / 1001.0;
  std::vector<std::pair<std::string, std::string>> messages;
  std::vector<std::pair<int, std::string>> queue;  ///< of undo: id and name of each entry
  std::size_t inForce = 0;                         ///< entries of the queue that are not undone

  std::string GetAdaptorName() override { return "Stage Adaptor"; }
  std::string GetDataFolder() override { return "adaptor_stage"; }
  std::string GetHostName() override { return "Stage"; }
  std::string GetHostVersion() override { return "3"; }
  double GetCurrentTime() override { return m_time; }
  void SetCurrentTime(double time) override { m_time = time; }
  void GetTimeRange(double& start, double& end) override { start = m_start, end = m_end; }
  double GetFrameRate() override { return frameRate; }
  void ShowMessage(const std::string& title, const std::string& text) override {
    messages.emplace_back(title, text);
  }
  /// The queue runs our steps only where the top of them is the entry's own.
  bool HostUndo() override {
    if (GetUndo().isOpen() || inForce == 0) return false;
    const int id = queue[--inForce].first;
    return GetUndo().undoId() == id && StepUndo();
  }
  bool HostRedo() override {
    if (GetUndo().isOpen() || inForce == queue.size()) return false;
    const int id = queue[inForce++].first;
    return GetUndo().redoId() == id && StepRedo();
  }
  void ClearUndoHistory() override {
    queue.clear();
    inForce = 0;
    HostAdaptor::ClearUndoHistory();
  }

 private:
  HostNode* AddCamera(const std::string& name, HostNode* parent, double fieldOfView,
                      double) override {
    Object& object = Add(name, ObjectOf(parent));
    object.isCamera = true;
    object.values[Object::kFieldOfViewRow] = fieldOfView;
    return Placed(object);
  }
  HostNode* AddMesh(const std::string& name, HostNode* parent, const util::CMesh* mesh) override {
    Object& object = Add(name, ObjectOf(parent));
    object.isMesh = true;
    object.mesh = MakeSharedMesh(mesh ? *mesh : util::CMesh());
    return Placed(object);
  }
  HostNode* AddHub(const std::string& name, HostNode* parent) override {
    return Placed(Add(name, ObjectOf(parent)));
  }
  HostNode* AddCopy(HostNode& original, const std::string& name, HostNode* parent) override {
    std::unique_ptr<Object> copy = ObjectOf(&original)->Copy(false);
    copy->name = name;
    copy->tag.clear();
    Node& node = NodeFor(Attach(std::move(copy), ObjectOf(parent)));
    // The same pose in other channels where one of the two stands at the top.
    auto& from = static_cast<Node&>(original);
    node.WritePoses(from.PosesAtKeys([&](double time) { return from.ReadTrs(time); }));
    return &node;
  }
  std::string ReadNodes(const std::string& file, const std::string& prefix,
                        std::vector<HostNode*>& roots) override {
    const auto at = m_files.find(file);
    if (at == m_files.end()) return "no file " + file;
    for (const auto& root : at->second) {
      std::unique_ptr<Object> copy = root->Copy(true);
      copy->ForAll([&](Object& each) { each.name = prefix + each.name, each.tag.clear(); });
      roots.push_back(&NodeFor(Attach(std::move(copy), nullptr)));
    }
    return {};
  }
  HostNode* FindTagged(const std::string& tag, const std::string& name) override {
    Object* found = nullptr;
    ForAll([&](Object& object) {
      if (object.tag == tag && (!found || object.name == name)) found = &object;
    });
    return found ? &NodeFor(*found) : nullptr;
  }
  std::vector<HostNode*> TaggedNodes() override {
    std::vector<HostNode*> tagged;
    ForAll([&](Object& object) {
      if (!object.tag.empty()) tagged.push_back(&NodeFor(object));
    });
    return tagged;
  }
  void Remove(HostNode& node) override { Lose(*Detach(*ObjectOf(&node))); }
  bool PutTimeRange(double start, double end) override {
    if (!(start <= end)) return false;
    m_start = start, m_end = end;
    return true;
  }
  void BlockMade(int id, const std::string& name) override {
    queue.resize(inForce);
    queue.emplace_back(id, name);
    inForce = queue.size();
  }

  static Object* ObjectOf(HostNode* node) {
    return node ? static_cast<Node*>(node)->m_object : nullptr;
  }
  /// A new node at the top stands in rig space's metres and axes, so with a scale and a turn.
  HostNode* Placed(Object& object) {
    Node& node = NodeFor(object);
    node.WriteTrs(0.0, Trs(), false);
    return &node;
  }
  template <class Visit>
  void ForAll(Visit visit) {
    for (const auto& root : m_roots) root->ForAll(visit);
  }

  int m_made = 0;
  double m_time = 0.0, m_start = 0.0, m_end = 4.0;
  Object::Children m_roots;
  std::map<std::string, Object::Children> m_files;
  std::unordered_map<const Object*, Node*> m_nodeOf;
};

/// Holds the tree that a step took off the stage.
class Presence final : public NodePresence {
 public:
  Presence(Node& node, Host& host) : NodePresence(node), m_own(node), m_host(host) {}
  ~Presence() override {
    if (m_detached) m_host.Lose(*m_detached);
  }

 private:
  void Detach() override {
    Object& object = *m_own.GetObject();
    m_index = m_host.IndexOf(object);
    m_parent = object.parent ? &m_host.NodeFor(*object.parent) : nullptr;
    m_detached = m_host.Detach(object);
  }
  void Attach() override {
    if (!m_detached) return;
    Object* const place = m_parent && m_parent->IsValid() ? m_parent->GetObject() : nullptr;
    m_host.Attach(std::move(m_detached), place, m_index);
  }

  Node& m_own;
  Host& m_host;
  std::unique_ptr<Object> m_detached;
  Node* m_parent = nullptr;
  std::size_t m_index = 0;
};

inline Node::Node(Host& host, Object& object) : HostNode(host, object.name), m_object(&object) {}

inline Host& Node::Stage() {
  return static_cast<Host&>(m_adaptor);
}

inline HostNode* Node::ParentNode() {
  return m_object->parent ? &Stage().NodeFor(*m_object->parent) : nullptr;
}

inline HostNode* Node::ChildNode(int index) {
  return &Stage().NodeFor(*m_object->children[static_cast<std::size_t>(index)]);
}

inline void Node::PutName(const std::string& wish) {
  m_object->name = Stage().UniqueName(wish, m_object);
}

inline std::unique_ptr<NodePresence> Node::MakePresence() {
  return std::make_unique<Presence>(*this, Stage());
}

inline void Node::WriteTrs(double time, const Trs& local, bool key) {
  const HostChannels channels = Channels(local, m_object->Three(3, time));
  const util::Vector3<double>* const rows[] = {&channels.translation, &channels.angles,
                                               &channels.scale};
  for (int i = 0; i < 9; ++i)
    if (key || m_object->curves[static_cast<std::size_t>(i)].samples.empty())
      Write(i, time, (*rows[i / 3])[i % 3], key);
}

inline std::string Node::WriteKeys(double from, const std::vector<PoseSample>& take) {
  for (int i = 0; i < 9; ++i) m_object->curves[static_cast<std::size_t>(i)].cutFrom(from - 1e-5);
  for (const PoseSample& sample : take) WriteTrs(sample.time, sample.local, true);
  return {};
}

inline void Node::WriteLensKeys(LensValue which, double from,
                                const util::AVar_Linear<double>& take) {
  m_object->curves[static_cast<std::size_t>(Row(which))].cutFrom(from - 1e-5);
  for (const auto& sample : take.samples)
    Write(Row(which), sample.time, sample.value * Unit(which), true);
}

inline Node::LocalPoses Node::PosesAtKeys(const std::function<Trs(double)>& poseAt) {
  LocalPoses poses;
  for (int i = 0; i < 9; ++i)
    for (const auto& sample : m_object->curves[static_cast<std::size_t>(i)].samples)
      poses[sample.time] = poseAt(sample.time);
  if (poses.empty()) poses[m_adaptor.GetCurrentTime()] = poseAt(m_adaptor.GetCurrentTime());
  return poses;
}

inline void Node::WritePoses(const LocalPoses& poses) {
  const bool keyed = HasOwnKeys();
  for (const auto& [time, pose] : poses) WriteTrs(time, pose, keyed);
}

inline bool Node::PutUnder(HostNode* parent) {
  Object* const place = parent ? static_cast<Node*>(parent)->m_object : nullptr;
  for (const Object* above = place; above; above = above->parent)
    if (above == m_object) return false;
  bool possible = true;
  const LocalPoses poses = PosesAtKeys([&](double time) {
    Trs pose = Decompose(GetWorldPose(time));
    possible =
        !parent || (possible && PoseUnder(parent->GetWorldPose(time), GetWorldPose(time), pose));
    return pose;
  });
  if (!possible) return false;
  Stage().Attach(Stage().Detach(*m_object), place);
  WritePoses(poses);
  return true;
}

inline Exchange Node::SavePlace() {
  const auto look = [this] {
    return std::make_pair(static_cast<Node*>(ParentNode()), Stage().IndexOf(*m_object));
  };
  return [this, look, saved = look(), pose = SavePose()]() mutable {
    if (!IsValid() || (saved.first && !saved.first->IsValid())) return;
    const auto now = look();
    Object* const place = saved.first ? saved.first->m_object : nullptr;
    Stage().Attach(Stage().Detach(*m_object), place, saved.second);
    pose();
    saved = now;
  };
}

}  // namespace orv::tests::stage
