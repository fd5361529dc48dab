// A core for one rig: nodes with keys, inputs, an undo queue and a blob, and nothing else.
#pragma once

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/CUndo.h"
#include "plugins/release/all/AllRigs.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/CMesh.h"
#include "util/Matrix.h"

namespace orv::tests {

using Matrix = util::Matrix<double>;

/// Local poses by time, each held until the next; `rest` where there is none.
class FakeNode : public rws::CNode {
 public:
  std::string name;
  FakeNode* parent = nullptr;
  Matrix rest;
  util::CMesh mesh;
  std::map<double, Matrix> keys;
  bool visible = true;
  bool valid = true;
  bool written = false;  ///< by its rig, in every frame of a take
  int keyStatesForgotten = 0;

  Matrix Local(double t) const {
    auto key = keys.upper_bound(t);
    return key == keys.begin() ? rest : std::prev(key)->second;
  }
  Matrix World(double t) const { return parent ? parent->World(t) * Local(t) : Local(t); }
  Matrix ToLocal(const Matrix& world, double t) const {
    return parent ? parent->World(t).affineInverse() * world : world;
  }

  std::intptr_t Extension(int code, void*, void*) override {
    if (code == rws::kForgetTransformKeys) ++keyStatesForgotten;
    if (code == rws::kWrittenByRig) written = true;
    return code == rws::kForgetTransformKeys;
  }
  void Show() override { visible = true; }
  void Hide() override { visible = false; }
  bool IsVisible() override { return visible; }
  void Select() override {}
  bool IsValid() override { return valid; }
  rws::CNode* GetParent() override { return parent; }
  int GetChildCount() override { return 0; }
  rws::CNode* GetChild(int) override { return nullptr; }
  void Release() override {}
};

class FakeInterface : public rws::CInterface {
 public:
  struct Element {
    std::string group, label;
    double* number = nullptr;
    bool* flag = nullptr;
    int* choice = nullptr;
    double min = 0.0, max = 0.0;
    Callback* callback = nullptr;
  };

  double frameRate = 25.0;
  std::map<std::string, std::unique_ptr<FakeNode>> nodes;
  std::vector<Element> elements;
  std::map<std::string, std::unique_ptr<unidevice::Control>> controls;  ///< by input
  std::map<std::string, std::unique_ptr<unidevice::Property>> inputs;   ///< die first
  std::vector<std::unique_ptr<rws::CUndo>> undo;
  std::vector<unsigned char> blob;
  std::vector<std::string> messages;  ///< texts of the message boxes
  /// Name of an operation that fails from here on, alone or with a space and the node's name.
  std::string refused;
  int openSnapshots = 0;

  Element& Find(const std::string& label) {
    for (Element& element : elements)
      if (element.label == label) return element;
    throw std::runtime_error("no element " + label);
  }
  /// Values of parameters, "LABEL=VALUE; LABEL=VALUE", without a word to the rig.
  void Set(const std::string& values) {
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
      end = values.find("; ", at);
      const std::string one = values.substr(at, end - at);
      Element& element = Find(one.substr(0, one.find('=')));
      const double value = std::stod(one.substr(one.find('=') + 1));
      if (element.number) *element.number = value;
      if (element.flag) *element.flag = value != 0.0;
      if (element.choice) *element.choice = static_cast<int>(value);
    }
  }
  void Press(const std::string& label) { Find(label).callback->OnCallback(label); }
  /// The texts since the last call, after which nothing is refused any more.
  std::vector<std::string> Told() {
    refused.clear();
    return std::exchange(messages, {});
  }

  int PushUndo(rws::CUndo* step) override {
    undo.emplace_back(step);
    return 0;
  }
  unidevice::Property* AddInput(std::string name, std::string label, unsigned flags) override {
    inputs[name] = std::make_unique<unidevice::Property>(name, label, flags);
    controls[name] = std::make_unique<unidevice::Control>(flags, "Axis", 0);
    inputs[name]->bind(controls[name].get());
    inputs[name]->deadzone = 0.0;
    return inputs[name].get();
  }
  unidevice::Property* AddInput(std::string name, unsigned flags) override {
    return AddInput(name, name, flags);
  }
  unidevice::Property* FindInput(std::string name) override { return inputs[name].get(); }

