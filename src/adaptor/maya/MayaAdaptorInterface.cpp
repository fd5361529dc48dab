#include "adaptor/maya/MayaAdaptorInterface.h"

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MDagModifier.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>

#include <cmath>
#include <utility>

#include "adaptor/common/LegalNames.h"
#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/HostTime.h"
#include "adaptor/maya/MelText.h"
#include "adaptor/maya/probes/Features.h"

namespace orv::rws::adaptor::maya {

namespace {

// The host knows no object of ours.
MayaAdaptorInterface* g_adaptor = nullptr;

/// Type of the undo steps of the selection.
constexpr char kSelectionUndo[] = "CMayaSelectionRestoreObj";

/// One metre in the unit that the host keeps lengths in, whatever it shows them in.
constexpr double kMetre = 100.0;

/// What a new node of ours can't be called.
bool IsTaken(const std::string& name) {
  MSelectionList found;
  return MGlobal::getSelectionListByName(name.c_str(), found) && found.length() > 0;
}

/// The command that is a block's entry in the host's queue.
std::string WrapperLine(int block) {
  return "OrvelUndoWrapperII -id " + std::to_string(block);
}

bool Says(const char* query) {
  int answer = 0;
  return MGlobal::executeCommand(query, answer) && answer != 0;
}

}  // namespace

MayaAdaptorInterface::MayaAdaptorInterface() {
  g_adaptor = this;
}

MayaAdaptorInterface::~MayaAdaptorInterface() {
  MayaAdaptorInterface::ClearUndoHistory();
  LeaveTake();
  g_adaptor = nullptr;
}

MayaAdaptorInterface* MayaAdaptorInterface::instance() {
  return g_adaptor;
}

Space MayaAdaptorInterface::GetSpace() const {
  return {MGlobal::isYAxisUp() ? UpAxis::kY : UpAxis::kZ, kMetre};
}

void* MayaAdaptorInterface::GetMainWindow() {
  return M3dView::applicationShell();
}

// --- nodes ---

CMayaNode* MayaAdaptorInterface::NodeFor(const MDagPath& path) {
  if (!path.isValid() || !path.hasFn(MFn::kTransform)) return nullptr;
  const MObjectHandle handle(path.node());
  const unsigned instance = path.instanceNumber();
  std::vector<CMayaNode*>& nodes = m_nodeOf[handle.hashCode()];
  for (CMayaNode* node : nodes)
    if (node->Is(handle, instance)) return node;
  auto made = std::make_unique<CMayaNode>(*this, path);
  nodes.push_back(made.get());
  Keep(std::move(made));
  return nodes.back();
}

CMayaNode* MayaAdaptorInterface::NodeFor(const MObject& transform) {
  MDagPath path;
  return MDagPath::getAPathTo(transform, path) ? NodeFor(path) : nullptr;
}

CMayaNode* MayaAdaptorInterface::FindSceneNode(const std::string& sceneName) {
  MSelectionList found;
  MDagPath path;
  if (!MGlobal::getSelectionListByName(sceneName.c_str(), found) || !found.getDagPath(0, path))
    return nullptr;
  CMayaNode* const node = NodeFor(path);
  if (node) Enlist(*node);
  return node;
}

std::string MayaAdaptorInterface::FreeName(const std::string& wish) const {
  return FreeLegalName(wish, IsTaken);
}

HostNode* MayaAdaptorInterface::FindTagged(const std::string& tag, const std::string& sceneName) {
  HostNode* found = nullptr;
  const std::string name = LegalName(sceneName);
  for (HostNode* node : TaggedNodes()) {
    if (node->GetTag() != tag) continue;
    if (node->GetSceneName() == name) return node;
    if (!found) found = node;
  }
  return found;
}

std::vector<HostNode*> MayaAdaptorInterface::TaggedNodes() {
  std::vector<HostNode*> tagged;
  for (MItDependencyNodes each(MFn::kTransform); !each.isDone(); each.next()) {
    const MFnDependencyNode node(each.thisNode());
    if (!node.hasAttribute("RWT_tag") || node.isFromReferencedFile()) continue;
    CMayaNode* const known = NodeFor(each.thisNode());
    if (known && !known->GetTag().empty()) tagged.push_back(known);
  }
  return tagged;
}

void MayaAdaptorInterface::NodeAdded(MObject& node) {
  NodeRemoved(node);
}

/// What the node showed may be another thing when it is back.
void MayaAdaptorInterface::NodeRemoved(MObject& node) {
  const auto at = m_nodeOf.find(MObjectHandle(node).hashCode());
  if (at == m_nodeOf.end()) return;
  for (CMayaNode* known : at->second) known->ForgetShapes();
}

void MayaAdaptorInterface::SceneGone() {
  for (const auto& node : AllNodes()) static_cast<CMayaNode&>(*node).AbandonTake();
  m_nodeOf.clear();
  m_keyed.clear();
  m_switches.Restore();
  Forget();
}

void MayaAdaptorInterface::ShowMessage(const std::string& title, const std::string& text) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) {
    MGlobal::displayWarning((title + ": " + text).c_str());
    return;
  }
  const std::string line = "confirmDialog -title " + QuoteMel(title) + " -message " +
                           QuoteMel(text) + " -button \"Ok\";";
  MDagModifier modifier;
  modifier.commandToExecute(line.c_str());
  modifier.doIt();
}

// --- selection: the host's own ---

