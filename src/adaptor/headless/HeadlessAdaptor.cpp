#include "adaptor/headless/HeadlessAdaptor.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/MeshRays.h"
#include "adaptor/headless/RestoreObjects.h"
#include "adaptor/headless/Scene.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CUndo.h"
#include "util/NumberText.h"
#include "util/ReturnValue.h"

namespace orv::rws::adaptor::headless {

using core::CoreNode;

namespace {

/// Samples that a take's buffer makes room for at once, at most.
constexpr double kMostReserved = 16384.0;
/// The same of all buffers of a take.
constexpr double kMostReservedInAll = 1048576.0;

/// Type of the undo steps of the selection.
constexpr char kSelectionStep[] = "CSelectionRestoreObj";

void PrintMessage(const std::string& title, const std::string& text) {
  std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace

HeadlessAdaptor::HeadlessAdaptor(Scene& scene)
    : m_scene(&scene), m_time(scene.rangeStart()), m_showMessage(PrintMessage) {
  FollowTree();
}

HeadlessAdaptor::~HeadlessAdaptor() {
  m_scene->setTreeHandler(nullptr);
  m_undo.clearHistory();
}

void HeadlessAdaptor::FollowTree() {
  m_scene->setTreeHandler([this] { m_observers.Tell(&HostObserver::OnTree); });
}

void HeadlessAdaptor::SetScene(Scene& scene) {
  m_undo.clearHistory();
  undoNames.clear();
  undoOpened = undoCancelled = false;
  m_recording = false;
  m_takeInstances.clear();
  m_selection.clear();
  m_groupSelections = 0;
  nodeList.Clear();
  m_rebuilds.clear();
  m_rays.clear();
  m_nodeOf.clear();
  m_nodes.clear();
  m_keptRigs.clear();
  m_warnings.clear();
  m_scene->setTreeHandler(nullptr);
  m_scene = &scene;
  m_time = scene.rangeStart();
  FollowTree();
  m_observers.Tell(&HostObserver::OnTree);
  m_observers.Tell(&HostObserver::OnSelection);
  m_observers.Tell(&HostObserver::OnTime, m_time);
}

int HeadlessAdaptor::GetInterfaceVersion() {
  return kInterfaceVersion;
}

std::vector<std::string> HeadlessAdaptor::TakeWarnings() {
  return std::exchange(m_warnings, {});
}

// --- nodes ---

HeadlessNode& HeadlessAdaptor::NodeFor(SceneNode& node) {
  HeadlessNode*& known = m_nodeOf[&node];
  if (!known) {
    m_nodes.push_back(std::make_unique<HeadlessNode>(*this, node, m_nextId++));
    known = m_nodes.back().get();
  }
  return *known;
}

HeadlessNode& HeadlessAdaptor::HandOut(SceneNode& node) {
  HeadlessNode& known = NodeFor(node);
  Enlist(known);
  return known;
}

HeadlessNode* HeadlessAdaptor::FindSceneNode(const std::string& sceneName) {
  SceneNode* const node = m_scene->find(sceneName);
  return node ? &HandOut(*node) : nullptr;
}

HeadlessNode* HeadlessAdaptor::Known(CNode* node) const {
  auto* const known = dynamic_cast<HeadlessNode*>(node);
  return known && &known->m_adaptor == this && known->IsValid() ? known : nullptr;
}

void HeadlessAdaptor::NoteName(HeadlessNode& node) {
  if (!node.owner) nodeList.Identify(node, nullptr, node.m_sceneNode->name());
}

void HeadlessAdaptor::Forget(SceneNode& root) {
  std::vector<SceneNode*> open{&root};
  while (!open.empty()) {
    SceneNode* const node = open.back();
    open.pop_back();
    for (const auto& child : node->children()) open.push_back(child.get());
    const auto at = m_nodeOf.find(node);
    if (at == m_nodeOf.end()) continue;
    Delist(*at->second);
    at->second->Detached();
    m_nodeOf.erase(at);
  }
}

/// A node under `parent` with an identity; null when the parent is not of this scene.
HeadlessNode* HeadlessAdaptor::Create(const NodeIdentity& identity, CNode* parent) {
  HeadlessNode* const place = Known(parent);
  if (parent && !place) return nullptr;
  SceneNode& made =
      m_scene->addNode(identity.sceneName.empty() ? identity.name : identity.sceneName,
                       place ? place->m_sceneNode : nullptr);
  HeadlessNode& node = HandOut(made);
  nodeList.Identify(node, identity.owner, identity.name);
  node.claimed = identity.owner != nullptr;
  return &node;
}

void HeadlessAdaptor::Created(HeadlessNode& node) {
  Push(UndoUnitPtr(new CCreateNodeRestoreObj(node)));
  if (m_recording && IsInTake(node.owner)) node.BeginBuffering(m_takeStart, true);
}

CoreNode* HeadlessAdaptor::CreateCameraNode(const NodeIdentity& identity, CNode* parent,
                                            double fieldOfView, double nearClip) {
  HeadlessNode* const node = Create(identity, parent);
  if (!node) return nullptr;
  Lens lens;
  if (fieldOfView > 0.0 && fieldOfView < 180.0) lens.fieldOfView = fieldOfView;
  if (nearClip > 0.0 && std::isfinite(nearClip)) lens.nearClip = nearClip;
  node->m_sceneNode->setLens(lens);
  Created(*node);
  return node;
}

CoreNode* HeadlessAdaptor::CreateMeshNode(const NodeIdentity& identity, CNode* parent,
                                          const util::CMesh* mesh, int) {
  HeadlessNode* const node = Create(identity, parent);
  if (!node) return nullptr;
  node->m_sceneNode->setMesh(mesh ? *mesh : util::CMesh());
  Created(*node);
  return node;
}

CoreNode* HeadlessAdaptor::DuplicateNode(CoreNode* original, const NodeIdentity& identity,
                                         CNode* parent) {
  HeadlessNode* const from = Known(original);
  HeadlessNode* const node = from ? Create(identity, parent) : nullptr;
  if (!node) return nullptr;
  const SceneNode& source = *from->m_sceneNode;
  SceneNode& copy = *node->m_sceneNode;
  copy.setAnimation(source.animation());
  copy.setVisible(source.visible());
  if (source.lens()) copy.setLens(*source.lens());
  if (source.curve()) copy.setCurve(*source.curve());
  if (source.hasMesh()) copy.setMesh(source.sharedMesh());
  copy.setColour(source.colour());
  node->m_lensKeys = from->m_lensKeys;
  Created(*node);
  return node;
}

void HeadlessAdaptor::Delete(HeadlessNode& node) {
  if (node.buffering) node.EndBuffering();
  auto step = UndoUnitPtr(new CNodeDeleteRestore(node));
  step->redo();
  Push(std::move(step));
}

void HeadlessAdaptor::DiscardNode(CoreNode* node) {
  auto* const known = dynamic_cast<HeadlessNode*>(node);
  if (!known || &known->m_adaptor != this) return;
  known->EndBuffering();
  Delist(*known);
  if (!known->IsValid()) return;
  const std::unique_ptr<SceneNode> gone = m_scene->detach(*known->m_sceneNode);
  Forget(*gone);
}

void HeadlessAdaptor::MarkRebuild(CInterface* owner, bool rebuild) {
  m_rebuilds[owner] = {rebuild, nodeList.LastPlace()};
}

bool HeadlessAdaptor::NeedsRebuild(const HeadlessNode& node) const {
  const auto at = m_rebuilds.find(node.owner);
  return at != m_rebuilds.end() && at->second.wanted && node.m_place <= at->second.lastPlace;
}

CoreNode* HeadlessAdaptor::FindNode(CInterface* owner, const std::string& name) {
  return nodeList.Find(owner, name);
}

void HeadlessAdaptor::GetUnclaimedNodes(util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  for (const auto& [place, node] : nodeList.All())
    if (!node->claimed && node->IsValid()) found.push_back(node);
  result.set(found);
}

void HeadlessAdaptor::GetNodesOfOwner(CInterface* owner,
                                      util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  for (HeadlessNode* node : nodeList.OfOwner(owner))
    if (node->IsValid()) found.push_back(node);
  result.set(found);
}

void HeadlessAdaptor::GetModelsUnder(CoreNode* node,
                                     util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  if (HeadlessNode* const known = Known(node)) {
    for (const auto& child : known->m_sceneNode->children()) {
      HeadlessNode& model = HandOut(*child);
      if (!model.owner) found.push_back(&model);
    }
  }
  result.set(found);
}

// --- tags ---

bool HeadlessAdaptor::TagNode(CoreNode* node, const std::string& tag) {
  HeadlessNode* const known = Known(node);
  if (!known) return false;
  const std::string before = known->m_sceneNode->tag();
  if (before == tag) return true;
  known->m_sceneNode->setTag(tag);
  PushExchange("CTagRestoreObj", [known, saved = before]() mutable {
    if (!known->m_sceneNode) return;
    std::string now = known->m_sceneNode->tag();
    known->m_sceneNode->setTag(saved);
    saved = std::move(now);
  });
  return true;
}

CoreNode* HeadlessAdaptor::ClaimTaggedNodes(const NodeIdentity& identity, const std::string& tag) {
  SceneNode* found = m_scene->find(identity.sceneName);
  if (!found || tag.empty() || found->tag() != tag) found = m_scene->findTagged(tag);
  if (!found) return nullptr;
  HeadlessNode& node = HandOut(*found);
  nodeList.Identify(node, identity.owner, identity.name);
  node.claimed = true;
  return &node;
}

bool HeadlessAdaptor::IsKept(const std::string& tag) const {
  return std::any_of(m_keptRigs.begin(), m_keptRigs.end(), [&](const std::string& rig) {
    return tag.size() > rig.size() && tag[rig.size()] == '/' &&
           tag.compare(0, rig.size(), rig) == 0;
  });
}

void HeadlessAdaptor::GatherNodes() {
  std::string names;
  for (SceneNode* node : m_scene->nodes()) {
    if (node->tag().empty() || IsKept(node->tag())) continue;
    HeadlessNode& known = NodeFor(*node);
    if (known.claimed) continue;
    names += node->name() + "\n";
    TagNode(&known, "");
  }
  if (names.empty()) return;
  ShowMessage("Gather error",
              "Some nodes were found belonging to Orvel Rigwright, but they were never claimed. \n "
              "The following nodes were left out:\n\n" +
                  names);
}

std::string HeadlessAdaptor::ImportNodes(const std::string& file, const std::string& prefix,
                                         util::ReturnValue<std::vector<CoreNode*>>& result) {
  ReadResult read = GltfReader::read(file);
  if (!read) return read.error;
  for (std::string& warning : read.warnings) m_warnings.push_back(std::move(warning));
  for (SceneNode* node : read.scene->nodes()) {
    node->setTag("");
    read.scene->rename(*node, prefix + node->name());
  }
  std::vector<CoreNode*> roots;
  while (!read.scene->roots().empty()) {
    std::unique_ptr<SceneNode> root = read.scene->detach(*read.scene->roots().front());
    HeadlessNode& node = HandOut(m_scene->attach(std::move(root), nullptr));
    Created(node);
    roots.push_back(&node);
  }
  result.set(roots);
  return {};
}

// --- undo ---

void HeadlessAdaptor::BeginUndoBlock(const std::string& name) {
  if (undoNames.empty()) {
    undoOpened = !m_undo.isOpen();
    if (undoOpened) m_undo.begin(name);
  }
  undoNames.push_back(name);
}

bool HeadlessAdaptor::PushUndo(CUndo* step) {
  if (!step) return false;
  auto unit = UndoUnitPtr(new CUndoWrapper(step));
  return IsUndoBlockOpen() && Push(std::move(unit));
}

bool HeadlessAdaptor::EndUndoBlock() {
  if (undoNames.empty()) return true;
  const std::string name = std::move(undoNames.back());
  undoNames.pop_back();
  if (!undoNames.empty() || !undoOpened) return true;
  undoOpened = false;
  if (std::exchange(undoCancelled, false))
    m_undo.cancel();
  else
    m_undo.commit(name);
  return true;
}

bool HeadlessAdaptor::CancelUndoBlock() {
  undoCancelled = !undoNames.empty();
  return EndUndoBlock();
}

void HeadlessAdaptor::PushExchange(const char* type, std::function<void()> exchange) {
  if (m_undo.isOpen()) Push(UndoUnitPtr(new CExchangeRestoreObj(type, std::move(exchange))));
}

void HeadlessAdaptor::KeepPose(HeadlessNode& node) {
  if (!m_undo.isOpen()) return;
  auto* step = dynamic_cast<CPoseRestoreObj*>(m_undo.lastInBlock());
  if (!step) {
    step = new CPoseRestoreObj(m_poseSteps++);
    if (!Push(UndoUnitPtr(step))) return;
  }
  step->Keep(node);
}

void HeadlessAdaptor::KeepLens(HeadlessNode& node) {
  if (!node.m_sceneNode || !node.m_sceneNode->lens()) return;
  PushExchange("CLensRestoreObj",
               [&node, lens = *node.m_sceneNode->lens(), keys = node.m_lensKeys]() mutable {
                 if (!node.m_sceneNode) return;
                 const Lens now = *node.m_sceneNode->lens();
                 node.m_sceneNode->setLens(lens);
                 lens = now;
                 std::swap(keys, node.m_lensKeys);
               });
}

// --- selection ---

void HeadlessAdaptor::BeginGroupSelection() {
  if (m_groupSelections++ == 0) m_groupStarted = false;
}

void HeadlessAdaptor::EndGroupSelection() {
  if (m_groupSelections > 0) --m_groupSelections;
}

/// Exchanges the selection and what was saved.
void HeadlessAdaptor::ReplaceSelection(std::vector<HeadlessNode*>& saved) {
  std::swap(saved, m_selection);
  ++m_selectionState;
  for (HeadlessNode* node : m_selection) node->m_selected = m_selectionState;
  m_observers.Tell(&HostObserver::OnSelection);
}

void HeadlessAdaptor::Select(HeadlessNode& node) {
  const bool joins = m_groupSelections > 0 && m_groupStarted;
  m_groupStarted = true;
  const bool isIn = node.m_selected == m_selectionState && !m_selection.empty();
  if (isIn && (joins || m_selection.size() == 1)) return;
  BeginUndoBlock("Select #" + node.GetSceneName());
  // A block's selections in a row are one step: what was saved first is what it undoes.
  const UndoUnit* const last = m_undo.lastInBlock();
  if (!last || last->typeName() != kSelectionStep)
    PushExchange(kSelectionStep,
                 [this, saved = m_selection]() mutable { ReplaceSelection(saved); });
  if (!joins) {
    m_selection.clear();
    ++m_selectionState;
  }
  m_selection.push_back(&node);
  node.m_selected = m_selectionState;
  EndUndoBlock();
  m_observers.Tell(&HostObserver::OnSelection);
}

std::vector<HeadlessNode*> HeadlessAdaptor::GetSelection() const {
  std::vector<HeadlessNode*> valid;
  for (HeadlessNode* node : m_selection)
    if (node->IsValid()) valid.push_back(node);
  return valid;
}

// --- time ---

void HeadlessAdaptor::SetCurrentTime(double time) {
  if (!std::isfinite(time)) return;
  m_time = time;
  if (m_timeChanged) m_timeChanged(time);
  m_observers.Tell(&HostObserver::OnTime, time);
}

void HeadlessAdaptor::GetTimeRange(double& start, double& end) {
  start = m_scene->rangeStart();
  end = m_scene->rangeEnd();
}

void HeadlessAdaptor::SetTimeRange(double start, double end) {
  struct Slider {
    double start, end, time;
  };
  const Slider before{m_scene->rangeStart(), m_scene->rangeEnd(), m_time};
  if (!m_scene->setRange(start, end) || (before.start == start && before.end == end)) return;
  PushExchange("CTimesliderRestoreObj", [this, saved = before]() mutable {
    const Slider now{m_scene->rangeStart(), m_scene->rangeEnd(), m_time};
    m_scene->setRange(saved.start, saved.end);
    if (saved.time != now.time) SetCurrentTime(saved.time);
    saved = now;
  });
}

double HeadlessAdaptor::GetFrameRate() {
  return m_scene->frameRate();
}

// --- recording ---

bool HeadlessAdaptor::IsInTake(CInterface* owner) const {
  return owner &&
         std::binary_search(m_takeInstances.begin(), m_takeInstances.end(), owner, std::less<>());
}

double HeadlessAdaptor::GetFrameBefore(double time) const {
  if (time > m_frame) return m_frame;
  return time == m_frame ? m_frameBefore : m_takeStart;
}

void HeadlessAdaptor::BeginRecording(double time,
                                     util::ReturnValue<std::vector<CInterface*>>& instances) {
  for (const auto& [place, node] : nodeList.All())
    if (node->buffering) node->EndBuffering();
  m_takeInstances = *instances.get();
  std::sort(m_takeInstances.begin(), m_takeInstances.end(), std::less<>());
  m_takeStart = m_frame = m_frameBefore = time;
  m_firstFrame = std::numeric_limits<double>::infinity();
  m_refusedPoses = 0;
  m_recording = true;
  std::vector<HeadlessNode*> nodes;
  for (const auto& [place, node] : nodeList.All())
    if (IsInTake(node->owner) && node->IsValid()) nodes.push_back(node);
  const double frames = (m_scene->rangeEnd() - time) * m_scene->frameRate();
  const double most =
      std::min(kMostReserved, kMostReservedInAll / static_cast<double>(nodes.size() + 1));
  m_expectedSamples = static_cast<std::size_t>(std::clamp(frames, 0.0, most)) + 2;
  for (HeadlessNode* node : nodes) node->BeginBuffering(time, false);
}

void HeadlessAdaptor::WriteKeys(HeadlessNode& node, CPoseRestoreObj& before) {
  if (node.HasRecordedPose()) {
    before.Keep(node);
    const NodeAnimation old = node.m_sceneNode->animation();
    if (!node.WritePoseKeys()) {
      node.m_sceneNode->setAnimation(old);
      m_warnings.push_back("node " + node.GetSceneName() +
                           ": its keys could not be replaced by the take's, since its old curve is "
                           "too long to be sampled per frame (shorten it)");
    }
  }
  if (node.HasRecordedLens()) {
    KeepLens(node);
    node.WriteLensKeys();
  }
}

void HeadlessAdaptor::EndRecording() {
  if (!m_recording) return;
  m_recording = false;
  auto* const before = new CPoseRestoreObj(m_poseSteps++);
  UndoUnitPtr step(before);
  for (const auto& [place, node] : nodeList.All()) {
    if (!node->buffering) continue;
    if (node->IsValid()) WriteKeys(*node, *before);
    node->EndBuffering();
  }
  Push(std::move(step));
  m_takeInstances.clear();
  if (m_refusedPoses > 0)
    m_warnings.push_back(std::to_string(m_refusedPoses) +
                         " poses were not written, the first for " + m_firstRefused +
                         ": not a finite matrix, or the parent has a scale of 0");
}

std::shared_ptr<const MeshRays> HeadlessAdaptor::RaysOf(
    const std::shared_ptr<const util::CMesh>& mesh) {
  std::weak_ptr<const MeshRays>& known = m_rays[mesh.get()];
  std::shared_ptr<const MeshRays> rays = known.lock();
  if (!rays) known = rays = std::make_shared<const MeshRays>(mesh);
  return rays;
}

void HeadlessAdaptor::NoteRefusedPose(HeadlessNode& node, double time) {
  if (m_refusedPoses++ == 0)
    m_firstRefused = "node " + node.GetSceneName() + " at " + util::shortText(time) + " s";
}

std::vector<std::string> HeadlessAdaptor::GetNodesWithLensKeys() const {
  std::vector<std::string> names;
  for (const auto& node : m_nodes)
    if (node->IsValid() && node->HasLensKeys()) names.push_back(node->GetSceneName());
  return names;
}

// --- the rest ---

void HeadlessAdaptor::ShowMessage(const std::string& title, const std::string& text) {
  if (m_showMessage) m_showMessage(title, text);
}

void HeadlessAdaptor::ReleaseSnapshot(CExtendable* snapshot) {
  if (snapshot) snapshot->Extension(kAdaptorBookkeeping, nullptr, nullptr);
}

}  // namespace orv::rws::adaptor::headless
