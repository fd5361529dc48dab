#include "adaptor/common/HostNode.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adaptor/common/HostAdaptor.h"
#include "util/AVar_Matrix.h"

namespace orv::rws::adaptor {

using util::AVar_Linear;
using util::Matrix;

namespace {

/// A rig may leave anything in the last column; a pose has none.
Matrix<double> Affine(Matrix<double> m) {
  m[3] = m[7] = m[11] = 0.0;
  m[15] = 1.0;
  return m;
}

/// Gives the memory back, which neither clear() nor an empty list as a new value does.
template <class T>
void Free(std::vector<T>& numbers) {
  std::vector<T>().swap(numbers);
}

}  // namespace

HostNode::HostNode(HostAdaptor& adaptor, std::string sceneName) : m_adaptor(adaptor) {
  name = std::move(sceneName);
}

HostNode::~HostNode() = default;

// --- extensions ---

std::intptr_t HostNode::Extension(int code, void* a, void*) {
  switch (code) {
    case kBeginGroupSelection:
      m_adaptor.BeginGroupSelection();
      return 1;
    case kEndGroupSelection:
      m_adaptor.EndGroupSelection();
      return 1;
    case kForgetTransformKeys:
    case kForgetShapeKeys:
      return 1;  // keys are always read from the scene: nothing is cached
    case kWrittenByRig:
      m_writtenByRig = true;
      return 1;
    case kAcquireCurve:
      return a ? reinterpret_cast<std::intptr_t>(GetSnapshotShape(*static_cast<const double*>(a)))
               : 0;
    case kHandOver:
      return SetParent(static_cast<CNode*>(a)) ? 1 : -1;
    case kShareMesh:
      return ShareMesh(static_cast<CNode*>(a)) ? 1 : -1;
    case kIsSameNode:
      return IsSame(static_cast<CNode*>(a)) ? 1 : -1;
    case kReadName:
      if (!a) return 0;
      *static_cast<std::string*>(a) = GetSceneName();
      return 1;
    case kIsOfRig:
      return owner || !GetTag().empty() ? 1 : -1;
    case kMayMove:
      return MayMove() ? 1 : -1;
    case kRename:
      return a && Rename(*static_cast<const std::string*>(a)) ? 1 : -1;
    default:
      return 0;
  }
}

void HostNode::GetExtensions(std::vector<int>& out) {
  out.insert(out.end(), {kBeginGroupSelection, kEndGroupSelection, kForgetTransformKeys,
                         kForgetShapeKeys, kHandOver, kRename, kWrittenByRig, kIsSameNode,
                         kAcquireCurve, kShareMesh, kReadName, kIsOfRig, kMayMove});
}

/// Whether keys, or a rig of the running take, move the node or one above it.
bool HostNode::MayMove() {
  for (HostNode* node = this; node && node->Exists(); node = node->ParentNode())
    if (node->buffering || node->HasOwnKeys()) return true;
  return false;
}

// --- the tree ---

void HostNode::SetVisible(bool visible) {
  if (!IsValid() || IsShown() == visible) return;
  PutShown(visible);
  m_adaptor.PushExchange("CVisibilityRestoreObj", [this, saved = !visible]() mutable {
    if (!Exists()) return;
    const bool now = IsShown();
    PutShown(saved);
    saved = now;
  });
}

void HostNode::Select() {
  if (IsValid()) m_adaptor.Select(*this);
}

CNode* HostNode::GetParent() {
  HostNode* const parent = IsValid() ? ParentNode() : nullptr;
  if (parent) m_adaptor.Enlist(*parent);
  return parent;
}

CNode* HostNode::GetChild(int index) {
  if (index < 0 || index >= GetChildCount()) return nullptr;
  HostNode* const child = ChildNode(index);
  m_adaptor.Enlist(*child);
  return child;
}

bool HostNode::NeedsRebuild() const {
  return m_adaptor.NeedsRebuild(*this);
}

bool HostNode::SetParent(CNode* parent) {
  auto* const target = dynamic_cast<HostNode*>(parent);
  if (!IsValid() || (parent && (!target || !target->IsValid()))) return false;
  if (ParentNode() == target) return true;
  if (buffering) return false;
  Exchange step = SavePlace();
  if (!PutUnder(target)) return false;
  m_adaptor.BeginUndoBlock("SetParent #" + GetSceneName());
  m_adaptor.PushExchange("CParentRestoreObj", std::move(step));
  m_adaptor.EndUndoBlock();
  return true;
}

bool HostNode::Rename(const std::string& sceneName) {
  if (!IsValid() || sceneName.empty()) return false;
  const std::string before = GetSceneName();
  if (before == sceneName) return true;
  PutName(sceneName);
  if (GetSceneName() == before) return false;
  const bool exact = GetSceneName() == sceneName;
  m_adaptor.NoteName(*this);
  m_adaptor.BeginUndoBlock("Rename #" + before);
  m_adaptor.PushExchange("CRenameRestoreObj", [this, saved = before]() mutable {
    if (!IsValid()) return;
    std::string now = GetSceneName();
    PutName(saved);
    m_adaptor.NoteName(*this);
    saved = std::move(now);
  });
  m_adaptor.EndUndoBlock();
  return exact;
}

void HostNode::deleteMe() {
  if (m_adaptor.IsUndoBlockOpen() && owner && m_known) m_adaptor.Delete(*this);
}

// --- snapshots ---

CSnapshot* HostNode::GetSnapshot(double time) {
  return IsValid() ? &m_adaptor.GetPools().pose.Take().Bind(*this, time) : nullptr;
}

CSnapshot_Helper* HostNode::GetSnapshotHelper() {
  return IsValid() ? &m_adaptor.GetPools().helper.Take().Bind(*this) : nullptr;
}

CSnapshot_Mesh* HostNode::GetSnapshotMesh(double time) {
  return IsValid() && HasMesh() ? &m_adaptor.GetPools().mesh.Take().Bind(*this, time) : nullptr;
}

CSnapshot_Lens* HostNode::GetSnapshotLens(double time) {
  if (!IsValid() || !HasLens()) return nullptr;
  return &m_adaptor.GetPools().lens.Take().Bind(*this, time);
}

CSnapshot_Shape* HostNode::GetSnapshotShape(double time) {
  std::shared_ptr<const Curve> curve = IsValid() ? CurveAt(time) : nullptr;
  if (!curve) return nullptr;
  return &m_adaptor.GetPools().shape.Take().Bind(std::move(curve), GetWorldPose(time));
}

void HostNode::ReleaseSnapshot(CExtendable* snapshot) {
  m_adaptor.ReleaseSnapshot(snapshot);
}

// --- poses ---

Matrix<double> HostNode::GetWorldPose(double time) {
  if (!Exists()) return {};
  if (!m_adaptor.IsRecording()) return ReadWorld(time);
  Matrix<double> local;
  if (!GetLocal(time, local)) return GetRecordedBetween(time);
  HostNode* const parent = ParentNode();
  return parent ? parent->GetWorldPose(time) * local : local;
}

Matrix<double> HostNode::GetLocalPose(double time) {
  Matrix<double> local;
  if (!Exists() || GetLocal(time, local)) return local;
  HostNode* const parent = ParentNode();
  const Matrix<double> world = GetRecordedBetween(time);
  return parent ? parent->GetWorldPose(time).affineInverse() * world : world;
}

/// False between two samples of a take, where the world pose is what is known.
bool HostNode::GetLocal(double time, Matrix<double>& local) {
  if (!IsBuffered(time)) {
    local = ReadLocal(time);
    return true;
  }
  if (!HasRecordedPose()) {
    local = HoldsStart(time) ? Compose(m_aside->noted) : ReadLocal(time);
    return true;
  }
  const int sample = SampleAt(time);
  if (sample >= 0) local = Compose(recorded[static_cast<std::size_t>(sample)].local);
  return sample >= 0;
}

/// Whether a read ahead of the take's first write gives the pose of the start. Keys that lie there
/// are about to go, so a rig that reads the node before it is written must not see them: its
/// resimulation could not.
bool HostNode::HoldsStart(double time) const {
  return m_writtenByRig && time > bufferedFrom;
}

std::size_t HostNode::FirstFrom(double time) const {
  const auto first =
      std::lower_bound(recorded.begin(), recorded.end(), time,
                       [](const PoseSample& sample, double t) { return sample.time < t; });
  return static_cast<std::size_t>(first - recorded.begin());
}

/// The sample of exactly this time, or the last one behind it; -1 between two samples.
int HostNode::SampleAt(double time) const {
  const int last = static_cast<int>(recorded.size()) - 1;
  if (time >= recorded[static_cast<std::size_t>(last)].time) return last;
  if (last > 0 && time == recorded[static_cast<std::size_t>(last) - 1].time) return last - 1;
  const std::size_t found = FirstFrom(time);
  return recorded[found].time == time ? static_cast<int>(found) : -1;
}

Matrix<double> HostNode::GetRecordedBetween(double time) {
  HostNode* const parent = ParentNode();
  const std::size_t i = FirstFrom(time);
  const auto sample = [&](std::size_t index) {
    const auto& [at, own] = recorded[index];
    const Matrix<double> local = Compose(own);
    return util::AVar_Matrix<double>::Sample{at, parent ? parent->GetWorldPose(at) * local : local};
  };
  if (i == 0) return sample(0).value;
  util::AVar_Matrix<double>::Sample out;
  return util::AVar_Matrix<double>().interpolate(out, sample(i - 1), sample(i), time).value;
}

bool HostNode::SetWorldPose(double time, const Matrix<double>& world, bool key) {
  if (!IsValid() || !std::isfinite(time)) return false;
  // What was saved comes back to the bit, which a rig that is told of its parameters would not hit.
  if (m_adaptor.GetUndo().isBusy()) return true;
  Trs pose;
  HostNode* const parent = ParentNode();
  if (!parent)
    pose = Decompose(Affine(world));
  else if (!PoseUnder(parent->GetWorldPose(time), Affine(world), pose))
    return false;
  if (!IsFinite(pose)) return false;
  if (IsBuffered(time)) {
    Record(time, pose);
    return true;
  }
  m_adaptor.KeepPose(*this);
  WriteTrs(time, pose, key);
  return true;
}

// --- the take's buffer ---

void HostNode::BeginBuffering(double time, bool born) {
  recorded.clear();
  m_aside->focus.samples.clear();
  m_aside->focal.samples.clear();
  buffering = true;
  m_bornInTake = born;
  StartTake(time);
}

void HostNode::StartTake(double time) {
  if (!Exists()) return;
  bufferedFrom = time;
  m_aside->noted = ReadTrs(time);
}

void HostNode::Record(double time, const Trs& local) {
  if (!HasRecordedPose() && time > bufferedFrom && !m_bornInTake) {
    RecordSample(bufferedFrom, m_aside->noted);
    // A node that is first written in a later frame rests where it was until the frame before.
    const double before = m_adaptor.GetFrameBefore(time);
    if (before > bufferedFrom) RecordSample(before, m_aside->noted);
  }
  RecordSample(time, local);
  m_adaptor.NoteFrame(time);
}

void HostNode::RecordSample(double time, const Trs& local) {
  // What was there at the start is keyed to the end most likely; what a take makes may be many, and
  // soon still.
  if (recorded.empty() && !m_bornInTake) recorded.reserve(m_adaptor.GetExpectedSamples());
  if (recorded.empty() || time > recorded.back().time) {
    recorded.push_back({time, local});
    return;
  }
  const std::size_t index = FirstFrom(time);
  if (recorded[index].time == time)
    recorded[index].local = local;
  else
    recorded.insert(recorded.begin() + static_cast<std::ptrdiff_t>(index), {time, local});
}

bool HostNode::HasRecordedLens() const {
  return !m_aside->focal.samples.empty() || !m_aside->focus.samples.empty();
}

void HostNode::WriteRecordedLens() {
  for (const LensValue which : {LensValue::kFieldOfView, LensValue::kFocusDistance})
    if (!Recorded(which).samples.empty()) WriteLensKeys(which, bufferedFrom, Recorded(which));
}

void HostNode::EndBuffering() {
  buffering = false;
  Free(recorded);
  Free(m_aside->focus.samples);
  Free(m_aside->focal.samples);
}

// --- the lens ---

double HostNode::GetLensValue(LensValue which, double time) {
  if (!Exists() || !HasLens()) return 0.0;
  if (IsBuffered(time)) {
    const AVar_Linear<double>& take = Recorded(which);
    if (!take.samples.empty()) return take.value(time);
    if (m_adaptor.IsFirstFrame(time)) return ReadLens(which, bufferedFrom);
  }
  return ReadLens(which, time);
}

void HostNode::SetLensValue(LensValue which, double time, double value) {
  if (!IsValid() || !HasLens() || !std::isfinite(value) || !std::isfinite(time)) return;
  if (IsBuffered(time)) {
    AVar_Linear<double>& take = Recorded(which);
    if (take.samples.empty() && time > bufferedFrom)
      take.set(bufferedFrom, ReadLens(which, bufferedFrom));
    take.set(time, value);
    m_adaptor.NoteFrame(time);
    return;
  }
  m_adaptor.KeepLens(*this);
  WriteLens(which, time, value);
}

// --- geometry ---

void HostNode::SetMesh(const util::CMesh& mesh) {
  if (IsValid()) SetMesh(MakeSharedMesh(mesh));
}

void HostNode::SetMesh(std::shared_ptr<const util::CMesh> mesh) {
  std::shared_ptr<const util::CMesh> before = SharedMesh();
  PutMesh(std::move(mesh));
  m_adaptor.PushExchange("CChangeMeshRestoreObj", [this, saved = std::move(before)]() mutable {
    if (!Exists()) return;
    std::shared_ptr<const util::CMesh> now = SharedMesh();
    PutMesh(std::move(saved));
    saved = std::move(now);
  });
}

bool HostNode::ShareMesh(CNode* from) {
  auto* const other = dynamic_cast<HostNode*>(from);
  if (!IsValid() || !other || !other->IsValid() || !other->HasMesh()) return false;
  if (std::shared_ptr<const util::CMesh> mesh = other->SharedMesh())
    if (mesh != SharedMesh()) SetMesh(std::move(mesh));
  SetColour(other->ReadColour());
  return true;
}

void HostNode::SetColour(const Colour& colour) {
  if (!IsValid() || ReadColour() == colour) return;
  const Colour before = ReadColour();
  PutColour(colour);
  if (ReadColour() == before) return;  // the host refused
  m_adaptor.PushExchange("CColorRestoreObj", [this, saved = before]() mutable {
    if (!Exists()) return;
    const Colour now = ReadColour();
    PutColour(saved);
    saved = now;
  });
}

std::shared_ptr<const util::MeshRays> HostNode::GetRays(double time) {
  std::shared_ptr<const util::CMesh> mesh = GetMesh(time);
  if (!mesh) return nullptr;
  if (!m_aside->rays || m_aside->raysMesh != mesh) {
    m_aside->rays = m_adaptor.RaysOf(mesh);
    m_aside->raysMesh = std::move(mesh);
  }
  return m_aside->rays;
}

}  // namespace orv::rws::adaptor