void MayaAdaptorInterface::BeginGroupSelection() {
  if (m_groups++ == 0) m_groupStarted = false;
}

void MayaAdaptorInterface::EndGroupSelection() {
  if (m_groups > 0) --m_groups;
}

void MayaAdaptorInterface::Select(HostNode& node) {
  const bool joins = m_groups > 0 && m_groupStarted;
  m_groupStarted = true;
  const MDagPath path = static_cast<CMayaNode&>(node).GetPath();
  MSelectionList before;
  MGlobal::getActiveSelectionList(before);
  if (before.hasItem(path) && (joins || before.length() == 1)) return;
  BeginUndoBlock("Select #" + node.GetSceneName());
  const UndoUnit* const last = GetUndo().lastInBlock();
  if (!last || last->typeName() != kSelectionUndo)
    PushExchange(kSelectionUndo, [saved = before]() mutable {
      MSelectionList now;
      MGlobal::getActiveSelectionList(now);
      MGlobal::setActiveSelectionList(saved, MGlobal::kReplaceList);
      saved = now;
    });
  MObject whole;
  MGlobal::select(path, whole, joins ? MGlobal::kAddToList : MGlobal::kReplaceList);
  EndUndoBlock();
}

// --- undo ---

void MayaAdaptorInterface::BlockMade(int id, const std::string&) {
  if (!Features::instance().IsOn(Feature::kUndo)) return;
  m_madeEntries = true;
  MGlobal::executeCommand(WrapperLine(id).c_str(), true, true);
}

bool MayaAdaptorInterface::StepHistory(int id, bool back) {
  const UndoManagement& undo = GetUndo();
  if ((back ? undo.undoId() : undo.redoId()) != id) return false;
  const bool stepped = back ? StepUndo() : StepRedo();
  RefreshViews();
  return stepped;
}

bool MayaAdaptorInterface::HostUndo() {
  if (GetUndo().isOpen() || Says("undoInfo -q -undoQueueEmpty")) return false;
  return MGlobal::executeCommand("undo");
}

/// Where the host's queue is off, or has something newer, its latest entry is not ours.
bool MayaAdaptorInterface::UndoBlock(int block) {
  MString name;
  MGlobal::executeCommand("undoInfo -q -undoName", name);
  return name == WrapperLine(block).c_str() && HostAdaptor::UndoBlock(block);
}

bool MayaAdaptorInterface::HostRedo() {
  if (GetUndo().isOpen() || Says("undoInfo -q -redoQueueEmpty")) return false;
  return MGlobal::executeCommand("redo");
}

/// Entries of the host's queue that name blocks which are gone would do nothing.
void MayaAdaptorInterface::ClearUndoHistory() {
  HostAdaptor::ClearUndoHistory();
  if (std::exchange(m_madeEntries, false)) MGlobal::executeCommand("flushUndo");
}

// --- time ---

double MayaAdaptorInterface::GetFrameRate() {
  return FrameRateOf(MTime::uiUnit());
}

double MayaAdaptorInterface::GetCurrentTime() {
  return ToSeconds(MAnimControl::currentTime());
}

void MayaAdaptorInterface::SetCurrentTime(double time) {
  if (!std::isfinite(time)) return;
  if (!IsRecording()) {
    MAnimControl::setCurrentTime(ToHostTime(time));
    return;
  }
  PutTakePoses();
  m_inTick = true;
  MAnimControl::setCurrentTime(ToHostTime(time));
  RefreshViews();
  m_inTick = false;
}

void MayaAdaptorInterface::GetTimeRange(double& start, double& end) {
  start = ToSeconds(MAnimControl::minTime());
  end = ToSeconds(MAnimControl::maxTime());
}

bool MayaAdaptorInterface::PutTimeRange(double start, double end) {
  if (!std::isfinite(start) || !std::isfinite(end) || !(start <= end)) return false;
  const MTime first = ToHostTime(start), last = ToHostTime(end);
  // The playback range lies within the animation's: that grows with it.
  if (first < MAnimControl::animationStartTime()) MAnimControl::setAnimationStartTime(first);
  if (last > MAnimControl::animationEndTime()) MAnimControl::setAnimationEndTime(last);
  return MAnimControl::setMinMaxTime(first, last);
}

void MayaAdaptorInterface::SetTimeRange(double start, double end) {
  struct Slider {
    MTime first, last, start, end, now;
  };
  const auto slider = [] {
    return Slider{MAnimControl::animationStartTime(), MAnimControl::animationEndTime(),
                  MAnimControl::minTime(), MAnimControl::maxTime(), MAnimControl::currentTime()};
  };
  const Slider before = slider();
  if (!PutTimeRange(start, end)) return;
  const Slider after = slider();
  if (before.start == after.start && before.end == after.end) return;
  PushExchange("CTimesliderRestoreObj", [slider, saved = before]() mutable {
    const Slider now = slider();
    MAnimControl::setAnimationStartEndTime(saved.first, saved.last);
    MAnimControl::setMinMaxTime(saved.start, saved.end);
    if (saved.now != now.now) MAnimControl::setCurrentTime(saved.now);
    saved = now;
  });
}

void MayaAdaptorInterface::RefreshViews() {
  if (IsRecording() && !m_pace.IsDue()) return;
  m_pace.Run([] {
    MStatus status;
    M3dView view = M3dView::active3dView(&status);
    if (status) view.refresh(true, true);
  });
}

}  // namespace orv::rws::adaptor::maya
