#include "adaptor/headless/HeadlessNode.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/MeshRays.h"
#include "adaptor/headless/RestoreObjects.h"
#include "adaptor/headless/Scene.h"
#include "util/AVar_Matrix.h"

namespace orv::rws::adaptor::headless {

using util::AVar_Linear;
using util::Matrix;

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

bool IsFinite(const Trs& pose) {
  for (const ChannelPath path : kPaths) {
    double numbers[4];
    const int count = Numbers(pose, path, numbers);
    for (int i = 0; i < count; ++i)
      if (!std::isfinite(numbers[i])) return false;
  }
  return true;
}

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

int IndexOf(LensValue which) {
  return static_cast<int>(which);
}

double& Value(Lens& lens, LensValue which) {
  return which == LensValue::kFieldOfView ? lens.fieldOfView : lens.focusDistance;
}

}  // namespace

HeadlessNode::HeadlessNode(HeadlessAdaptor& adaptor, SceneNode& sceneNode, int number)
    : m_sceneNode(&sceneNode), m_adaptor(adaptor) {
  name = sceneNode.name();
  id = number;
}

HeadlessNode::~HeadlessNode() = default;

// --- extensions ---

std::intptr_t HeadlessNode::Extension(int code, void* a, void*) {
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

void HeadlessNode::GetExtensions(std::vector<int>& out) {
  out.insert(out.end(), {kBeginGroupSelection, kEndGroupSelection, kForgetTransformKeys,
                         kForgetShapeKeys, kHandOver, kRename, kWrittenByRig, kIsSameNode,
                         kAcquireCurve, kShareMesh, kReadName, kIsOfRig, kMayMove});
}

/// Whether keys, or a rig of the running take, move the node or one above it.
bool HeadlessNode::MayMove() {
  for (HeadlessNode* node = this; node && node->m_sceneNode; node = node->GetParentNode())
    if (node->buffering || node->m_sceneNode->hasKeys()) return true;
  return false;
}

// --- the tree ---

bool HeadlessNode::IsVisible() {
  return IsValid() && m_sceneNode->visible();
}

void HeadlessNode::SetVisible(bool visible) {
  if (!IsValid() || m_sceneNode->visible() == visible) return;
  m_sceneNode->setVisible(visible);
  m_adaptor.PushExchange("CVisibilityRestoreObj", [this, saved = !visible]() mutable {
    if (!m_sceneNode) return;
    const bool now = m_sceneNode->visible();
    m_sceneNode->setVisible(saved);
    saved = now;
  });
}

void HeadlessNode::Select() {
  if (IsValid()) m_adaptor.Select(*this);
}

HeadlessNode* HeadlessNode::GetParentNode() {
  SceneNode* const parent = m_sceneNode->parent();
  if (!parent) return nullptr;
  if (!m_parent || m_parent->m_sceneNode != parent) m_parent = &m_adaptor.NodeFor(*parent);
  return m_parent;
}

CNode* HeadlessNode::GetParent() {
  return IsValid() && m_sceneNode->parent() ? &m_adaptor.HandOut(*m_sceneNode->parent()) : nullptr;
}

int HeadlessNode::GetChildCount() {
  return IsValid() ? static_cast<int>(m_sceneNode->children().size()) : 0;
}

CNode* HeadlessNode::GetChild(int index) {
  if (index < 0 || index >= GetChildCount()) return nullptr;
  return &m_adaptor.HandOut(*m_sceneNode->children()[static_cast<std::size_t>(index)]);
}

std::string HeadlessNode::GetSceneName() {
  return m_sceneNode ? m_sceneNode->name() : std::string();
}

bool HeadlessNode::NeedsRebuild() const {
  return m_adaptor.NeedsRebuild(*this);
}

std::string HeadlessNode::GetTag() {
  return m_sceneNode ? m_sceneNode->tag() : std::string();
}

bool HeadlessNode::IsSame(CNode* node) {
  const auto* other = dynamic_cast<HeadlessNode*>(node);
  return other && m_sceneNode && other->m_sceneNode == m_sceneNode;
}

bool HeadlessNode::SetParent(CNode* parent) {
  auto* const target = dynamic_cast<HeadlessNode*>(parent);
  if (!IsValid() || (parent && (!target || !target->IsValid()))) return false;
  SceneNode* const place = target ? target->m_sceneNode : nullptr;
  if (m_sceneNode->parent() == place) return true;
  if (buffering) return false;
  auto step = UndoUnitPtr(new CParentRestoreObj(*this));
  if (!m_sceneNode->scene()->reparent(*m_sceneNode, place, m_adaptor.GetCurrentTime()))
    return false;
  m_adaptor.BeginUndoBlock("SetParent #" + GetSceneName());
  m_adaptor.Push(std::move(step));
  m_adaptor.EndUndoBlock();
  return true;
}

bool HeadlessNode::Rename(const std::string& sceneName) {
  if (!IsValid() || sceneName.empty()) return false;
  const std::string before = m_sceneNode->name();
  if (before == sceneName) return true;
  Scene& scene = *m_sceneNode->scene();
  const bool exact = scene.rename(*m_sceneNode, sceneName) == sceneName;
  m_adaptor.NoteName(*this);
  m_adaptor.BeginUndoBlock("Rename #" + before);
  m_adaptor.PushExchange("CRenameRestoreObj", [this, &scene, saved = before]() mutable {
    if (!IsValid()) return;
    std::string now = m_sceneNode->name();
    scene.rename(*m_sceneNode, saved);
    m_adaptor.NoteName(*this);
    saved = std::move(now);
  });
  m_adaptor.EndUndoBlock();
  return exact;
}

void HeadlessNode::deleteMe() {
  if (m_adaptor.IsUndoBlockOpen() && owner && m_known) m_adaptor.Delete(*this);
}

// --- snapshots ---

CSnapshot* HeadlessNode::GetSnapshot(double time) {
  return IsValid() ? &m_adaptor.GetPools().pose.Take().Bind(*this, time) : nullptr;
}

CSnapshot_Helper* HeadlessNode::GetSnapshotHelper() {
  return IsValid() ? &m_adaptor.GetPools().helper.Take().Bind(*this) : nullptr;
}

CSnapshot_Mesh* HeadlessNode::GetSnapshotMesh(double time) {
  if (!IsValid() || !m_sceneNode->hasMesh()) return nullptr;
  return &m_adaptor.GetPools().mesh.Take().Bind(*this, time);
}

CSnapshot_Lens* HeadlessNode::GetSnapshotLens(double time) {
  if (!IsValid() || !m_sceneNode->lens()) return nullptr;
  return &m_adaptor.GetPools().lens.Take().Bind(*this, time);
}

CSnapshot_Shape* HeadlessNode::GetSnapshotShape(double time) {
  if (!IsValid() || !m_sceneNode->curve()) return nullptr;
  return &m_adaptor.GetPools().shape.Take().Bind(*this, time);
}

void HeadlessNode::ReleaseSnapshot(CExtendable* snapshot) {
  m_adaptor.ReleaseSnapshot(snapshot);
}

// --- poses ---

Matrix<double> HeadlessNode::GetWorldPose(double time) {
  if (!m_sceneNode) return {};
  if (!m_adaptor.IsRecording()) return m_sceneNode->worldMatrix(time);
  Matrix<double> local;
  if (!GetLocal(time, local)) return GetRecordedBetween(time);
  HeadlessNode* const parent = GetParentNode();
  return parent ? parent->GetWorldPose(time) * local : local;
}

Matrix<double> HeadlessNode::GetLocalPose(double time) {
  Matrix<double> local;
  if (!m_sceneNode || GetLocal(time, local)) return local;
  HeadlessNode* const parent = GetParentNode();
  const Matrix<double> world = GetRecordedBetween(time);
  return parent ? parent->GetWorldPose(time).affineInverse() * world : world;
}

/// False between two samples of a take, where the world pose is what is known.
bool HeadlessNode::GetLocal(double time, Matrix<double>& local) const {
  if (!IsBuffered(time)) {
    local = m_sceneNode->localMatrix(time);
    return true;
  }
  if (!HasRecordedPose()) {
    local = HoldsStart(time) ? compose(m_noted) : m_sceneNode->localMatrix(time);
    return true;
  }
  const int sample = SampleAt(time);
  if (sample >= 0) local = compose(recorded[static_cast<std::size_t>(sample)].local);
  return sample >= 0;
}

/// Whether a read ahead of the take's first write gives the pose of the start. Keys that lie there
/// are about to go, so a rig that reads the node before it is written must not see them: its
/// resimulation could not.
bool HeadlessNode::HoldsStart(double time) const {
  return m_writtenByRig && time > bufferedFrom;
}

std::size_t HeadlessNode::FirstFrom(double time) const {
  const auto first =
      std::lower_bound(recorded.begin(), recorded.end(), time,
                       [](const Sample& sample, double t) { return sample.time < t; });
  return static_cast<std::size_t>(first - recorded.begin());
}

/// The sample of exactly this time, or the last one behind it; -1 between two samples.
int HeadlessNode::SampleAt(double time) const {
  const int last = static_cast<int>(recorded.size()) - 1;
  if (time >= recorded[static_cast<std::size_t>(last)].time) return last;
  if (last > 0 && time == recorded[static_cast<std::size_t>(last) - 1].time) return last - 1;
  const std::size_t found = FirstFrom(time);
  return recorded[found].time == time ? static_cast<int>(found) : -1;
}

Matrix<double> HeadlessNode::GetRecordedBetween(double time) {
  HeadlessNode* const parent = GetParentNode();
  const std::size_t i = FirstFrom(time);
  const auto sample = [&](std::size_t index) {
    const auto& [at, own] = recorded[index];
    const Matrix<double> local = compose(own);
    return util::AVar_Matrix<double>::Sample{at, parent ? parent->GetWorldPose(at) * local : local};
  };
  if (i == 0) return sample(0).value;
  util::AVar_Matrix<double>::Sample out;
  return util::AVar_Matrix<double>().interpolate(out, sample(i - 1), sample(i), time).value;
}

bool HeadlessNode::SetWorldPose(double time, const Matrix<double>& world, bool key) {
  if (!IsValid() || !std::isfinite(time)) return false;
  Matrix<double> local = Affine(world);
  if (HeadlessNode* const parent = GetParentNode()) {
    const Matrix<double> inverse = parent->GetWorldPose(time).affineInverse();
    if (inverse[15] == 0.0) return false;
    local = inverse * local;
  }
  const Trs pose = decompose(local);
  if (!IsFinite(pose)) return false;
  if (IsBuffered(time))
    Record(time, pose);
  else
    WriteStatic(time, pose, key);
  return true;
}

void HeadlessNode::WriteStatic(double time, const Trs& local, bool key) {
  m_adaptor.KeepPose(*this);
  Trs pose = m_sceneNode->pose();
  for (const ChannelPath path : kPaths) {
    if (!key) {
      if (!m_sceneNode->channel(path)) CopyProperty(local, path, pose);
      continue;
    }
    double numbers[4];
    const int count = Numbers(local, path, numbers);
    m_sceneNode->replaceKeys(path, time, time, {time},
                             std::vector<double>(numbers, numbers + count),
                             m_adaptor.GetFrameDuration());
  }
  m_sceneNode->setPose(pose);
}

// --- the take's buffer ---

void HeadlessNode::BeginBuffering(double time, bool born) {
  recorded.clear();
  recordedFocus.samples.clear();
  recordedFocal.samples.clear();
  buffering = true;
  m_bornInTake = born;
  StartTake(time);
}

void HeadlessNode::StartTake(double time) {
  if (!m_sceneNode) return;
  bufferedFrom = time;
  m_noted = m_sceneNode->localTrs(time);
}

void HeadlessNode::Record(double time, const Trs& local) {
  if (!HasRecordedPose() && time > bufferedFrom && !m_bornInTake) {
    RecordSample(bufferedFrom, m_noted);
    // A node that is first written in a later frame rests where it was until the frame before.
    const double before = m_adaptor.GetFrameBefore(time);
    if (before > bufferedFrom) RecordSample(before, m_noted);
  }
  RecordSample(time, local);
  m_adaptor.NoteFrame(time);
}

void HeadlessNode::RecordSample(double time, const Trs& local) {
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

bool HeadlessNode::HasRecordedLens() const {
  return !recordedFocal.samples.empty() || !recordedFocus.samples.empty();
}

/// Turns the samples into keys: those before the start stay, all from there on give way.
bool HeadlessNode::WritePoseKeys() {
  if (!HasRecordedPose() || !m_sceneNode) return true;
  std::vector<double> times;
  times.reserve(recorded.size());
  for (const Sample& sample : recorded) times.push_back(sample.time);
  bool written = true;
  for (const ChannelPath path : kPaths) {
    std::vector<double> values;
    values.reserve(times.size() * 4);
    for (const Sample& sample : recorded) {
      double v[4];
      const auto n = static_cast<std::size_t>(Numbers(sample.local, path, v));
      const double* const last = values.size() >= n ? &values[values.size() - n] : nullptr;
      // The same rotation with the other sign is nearer to the key before: readers that do not
      // look for the short way take it too. The sign leaves a pose's matrix as it is, bit for bit.
      if (n == 4 && last && last[0] * v[0] + last[1] * v[1] + last[2] * v[2] + last[3] * v[3] < 0.0)
        for (double& number : v) number = -number;
      values.insert(values.end(), v, v + n);
    }
    written = m_sceneNode->replaceKeys(path, bufferedFrom, std::numeric_limits<double>::infinity(),
                                       times, values, m_adaptor.GetFrameDuration()) &&
              written;
  }
  return written;
}

void HeadlessNode::WriteLensKeys() {
  for (const LensValue which : {LensValue::kFieldOfView, LensValue::kFocusDistance}) {
    const AVar_Linear<double>& take = Recorded(which);
    if (take.samples.empty()) continue;
    AVar_Linear<double>& keys = m_lensKeys[static_cast<std::size_t>(IndexOf(which))];
    keys.cutFrom(bufferedFrom - Channel::kSameTime);
    keys.samples.insert(keys.samples.end(), take.samples.begin(), take.samples.end());
  }
}

void HeadlessNode::EndBuffering() {
  buffering = false;
  Free(recorded);
  Free(recordedFocus.samples);
  Free(recordedFocal.samples);
}

// --- the lens ---

double HeadlessNode::GetSceneLensValue(LensValue which, double time) const {
  const AVar_Linear<double>& keys = m_lensKeys[static_cast<std::size_t>(IndexOf(which))];
  if (!keys.samples.empty()) return keys.value(time);
  Lens lens = *m_sceneNode->lens();
  return Value(lens, which);
}

double HeadlessNode::GetLensValue(LensValue which, double time) {
  if (!m_sceneNode || !m_sceneNode->lens()) return 0.0;
  if (IsBuffered(time)) {
    const AVar_Linear<double>& take = Recorded(which);
    if (!take.samples.empty()) return take.value(time);
    if (m_adaptor.IsFirstFrame(time)) return GetSceneLensValue(which, bufferedFrom);
  }
  return GetSceneLensValue(which, time);
}

void HeadlessNode::SetLensValue(LensValue which, double time, double value) {
  if (!IsValid() || !m_sceneNode->lens() || !std::isfinite(value) || !std::isfinite(time)) return;
  if (IsBuffered(time)) {
    AVar_Linear<double>& take = Recorded(which);
    if (take.samples.empty() && time > bufferedFrom)
      take.set(bufferedFrom, GetSceneLensValue(which, bufferedFrom));
    take.set(time, value);
    m_adaptor.NoteFrame(time);
    return;
  }
  m_adaptor.KeepLens(*this);
  AVar_Linear<double>& keys = m_lensKeys[static_cast<std::size_t>(IndexOf(which))];
  if (!keys.samples.empty()) {
    keys.set(time, value);
    return;
  }
  Lens lens = *m_sceneNode->lens();
  Value(lens, which) = value;
  m_sceneNode->setLens(lens);
}

bool HeadlessNode::HasLensKeys() const {
  return !m_lensKeys[0].samples.empty() || !m_lensKeys[1].samples.empty();
}

// --- geometry ---

void HeadlessNode::SetMesh(const util::CMesh& mesh) {
  if (IsValid()) SetMesh(shareMesh(mesh));
}

void HeadlessNode::SetMesh(std::shared_ptr<const util::CMesh> mesh) {
  std::shared_ptr<const util::CMesh> before = m_sceneNode->sharedMesh();
  m_sceneNode->setMesh(std::move(mesh));
  m_adaptor.PushExchange("CChangeMeshRestoreObj", [this, saved = std::move(before)]() mutable {
    if (!m_sceneNode) return;
    std::shared_ptr<const util::CMesh> now = m_sceneNode->sharedMesh();
    m_sceneNode->setMesh(std::move(saved));
    saved = std::move(now);
  });
}

bool HeadlessNode::ShareMesh(CNode* from) {
  auto* const other = dynamic_cast<HeadlessNode*>(from);
  if (!IsValid() || !other || !other->IsValid() || !other->m_sceneNode->hasMesh()) return false;
  if (std::shared_ptr<const util::CMesh> mesh = other->m_sceneNode->sharedMesh())
    if (mesh != m_sceneNode->sharedMesh()) SetMesh(std::move(mesh));
  SetColour(other->m_sceneNode->colour());
  return true;
}

void HeadlessNode::SetColour(const Colour& colour) {
  if (!IsValid() || m_sceneNode->colour() == colour) return;
  const Colour before = m_sceneNode->colour();
  m_sceneNode->setColour(colour);
  m_adaptor.PushExchange("CColorRestoreObj", [this, saved = before]() mutable {
    if (!m_sceneNode) return;
    const Colour now = m_sceneNode->colour();
    m_sceneNode->setColour(saved);
    saved = now;
  });
}

std::shared_ptr<const MeshRays> HeadlessNode::GetRays() {
  if (!IsValid() || !m_sceneNode->hasMesh()) return nullptr;
  std::shared_ptr<const util::CMesh> mesh = m_sceneNode->sharedMesh();
  if (!mesh) return nullptr;
  if (!m_rays || m_raysMesh != mesh) {
    m_rays = m_adaptor.RaysOf(mesh);
    m_raysMesh = std::move(mesh);
  }
  return m_rays;
}

}  // namespace orv::rws::adaptor::headless