  void BeginConfig() override {}
  void EndConfig() override {}
  void BeginGroup(std::string label, std::string) override { m_groups.push_back(label); }
  void* EndGroup() override {
    m_groups.pop_back();
    return nullptr;
  }
  void AddSpinnerInt(std::string label, std::string, int* value, int min, int max, int, int, bool,
                     Callback* cb) override {
    Add(label, cb, min, max).choice = value;
  }
  void AddSpinner(std::string label, std::string, double* value, double min, double max, double,
                  int, bool, Callback* cb) override {
    Add(label, cb, min, max).number = value;
  }
  void AddCheckBox(std::string label, std::string, bool* value, Callback* cb) override {
    Add(label, cb, 0.0, 1.0).flag = value;
  }
  void AddTextBox(std::string label, std::string, std::string*, Callback* cb) override {
    Add(label, cb);
  }
  ComboUpdater* AddComboBox(std::string label, std::string, std::vector<std::string> items,
                            int* index, Callback* cb) override {
    Add(label, cb, 0.0, static_cast<double>(items.size()) - 1).choice = index;
    return nullptr;
  }
  void AddButton(std::string label, std::string, Callback* cb) override { Add(label, cb); }
  void RefreshConfig() override {}
  void ShowInputConfig() override {}

  std::string GetDataPath() override { return {}; }
  void SetUserData(const void* data, int size) override {
    if (refused == "SetUserData") return;
    const auto* bytes = static_cast<const unsigned char*>(data);
    blob.assign(bytes, bytes + size);
  }
  const void* GetUserData(int* size) override {
    *size = static_cast<int>(blob.size());
    return blob.empty() ? nullptr : blob.data();
  }
  void ClearUserData() override { blob.clear(); }

  /// Whoever holds the node sees that it is gone.
  void DeleteNode(rws::CNode* node, bool) override {
    const auto found = nodes.find(Of(node)->name);
    if (Refuses("DeleteNode", found->first)) return;
    found->second->valid = false;
    m_gone.push_back(std::move(found->second));
    nodes.erase(found);
  }
  rws::CNode* FindNode(std::string name) override {
    const auto found = nodes.find(name);
    return found == nodes.end() ? nullptr : found->second.get();
  }
  rws::CNode* CreateCameraNode(std::string name, rws::CNode* parent, double, double) override {
    auto& node = nodes[name] = std::make_unique<FakeNode>();
    node->name = name;
    node->parent = Of(parent);
    return node.get();
  }
  rws::CNode* CreateMeshNode(std::string name, rws::CNode* parent, const util::CMesh* mesh,
                             int) override {
    if (Refuses("CreateMeshNode", name)) return nullptr;
    CreateCameraNode(name, parent, 0.0, 0.0);
    if (mesh) nodes[name]->mesh = *mesh;
    nodes[name]->valid = !Refuses("IsValid", name);
    return nodes[name].get();
  }
  void Reserved2(std::string, util::CMesh) override {}

  rws::CSnapshot* GetSnapshot(rws::CNode* node, double t) override {
    if (!node || refused == "GetSnapshot") return nullptr;
    ++openSnapshots;
    return new Snapshot(*Of(node), t);
  }
  void ReleaseSnapshot(rws::CSnapshot* snapshot) override {
    if (snapshot) --openSnapshots;
    delete snapshot;
  }
  rws::CSnapshot_Helper* GetSnapshotHelper(rws::CNode*) override { return nullptr; }
  rws::CSnapshot_Mesh* GetSnapshotMesh(rws::CNode* node, double) override {
    if (!node || Of(node)->mesh.faces.empty()) return nullptr;
    return new MeshSnapshot(Of(node)->mesh);
  }
  rws::CSnapshot_Lens* GetSnapshotLens(rws::CNode*, double) override { return nullptr; }
  void ReleaseNode(void*) override {}
  void ReleaseSnapshotLens(rws::CSnapshot_Lens*) override {}
  void ReleaseSnapshotMesh(rws::CSnapshot_Mesh* snapshot) override { delete snapshot; }
  void ReleaseSnapshotHelper(rws::CSnapshot_Helper*) override {}
  double GetTime() override { return 0.0; }
  double GetFrameRate() override { return frameRate; }
  double GetFrameDuration() override { return 1.0 / frameRate; }
  void RefreshViews() override {}
  int MessageBox(std::string, std::string text, unsigned) override {
    messages.push_back(text);
    return 0;
  }
  void RecordInputsAtStart() override {}

 private:
  struct Snapshot : rws::CSnapshot {
    Snapshot(FakeNode& n, double t) : node(n), time(t) {}
    void SetMatrix(const double m[16]) override { node.rest = node.ToLocal(From(m), time); }
    void SetKey(const double m[16]) override { node.keys[time] = node.ToLocal(From(m), time); }
    void GetLocalMatrix(double m[16]) override { To(node.Local(time), m); }
    void GetMatrix(double m[16]) override { To(node.World(time), m); }
    double GetTime() override { return time; }
    static Matrix From(const double m[16]) {
      Matrix out;
      std::copy(m, m + 16, out.data());
      return out;
    }
    static void To(const Matrix& from, double m[16]) { std::copy_n(from.data(), 16, m); }
    FakeNode& node;
    double time;
  };

