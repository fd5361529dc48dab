#include "adaptor/common/HostAdaptor.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "adaptor/common/RestoreObjects.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CUndo.h"
#include "util/MeshRays.h"
#include "util/NumberText.h"
#include "util/ReturnValue.h"

namespace orv::rws::adaptor {

using core::CoreNode;

namespace {

/// Samples that a take's buffer makes room for at once, at most.
constexpr double kMostReserved = 16384.0;
/// The same of all buffers of a take.
constexpr double kMostReservedInAll = 1048576.0;

/// Type of the undo steps of the selection.
constexpr char kSelectionStep[] = "CSelectionRestoreObj";

const std::string& SceneNameOf(const NodeIdentity& identity) {
  return identity.sceneName.empty() ? identity.name : identity.sceneName;
}

}  // namespace

HostAdaptor::HostAdaptor() = default;

HostAdaptor::~HostAdaptor() {
  m_undo.clearHistory();
}

void HostAdaptor::Forget() {
  ClearUndoHistory();
  undoNames.clear();
  undoOpened = undoCancelled = false;
  m_recording = false;
  m_takeInstances.clear();
  m_selection.clear();
  m_groupSelections = 0;
  nodeList.Clear();
  m_rebuilds.clear();
  m_rays.clear();
  m_nodes.clear();
  m_keptRigs.clear();
  m_warnings.clear();
}

int HostAdaptor::GetInterfaceVersion() {
  return kInterfaceVersion;
}

// --- nodes ---

void HostAdaptor::Keep(std::unique_ptr<HostNode> node) {
  node->id = m_nextId++;
  m_nodes.push_back(std::move(node));
}

HostNode* HostAdaptor::Known(CNode* node) const {
  auto* const known = dynamic_cast<HostNode*>(node);
  return known && &known->m_adaptor == this && known->IsValid() ? known : nullptr;
}

void HostAdaptor::NoteName(HostNode& node) {
  if (!node.owner) nodeList.Identify(node, nullptr, node.GetSceneName());
}

/// Gives a node that the host has just made, or not, its identity.
CoreNode* HostAdaptor::Introduce(HostNode* node, const NodeIdentity& identity) {
  if (!node) return nullptr;
  Enlist(*node);
  nodeList.Identify(*node, identity.owner, identity.name);
  node->claimed = identity.owner != nullptr;
  Created(*node);
  return node;
}

void HostAdaptor::Adopt(HostNode& node) {
  Enlist(node);
  Created(node);
}

void HostAdaptor::Created(HostNode& node) {
  Push(UndoUnitPtr(new CCreateNodeRestoreObj(node.MakePresence())));
  if (m_recording && IsInTake(node.owner)) node.BeginBuffering(m_takeStart, true);
}

CoreNode* HostAdaptor::CreateCameraNode(const NodeIdentity& identity, CNode* parent,
                                        double fieldOfView, double nearClip) {
  HostNode* const place = Known(parent);
  if (parent && !place) return nullptr;
  return Introduce(AddCamera(SceneNameOf(identity), place, fieldOfView, nearClip), identity);
}

CoreNode* HostAdaptor::CreateMeshNode(const NodeIdentity& identity, CNode* parent,
                                      const util::CMesh* mesh, int) {
  HostNode* const place = Known(parent);
  if (parent && !place) return nullptr;
  return Introduce(AddMesh(SceneNameOf(identity), place, mesh), identity);
}

CoreNode* HostAdaptor::DuplicateNode(CoreNode* original, const NodeIdentity& identity,
                                     CNode* parent) {
  HostNode* const from = Known(original);
  HostNode* const place = Known(parent);
  if (!from || (parent && !place)) return nullptr;
  return Introduce(AddCopy(*from, SceneNameOf(identity), place), identity);
}

CoreNode* HostAdaptor::CreateHub(const std::string& sceneName, CNode* parent) {
  HostNode* const place = Known(parent);
  if (!place) return nullptr;
  const double now = GetCurrentTime();
  const util::Vector3<double> scale = place->GetWorldPose(now).rowLengths();
  if (!(scale.x * scale.y * scale.z > 0.0)) return nullptr;
  HostNode* const node = AddHub(sceneName, place);
  node->WriteTrs(now, {{}, {}, {1.0 / scale.x, 1.0 / scale.y, 1.0 / scale.z}}, false);
  return Introduce(node, {nullptr, sceneName, sceneName});
}

bool HostAdaptor::TakeMeshAway(CoreNode* node) {
  HostNode* const known = Known(node);
  if (known) known->SetMesh(nullptr);
  return known != nullptr;
}

void HostAdaptor::Delete(HostNode& node) {
  if (node.buffering) node.EndBuffering();
  auto step = UndoUnitPtr(new CNodeDeleteRestore(node, node.MakePresence()));
  step->redo();
  Push(std::move(step));
}

void HostAdaptor::DiscardNode(CoreNode* node) {
  auto* const known = dynamic_cast<HostNode*>(node);
  if (!known || &known->m_adaptor != this) return;
  known->EndBuffering();
  Delist(*known);
  if (known->IsValid()) Remove(*known);
}

void HostAdaptor::ReleaseNodes(CInterface* owner) {
  for (const auto& node : m_nodes)
    if (node->owner == owner)
      nodeList.Identify(*node, nullptr, node->IsValid() ? node->GetSceneName() : node->name);
  m_rebuilds.erase(owner);
}

void HostAdaptor::MarkRebuild(CInterface* owner, bool rebuild) {
  if (!owner) return;
  m_rebuilds[owner] = {rebuild, nodeList.LastPlace()};
}

bool HostAdaptor::NeedsRebuild(const HostNode& node) const {
  const auto at = m_rebuilds.find(node.owner);
  return at != m_rebuilds.end() && at->second.wanted && node.m_aside->place <= at->second.lastPlace;
}

CoreNode* HostAdaptor::FindNode(CInterface* owner, const std::string& name) {
  return nodeList.Find(owner, name);
}

void HostAdaptor::GetUnclaimedNodes(util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  for (const auto& [place, node] : nodeList.All())
    if (!node->claimed && node->IsValid()) found.push_back(node);
  result.set(found);
}

void HostAdaptor::GetNodesOfOwner(CInterface* owner,
                                  util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  for (HostNode* node : nodeList.OfOwner(owner))
    if (node->IsValid()) found.push_back(node);
  result.set(found);
}

void HostAdaptor::GetModelsUnder(CoreNode* node,
                                 util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<CoreNode*> found;
  if (HostNode* const known = Known(node)) {
    for (int i = 0; i < known->GetChildCount(); ++i) {
      HostNode& model = *known->ChildNode(i);
      Enlist(model);
      if (!model.owner) found.push_back(&model);
    }
  }
  result.set(found);
}

// --- tags ---

bool HostAdaptor::TagNode(CoreNode* node, const std::string& tag) {
  HostNode* const known = Known(node);
  if (!known) return false;
  const std::string before = known->GetTag();
  if (before == tag) return true;
  known->PutTag(tag);
  if (known->GetTag() != tag) return false;  // not ours to mark
  PushExchange("CTagRestoreObj", [known, saved = before]() mutable {
    if (!known->Exists()) return;
    std::string now = known->GetTag();
    known->PutTag(saved);
    saved = std::move(now);
  });
  return true;
}

CoreNode* HostAdaptor::ClaimTaggedNodes(const NodeIdentity& identity, const std::string& tag) {
  HostNode* const node = tag.empty() ? nullptr : FindTagged(tag, identity.sceneName);
  if (!node) return nullptr;
  Enlist(*node);
  nodeList.Identify(*node, identity.owner, identity.name);
  node->claimed = true;
  return node;
}

bool HostAdaptor::IsKept(const std::string& tag) const {
  return std::any_of(m_keptRigs.begin(), m_keptRigs.end(), [&](const std::string& rig) {
    return tag.size() > rig.size() && tag[rig.size()] == '/' &&
           tag.compare(0, rig.size(), rig) == 0;
  });
}

void HostAdaptor::GatherNodes() {
  std::string names;
  for (HostNode* node : TaggedNodes()) {
    if (node->claimed || IsKept(node->GetTag())) continue;
    names += node->GetSceneName() + "\n";
    TagNode(node, "");
  }
  if (names.empty()) return;
  ShowMessage("Gather error",
              "Some nodes were found belonging to Orvel Rigwright, but they were never claimed. \n "
              "The following nodes were left out:\n\n" +
                  names);
}

std::string HostAdaptor::ImportNodes(const std::string& file, const std::string& prefix,
                                     util::ReturnValue<std::vector<CoreNode*>>& result) {
  std::vector<HostNode*> added;
  std::string error = ReadNodes(file, prefix, added);
  if (!error.empty()) return error;
  for (HostNode* node : added) Adopt(*node);
  const std::vector<CoreNode*> roots(added.begin(), added.end());
  result.set(roots);
  return {};
}

// --- undo ---

void HostAdaptor::BeginUndoBlock(const std::string& name) {
  if (undoNames.empty()) {
    undoOpened = !m_undo.isOpen();
    if (undoOpened) m_undo.begin(name);
  }
  undoNames.push_back(name);
}

bool HostAdaptor::PushUndo(CUndo* step) {
  if (!step) return false;
  auto unit = UndoUnitPtr(new CUndoWrapper(step));
  return IsUndoBlockOpen() && Push(std::move(unit));
}

bool HostAdaptor::EndUndoBlock() {
  if (undoNames.empty()) return true;
  const std::string name = std::move(undoNames.back());
  undoNames.pop_back();
  if (!undoNames.empty() || !undoOpened) return true;
  undoOpened = false;
  if (std::exchange(undoCancelled, false)) {
    m_undo.cancel();
  } else {
    const int id = m_undo.commit(name);
    if (id < 0) return true;
    BlockMade(id, name);
  }
  UndoChanged();
  return true;
}

bool HostAdaptor::CancelUndoBlock() {
  undoCancelled = !undoNames.empty();
  return EndUndoBlock();
}

bool HostAdaptor::StepUndo() {
  if (!m_undo.stepBack()) return false;
  UndoChanged();
  return true;
}

bool HostAdaptor::StepRedo() {
  if (!m_undo.stepForward()) return false;
  UndoChanged();
  return true;
}

void HostAdaptor::ClearUndoHistory() {
  m_undo.clearHistory();
  UndoChanged();
}

int HostAdaptor::GetChangeId() const {
  return m_undo.latestId([](const UndoUnit& unit) { return unit.typeName() != kSelectionStep; });
}

void HostAdaptor::PushExchange(const char* type, Exchange exchange) {
  if (m_undo.isOpen()) Push(UndoUnitPtr(new CExchangeRestoreObj(type, std::move(exchange))));
}

void HostAdaptor::KeepPose(HostNode& node) {
  if (!m_undo.isOpen()) return;
  auto* step = dynamic_cast<CPoseRestoreObj*>(m_undo.lastInBlock());
  if (!step) {
    step = new CPoseRestoreObj(m_poseSteps++);
    if (!Push(UndoUnitPtr(step))) return;
  }
  step->Keep(node);
}

void HostAdaptor::KeepLens(HostNode& node) {
  if (m_undo.isOpen() && node.Exists() && node.HasLens())
    PushExchange("CLensRestoreObj", node.SaveLens());
}

// --- selection ---

void HostAdaptor::BeginGroupSelection() {
  if (m_groupSelections++ == 0) m_groupStarted = false;
}

void HostAdaptor::EndGroupSelection() {
  if (m_groupSelections > 0) --m_groupSelections;
}

/// Exchanges the selection and what was saved.
void HostAdaptor::ReplaceSelection(std::vector<HostNode*>& saved) {
  std::swap(saved, m_selection);
  ++m_selectionState;
  for (HostNode* node : m_selection) node->m_aside->selected = m_selectionState;
  SelectionChanged();
}

void HostAdaptor::Select(HostNode& node) {
  const bool joins = m_groupSelections > 0 && m_groupStarted;
  m_groupStarted = true;
  const bool isIn = node.m_aside->selected == m_selectionState && !m_selection.empty();
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
  node.m_aside->selected = m_selectionState;
  EndUndoBlock();
  SelectionChanged();
}

std::vector<HostNode*> HostAdaptor::GetSelection() const {
  std::vector<HostNode*> valid;
  for (HostNode* node : m_selection)
    if (node->IsValid()) valid.push_back(node);
  return valid;
}

// --- time ---

void HostAdaptor::SetTimeRange(double start, double end) {
  struct Slider {
    double start, end, time;
  };
  const auto slider = [this] {
    Slider now{0.0, 0.0, GetCurrentTime()};
    GetTimeRange(now.start, now.end);
    return now;
  };
  const Slider before = slider();
  if (!PutTimeRange(start, end) || (before.start == start && before.end == end)) return;
  PushExchange("CTimesliderRestoreObj", [this, slider, saved = before]() mutable {
    const Slider now = slider();
    PutTimeRange(saved.start, saved.end);
    if (saved.time != now.time) SetCurrentTime(saved.time);
    saved = now;
  });
}

// --- recording ---

bool HostAdaptor::IsInTake(CInterface* owner) const {
  return owner &&
         std::binary_search(m_takeInstances.begin(), m_takeInstances.end(), owner, std::less<>());
}

double HostAdaptor::GetFrameBefore(double time) const {
  if (time > m_frame) return m_frame;
  return time == m_frame ? m_frameBefore : m_takeStart;
}

void HostAdaptor::BeginRecording(double time,
                                 util::ReturnValue<std::vector<CInterface*>>& instances) {
  for (const auto& [place, node] : nodeList.All())
    if (node->buffering) node->EndBuffering();
  m_takeInstances = *instances.get();
  std::sort(m_takeInstances.begin(), m_takeInstances.end(), std::less<>());
  m_takeStart = m_frame = m_frameBefore = time;
  m_firstFrame = std::numeric_limits<double>::infinity();
  m_refusedPoses = 0;
  m_recording = true;
  std::vector<HostNode*> nodes;
  for (const auto& [place, node] : nodeList.All())
    if (IsInTake(node->owner) && node->IsValid()) nodes.push_back(node);
  double start = 0.0, end = 0.0;
  GetTimeRange(start, end);
  const double frames = (end - time) * GetFrameRate();
  const double most =
      std::min(kMostReserved, kMostReservedInAll / static_cast<double>(nodes.size() + 1));
  m_expectedSamples = static_cast<std::size_t>(std::clamp(frames, 0.0, most)) + 2;
  for (HostNode* node : nodes) node->BeginBuffering(time, false);
}

void HostAdaptor::WriteKeys(HostNode& node, CPoseRestoreObj& before) {
  if (node.HasRecordedPose()) {
    before.Keep(node);
    const std::string problem = node.WriteRecordedPoses();
    if (!problem.empty())
      Warn("node " + node.GetSceneName() +
           ": its keys could not be replaced by the take's, since " + problem);
  }
  if (node.HasRecordedLens()) {
    KeepLens(node);
    node.WriteRecordedLens();
  }
}

void HostAdaptor::EndRecording() {
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

std::shared_ptr<const util::MeshRays> HostAdaptor::RaysOf(
    const std::shared_ptr<const util::CMesh>& mesh) {
  std::weak_ptr<const util::MeshRays>& known = m_rays[mesh.get()];
  std::shared_ptr<const util::MeshRays> rays = known.lock();
  if (!rays) known = rays = std::make_shared<const util::MeshRays>(mesh);
  return rays;
}

void HostAdaptor::NoteRefusedPose(HostNode& node, double time) {
  if (m_refusedPoses++ == 0)
    m_firstRefused = "node " + node.GetSceneName() + " at " + util::shortText(time) + " s";
}

void HostAdaptor::ReleaseSnapshot(CExtendable* snapshot) {
  if (snapshot) snapshot->Extension(kAdaptorBookkeeping, nullptr, nullptr);
}

}  // namespace orv::rws::adaptor
