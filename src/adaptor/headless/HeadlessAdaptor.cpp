#include "adaptor/headless/HeadlessAdaptor.h"

#include <cmath>
#include <cstdio>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneMerge.h"

namespace orv::rws::adaptor::headless {

namespace {

void PrintMessage(const std::string& title, const std::string& text) {
  std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace

HeadlessAdaptor::HeadlessAdaptor(Scene& scene)
    : m_scene(&scene), m_time(scene.GetRangeStart()), m_showMessage(PrintMessage) {
  FollowTree();
}

HeadlessAdaptor::~HeadlessAdaptor() {
  m_scene->SetTreeHandler(nullptr);
  m_observers = {};  // who still follows is not called by what half is gone
  ClearUndoHistory();
}

void HeadlessAdaptor::FollowTree() {
  m_scene->SetTreeHandler([this] { m_observers.Tell(&HostObserver::OnTree); });
}

void HeadlessAdaptor::SetScene(Scene& scene) {
  Forget();
  m_nodeOf.clear();
  m_scene->SetTreeHandler(nullptr);
  m_scene = &scene;
  m_time = scene.GetRangeStart();
  FollowTree();
  m_observers.Tell(&HostObserver::OnTree);
  m_observers.Tell(&HostObserver::OnSelection);
  m_observers.Tell(&HostObserver::OnTime, m_time);
}

// --- nodes ---

HeadlessNode& HeadlessAdaptor::NodeFor(SceneNode& node) {
  HeadlessNode*& known = m_nodeOf[&node];
  if (!known) {
    auto made = std::make_unique<HeadlessNode>(*this, node);
    known = made.get();
    Keep(std::move(made));
  }
  return *known;
}

HeadlessNode& HeadlessAdaptor::HandOut(SceneNode& node) {
  HeadlessNode& known = NodeFor(node);
  Enlist(known);
  return known;
}

HeadlessNode* HeadlessAdaptor::FindSceneNode(const std::string& sceneName) {
  SceneNode* const node = m_scene->Find(sceneName);
  return node ? &HandOut(*node) : nullptr;
}

void HeadlessAdaptor::LoseBelow(SceneNode& root) {
  std::vector<SceneNode*> open{&root};
  while (!open.empty()) {
    SceneNode* const node = open.back();
    open.pop_back();
    for (const auto& child : node->GetChildren()) open.push_back(child.get());
    const auto at = m_nodeOf.find(node);
    if (at == m_nodeOf.end()) continue;
    Delist(*at->second);
    at->second->m_sceneNode = nullptr;
    m_nodeOf.erase(at);
  }
}

HeadlessNode& HeadlessAdaptor::Add(const std::string& sceneName, HostNode* parent) {
  return NodeFor(m_scene->AddNode(
      sceneName, parent ? static_cast<HeadlessNode*>(parent)->m_sceneNode : nullptr));
}

HostNode* HeadlessAdaptor::AddCamera(const std::string& sceneName, HostNode* parent,
                                     double fieldOfView, double nearClip) {
  HeadlessNode& node = Add(sceneName, parent);
  Lens lens;
  if (fieldOfView > 0.0 && fieldOfView < 180.0) lens.fieldOfView = fieldOfView;
  if (nearClip > 0.0 && std::isfinite(nearClip)) lens.nearClip = nearClip;
  node.m_sceneNode->SetLens(lens);
  return &node;
}

HostNode* HeadlessAdaptor::AddMesh(const std::string& sceneName, HostNode* parent,
                                   const util::CMesh* mesh) {
  HeadlessNode& node = Add(sceneName, parent);
  node.m_sceneNode->SetMesh(mesh ? *mesh : util::CMesh());
  return &node;
}

HostNode* HeadlessAdaptor::AddHub(const std::string& sceneName, HostNode* parent) {
  HeadlessNode& node = Add(sceneName, parent);
  node.m_sceneNode->SetHub(true);
  return &node;
}

HostNode* HeadlessAdaptor::AddCopy(HostNode& original, const std::string& sceneName,
                                   HostNode* parent) {
  const auto& from = static_cast<HeadlessNode&>(original);
  HeadlessNode& node = Add(sceneName, parent);
  const SceneNode& source = *from.m_sceneNode;
  SceneNode& copy = *node.m_sceneNode;
  copy.SetAnimation(source.GetAnimation());
  copy.SetVisible(source.IsVisible());
  if (source.GetLens()) copy.SetLens(*source.GetLens());
  if (source.GetCurve()) copy.SetCurve(*source.GetCurve());
  if (source.HasMesh()) copy.SetMesh(source.SharedMesh());
  copy.SetColour(source.GetColour());
  node.m_lensKeys = from.m_lensKeys;
  return &node;
}

void HeadlessAdaptor::Remove(HostNode& node) {
  const std::unique_ptr<SceneNode> gone =
      m_scene->Detach(*static_cast<HeadlessNode&>(node).m_sceneNode);
  LoseBelow(*gone);
}

HostNode* HeadlessAdaptor::FindTagged(const std::string& tag, const std::string& sceneName) {
  SceneNode* found = m_scene->Find(sceneName);
  if (!found || found->GetTag() != tag) found = m_scene->FindTagged(tag);
  return found ? &NodeFor(*found) : nullptr;
}

std::vector<HostNode*> HeadlessAdaptor::TaggedNodes() {
  std::vector<HostNode*> tagged;
  for (SceneNode* node : m_scene->GetNodes())
    if (!node->GetTag().empty()) tagged.push_back(&NodeFor(*node));
  return tagged;
}

std::string HeadlessAdaptor::ReadNodes(const std::string& file, const std::string& prefix,
                                       std::vector<HostNode*>& roots) {
  ReadResult read = GltfReader::Read(file);
  if (!read) return read.error;
  for (std::string& warning : read.warnings) Warn(std::move(warning));
  for (SceneNode* node : read.scene->GetNodes()) {
    node->SetTag("");
    read.scene->Rename(*node, prefix + node->GetName());
  }
  while (!read.scene->GetRoots().empty()) {
    std::unique_ptr<SceneNode> root = read.scene->Detach(*read.scene->GetRoots().front());
    roots.push_back(&NodeFor(m_scene->Attach(std::move(root), nullptr)));
  }
  return {};
}

std::string HeadlessAdaptor::Merge(Scene& added, HeadlessNode* parent,
                                   std::vector<HeadlessNode*>& roots) {
  std::vector<std::string> warnings;
  std::shared_ptr<const GltfDocument> document;
  std::string error = SceneMerge::MergeDocuments(*m_scene, added, document, warnings);
  if (!error.empty()) return error;
  for (std::string& warning : warnings) Warn(std::move(warning));
  // Ahead of the steps of the nodes: a redo has the document before they come back.
  auto exchange = [scene = m_scene, document]() mutable {
    SceneMerge::ExchangeDocument(*scene, document);
  };
  exchange();
  PushExchange("CDocumentRestoreObj", exchange);
  while (!added.GetRoots().empty()) {
    std::unique_ptr<SceneNode> root = added.Detach(*added.GetRoots().front());
    HeadlessNode& node =
        NodeFor(m_scene->Attach(std::move(root), parent ? parent->GetSceneNode() : nullptr));
    Adopt(node);
    roots.push_back(&node);
  }
  return {};
}

// --- time ---

void HeadlessAdaptor::SetCurrentTime(double time) {
  if (!std::isfinite(time)) return;
  m_time = time;
  if (m_timeChanged) m_timeChanged(time);
  m_observers.Tell(&HostObserver::OnTime, time);
}

void HeadlessAdaptor::GetTimeRange(double& start, double& end) {
  start = m_scene->GetRangeStart();
  end = m_scene->GetRangeEnd();
}

bool HeadlessAdaptor::PutTimeRange(double start, double end) {
  return m_scene->SetRange(start, end);
}

double HeadlessAdaptor::GetFrameRate() {
  return m_scene->GetFrameRate();
}

bool HeadlessAdaptor::SetFrameRate(double rate) {
  const Scene::Rate before = m_scene->GetRate();
  if (!m_scene->SetFrameRate(rate)) return false;
  if (m_scene->GetRate() == before) return true;
  PushExchange("CFrameRateRestoreObj", [this, saved = before]() mutable {
    const Scene::Rate now = m_scene->GetRate();
    m_scene->PutRate(saved);
    saved = now;
  });
  return true;
}

void HeadlessAdaptor::SetSound(std::optional<SceneSound> sound) {
  if (sound == m_scene->GetSound()) return;
  std::optional<SceneSound> before = m_scene->GetSound();
  m_scene->SetSound(std::move(sound));
  PushExchange("CSoundRestoreObj", [this, saved = std::move(before)]() mutable {
    std::optional<SceneSound> now = m_scene->GetSound();
    m_scene->SetSound(std::move(saved));
    saved = std::move(now);
  });
}

void HeadlessAdaptor::SetBackdrop(SceneNode& camera, std::shared_ptr<const Backdrop> backdrop) {
  HeadlessNode& node = HandOut(camera);
  std::shared_ptr<const Backdrop> before = camera.GetBackdrop();
  camera.SetBackdrop(std::move(backdrop));
  PushExchange("CBackdropRestoreObj", [&node, saved = std::move(before)]() mutable {
    if (!node.m_sceneNode) return;
    std::shared_ptr<const Backdrop> now = node.m_sceneNode->GetBackdrop();
    node.m_sceneNode->SetBackdrop(std::move(saved));
    saved = std::move(now);
  });
}

// --- the rest ---

std::vector<std::string> HeadlessAdaptor::GetNodesWithLensKeys() const {
  std::vector<std::string> names;
  for (const auto& each : AllNodes()) {
    auto& node = static_cast<HeadlessNode&>(*each);
    if (node.IsValid() && node.HasLensKeys()) names.push_back(node.GetSceneName());
  }
  return names;
}

void HeadlessAdaptor::ShowMessage(const std::string& title, const std::string& text) {
  if (m_showMessage) m_showMessage(title, text);
}

}  // namespace orv::rws::adaptor::headless