  struct MeshSnapshot : rws::CSnapshot_Mesh {
    explicit MeshSnapshot(const util::CMesh& m) : mesh(m) {}
    void Triangulate() override {}
    util::CMesh GetMesh() override { return mesh; }
    bool Intersect(const util::Vector3<double>&, const util::Vector3<double>&, double,
                   rws::RayHit&) override {
      return false;
    }
    const util::CMesh& mesh;
  };

  bool Refuses(const std::string& operation, const std::string& node) const {
    return refused == operation || refused == operation + " " + node;
  }
  static FakeNode* Of(rws::CNode* node) { return static_cast<FakeNode*>(node); }
  Element& Add(const std::string& label, Callback* cb, double min = 0.0, double max = 0.0) {
    elements.push_back(
        {m_groups.empty() ? "" : m_groups.back(), label, nullptr, nullptr, nullptr, min, max, cb});
    return elements.back();
  }

  std::vector<std::string> m_groups;
  std::vector<std::unique_ptr<FakeNode>> m_gone;  ///< deleted nodes
};

/// The rig kind of this id.
inline rws::CCameraPlugin& Kind(const std::string& id) {
  for (rws::CCameraPlugin* kind : rws::addon::AllRigs())
    if (kind->GetId() == id) return *kind;
  throw std::runtime_error("no kind " + id);
}

/// A rig on a fake core, new or, with a blob and nodes of another, loaded.
struct FakeWorld {
  explicit FakeWorld(rws::CCameraPlugin& kind, double frameRate = 25.0) : plugin(kind) {
    core.frameRate = frameRate;
    rig.reset(kind.CreateObject({1, kind.GetId()}));
    rig->m_pInterface = &core;
    rig->Define();
  }

  /// What saving and opening this world gives.
  std::unique_ptr<FakeWorld> Reopen(const std::vector<unsigned char>& blob) {
    auto opened = std::make_unique<FakeWorld>(plugin, core.frameRate);
    for (std::size_t i = 0; i < core.elements.size(); ++i) {
      const auto &from = core.elements[i], &to = opened->core.elements[i];
      if (from.number) *to.number = *from.number;
      if (from.flag) *to.flag = *from.flag;
      if (from.choice) *to.choice = *from.choice;
    }
    for (const auto& [name, node] : core.nodes) {
      opened->core.nodes[name] = std::make_unique<FakeNode>(*node);
      opened->core.nodes[name]->visible = true;
    }
    for (const auto& [name, node] : core.nodes)
      if (node->parent)
        opened->core.nodes[name]->parent = opened->core.nodes[node->parent->name].get();
    opened->core.blob = blob;
    opened->restored = opened->rig->Restore();
    return opened;
  }
  std::vector<unsigned char> Save() {
    rig->Store();
    return core.blob;
  }

  /// A take over the frames `first` to `last`; `beforeFrame` gets each stepped frame's index.
  void Take(int first, int last, const std::function<void(int)>& beforeFrame = {}) {
    const double dt = core.GetFrameDuration();
    for (auto& [name, node] : core.nodes)
      if (node->written) node->keys.erase(node->keys.upper_bound(first * dt), node->keys.end());
    if (beforeFrame) beforeFrame(first);
    rig->Start(first * dt);
    for (int i = first + 1; i <= last; ++i) {
      if (beforeFrame) beforeFrame(i);
      rig->Step(i * dt);
    }
    rig->Stop();
  }
  FakeNode& Node(const std::string& name) { return *core.nodes.at(name); }
  double Time(int frame) { return frame * core.GetFrameDuration(); }
  util::Vector3<double> Place(const std::string& node, int frame) {
    return Node(node).World(Time(frame)).translation();
  }

  struct End {
    void operator()(rws::CCamera* camera) const { camera->Destroy(); }
  };
  rws::CCameraPlugin& plugin;
  FakeInterface core;
  std::unique_ptr<rws::CCamera, End> rig;  ///< dies before its core
  int restored = -1;                       ///< what Restore answered
};

/// A new rig with its nodes.
struct NewWorld : FakeWorld {
  explicit NewWorld(rws::CCameraPlugin& kind, double frameRate = 25.0)
      : FakeWorld(kind, frameRate) {
    if (rig->Create() != 0) throw std::runtime_error("no rig " + kind.GetId());
  }
  explicit NewWorld(const std::string& kind) : NewWorld(Kind(kind)) {}
};

}  // namespace orv::tests
