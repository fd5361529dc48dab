#include "adaptor/maya/CMayaNode.h"

#include <maya/MDagModifier.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MMatrix.h>

#include <algorithm>
#include <set>
#include <utility>

#include "adaptor/common/LegalNames.h"
#include "adaptor/maya/Channels.h"
#include "adaptor/maya/HostTime.h"
#include "adaptor/maya/LoggedModifier.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/MayaPresence.h"
#include "adaptor/maya/MelText.h"
#include "adaptor/maya/PlugChange.h"
#include "adaptor/maya/TakeChannels.h"
#include "core/services/Log.h"

namespace orv::rws::adaptor::maya {

using util::Matrix;
using util::Vector3;

namespace {

constexpr char kTagAttribute[] = "RWT_tag";

std::string BareName(const MObject& node) {
  const std::string name = MFnDependencyNode(node).name().asUTF8();
  return name.substr(name.rfind(':') + 1);
}

bool IsNode(const MObject& child) {
  return child.hasFn(MFn::kTransform) && !child.hasFn(MFn::kConstraint);
}

std::vector<PoseSample>::const_iterator FirstKept(const std::vector<PoseSample>& poses,
                                                  double from) {
  return std::lower_bound(poses.begin(), poses.end(), from,
                          [](const PoseSample& kept, double t) { return kept.time < t; });
}

Vector3<double> Three(const MObject& node, const char* x, const char* y, const char* z) {
  return {FindPlug(node, x).asDouble(), FindPlug(node, y).asDouble(), FindPlug(node, z).asDouble()};
}

}  // namespace

CMayaNode::CMayaNode(MayaAdaptorInterface& adaptor, const MDagPath& path)
    : HostNode(adaptor, BareName(path.node())),
      m_handle(path.node()),
      m_instance(path.instanceNumber()) {}

CMayaNode::~CMayaNode() = default;

MayaAdaptorInterface& CMayaNode::Adaptor() const {
  return static_cast<MayaAdaptorInterface&>(m_adaptor);
}

MDagPath CMayaNode::GetPath() const {
  MDagPath path;
  if (!m_handle.isValid()) return path;
  if (m_instance == 0) {
    MDagPath::getAPathTo(m_handle.object(), path);
    return path;
  }
  MDagPathArray paths;
  MDagPath::getAllPathsTo(m_handle.object(), paths);
  return m_instance < paths.length() ? paths[m_instance] : path;
}

bool CMayaNode::IsReferenced() const {
  return MFnDependencyNode(GetObject()).isFromReferencedFile();
}

/// A move within the hierarchy, which undo takes back. The pose goes with it, see SavePlace.
struct Reparenting {
  MDagModifier move;
  bool undone = false;
  unsigned instance = 0;  ///< number of the node's path at the other place
};

// --- the tree ---

HostNode* CMayaNode::ParentNode() {
  if (m_take) return m_take->parent;
  MDagPath path = GetPath();
  if (path.length() < 2) return nullptr;
  path.pop();
  return Adaptor().NodeFor(path);
}

int CMayaNode::GetChildCount() {
  if (!IsValid()) return 0;
  const MDagPath path = GetPath();
  int count = 0;
  for (unsigned i = 0; i < path.childCount(); ++i) count += IsNode(path.child(i));
  return count;
}

HostNode* CMayaNode::ChildNode(int index) {
  MDagPath path = GetPath();
  for (unsigned i = 0; i < path.childCount(); ++i) {
    const MObject child = path.child(i);
    if (!IsNode(child) || index-- > 0) continue;
    path.push(child);
    return Adaptor().NodeFor(path);
  }
  return nullptr;
}

std::string CMayaNode::GetSceneName() {
  return Exists() ? BareName(GetObject()) : std::string();
}

void CMayaNode::deleteMe() {
  if (IsReferenced()) return;
  const std::string path = GetPath().fullPathName().asUTF8();
  HostNode::deleteMe();
  core::LogEntry(core::LogLevel::kDebug,
                 "CMayaNode->deleteMe() w. path=" + path + " valid=" + std::to_string(IsValid()));
}

void CMayaNode::PutName(const std::string& wish) {
  if (IsReferenced()) return;
  MFnDependencyNode node(GetObject());
  // What undo brings back was the scene's own, be it not to our taste.
  const bool asItIs = m_adaptor.GetUndo().isBusy();
  std::string name = wish;
  if (!asItIs && LegalName(wish) != GetSceneName()) name = Adaptor().FreeName(wish);
  if (!asItIs && LegalName(wish) == GetSceneName()) return;
  const std::string space = node.parentNamespace().asUTF8();
  node.setName((space.empty() ? name : ":" + space + ":" + name).c_str());
}

std::string CMayaNode::GetTag() {
  if (!Exists()) return {};
  const MFnDependencyNode node(GetObject());
  if (!node.hasAttribute(kTagAttribute)) return {};
  return node.findPlug(kTagAttribute, true).asString().asUTF8();
}

void CMayaNode::PutTag(const std::string& tag) {
  if (IsReferenced()) return;
  MFnDependencyNode node(GetObject());
  if (tag.empty()) {
    if (node.hasAttribute(kTagAttribute)) node.removeAttribute(node.attribute(kTagAttribute));
    return;
  }
  if (!node.hasAttribute(kTagAttribute)) {
    MFnTypedAttribute attribute;
    const MObject made = attribute.create(kTagAttribute, kTagAttribute, MFnData::kString);
    attribute.setHidden(true);
    attribute.setStorable(true);
    node.addAttribute(made);
  }
  node.findPlug(kTagAttribute, true).setString(tag.c_str());
}

bool CMayaNode::IsShown() const {
  return FindPlug(GetObject(), "visibility").asBool();
}

void CMayaNode::PutShown(bool shown) {
  MPlug plug = FindPlug(GetObject(), "visibility");
  if (!IsDriven(plug) && !IsLockedPlug(plug)) plug.setBool(shown);
}

std::unique_ptr<NodePresence> CMayaNode::MakePresence() {
  return std::make_unique<MayaPresence>(*this, m_adaptor.GetUndo().openId());
}

// --- poses ---

ChannelFrame CMayaNode::ReadFrame() const {
  if (m_take) return m_take->frame;
  const MObject node = GetObject();
  ChannelFrame frame;
  frame.order = static_cast<RotationOrder>(FindPlug(node, "rotateOrder").asInt());
  frame.scalePivot = Three(node, "scalePivotX", "scalePivotY", "scalePivotZ");
  frame.scaleShift =
      Three(node, "scalePivotTranslateX", "scalePivotTranslateY", "scalePivotTranslateZ");
  frame.rotatePivot = Three(node, "rotatePivotX", "rotatePivotY", "rotatePivotZ");
  frame.rotateShift =
      Three(node, "rotatePivotTranslateX", "rotatePivotTranslateY", "rotatePivotTranslateZ");
  frame.rotateAxis =
      FromEuler(Three(node, "rotateAxisX", "rotateAxisY", "rotateAxisZ"), RotationOrder::kXyz);
  if (node.hasFn(MFn::kJoint))
    frame.orient =
        FromEuler(Three(node, "jointOrientX", "jointOrientY", "jointOrientZ"), RotationOrder::kXyz);
  return frame;
}

HostChannels CMayaNode::ReadChannels(double time) const {
  std::array<double, 9> v{};
  if (m_take) {
    for (std::size_t i = 0; i < 9; ++i) v[i] = m_take->pose.Read(i, time);
  } else {
    const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
    for (std::size_t i = 0; i < 9; ++i) v[i] = ValueAt(plugs[i], time);
  }
  return {{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}};
}

bool CMayaNode::Inherits() const {
  if (m_take) return m_take->inherits;
  return FindPlug(GetObject(), "inheritsTransform").asBool();
}

HostChannels CMayaNode::ToChannels(double time, const Trs& local, const ChannelFrame& frame,
                                   const Vector3<double>& previousAngles) {
  HostNode* const parent = ParentNode();
  Trs pose = local;
  if (!parent)
    pose = Adaptor().GetSpace().TopLevelToHost(local);
  else if (!Inherits())
    pose =
        Adaptor().GetSpace().TopLevelToHost(Decompose(parent->GetWorldPose(time) * Compose(local)));
  return ChannelsOf(pose, frame, previousAngles);
}

Trs CMayaNode::ToPose(double time, const HostChannels& channels, const ChannelFrame& frame) {
  const Trs own = PoseOf(channels, frame);
  HostNode* const parent = ParentNode();
  if (!parent) return Adaptor().GetSpace().TopLevelToRig(own);
  if (Inherits()) return own;
  Trs pose;
  PoseUnder(parent->GetWorldPose(time), Compose(Adaptor().GetSpace().TopLevelToRig(own)), pose);
  return pose;
}

/// What a take wrote there, unless the scene's channels have become others: they hold it but for
/// their rounding.
const Trs* CMayaNode::FindKept(double time, const HostChannels& channels,
                               const ChannelFrame& frame) {
  if (!m_kept) return nullptr;
  const auto at = FirstKept(*m_kept, time);
  if (at == m_kept->end() || at->time != time) return nullptr;
  const HostChannels same = ToChannels(time, at->local, frame, channels.angles);
  const bool holds = same.translation == channels.translation && same.angles == channels.angles &&
                     same.scale == channels.scale;
  return holds ? &at->local : nullptr;
}

Trs CMayaNode::ReadTrs(double time) {
  const ChannelFrame frame = ReadFrame();
  const HostChannels channels = ReadChannels(time);
  const Trs* const kept = FindKept(time, channels, frame);
  return kept ? *kept : ToPose(time, channels, frame);
}

Matrix<double> CMayaNode::ReadLocal(double time) {
  if (owner || m_take) return Compose(ReadTrs(time));
  // A user's node may have shear, or be of a kind that adds to its channels.
  const int take = Adaptor().GetTakeSerial();
  if (m_localRead.Holds(take, time)) return m_local;
  const MObject node = GetObject();
  m_localRead.Begin(take, node);
  const MMatrix host = Adaptor().ReadDriven(m_localRead.GetDrive(), time, [&node] {
    return MFnMatrixData(FindPlug(node, "matrix").asMObject()).matrix();
  });
  Matrix<double> local;
  std::copy(&host.matrix[0][0], &host.matrix[0][0] + 16, local.data());
  HostNode* const parent = ParentNode();
  if (!parent)
    local = Adaptor().GetSpace().WorldToRig(local);
  else if (!Inherits())
    local = parent->GetWorldPose(time).affineInverse() * Adaptor().GetSpace().WorldToRig(local);
  if (parent && !Inherits()) return local;
  m_local = local;
  m_localRead.Note(time);
  return local;
}

Matrix<double> CMayaNode::ReadWorld(double time) {
  auto* const parent = static_cast<CMayaNode*>(ParentNode());
  return parent ? parent->ReadWorld(time) * ReadLocal(time) : ReadLocal(time);
}

bool CMayaNode::HasOwnKeys() const {
  const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
  return std::any_of(plugs.begin(), plugs.end(),
                     [](const MPlug& plug) { return !CurveOf(plug).isNull(); });
}

PlugChange* CMayaNode::ChangeOf(const std::weak_ptr<PlugChange>& change) const {
  const std::shared_ptr<PlugChange> held = change.lock();
  if (m_moving) return held.get();
  const UndoManagement& undo = m_adaptor.GetUndo();
  return held && undo.isOpen() && held->GetBlock() == undo.openId() ? held.get() : nullptr;
}

void CMayaNode::WriteTrs(double time, const Trs& local, bool key) {
  LeaveTake();
  const ChannelFrame frame = ReadFrame();
  const HostChannels channels = ToChannels(time, local, frame, ReadChannels(time).angles);
  const Vector3<double>* const rows[] = {&channels.translation, &channels.angles, &channels.scale};
  const auto value = [&rows](std::size_t i) { return (*rows[i / 3])[static_cast<int>(i % 3)]; };
  const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
  if (!key) {
    for (std::size_t i = 0; i < 9; ++i) PutValue(plugs[i], value(i));
    return;
  }
  PlugChange* const change = ChangeOf(m_poseChange);
  const std::vector<MObject> curves = MakeCurves(plugs.data(), plugs.size(), change);
  for (std::size_t i = 0; i < 9; ++i)
    if (!curves[i].isNull())
      PutKey(curves[i], time, value(i), change ? change->GetKeys() : nullptr);
}

/// A curve for each plug that may have one; all are null where the host refuses.
std::vector<MObject> CMayaNode::MakeCurves(const MPlug* plugs, std::size_t count,
                                           PlugChange* change) {
  MDGModifier unnoted;
  const auto lacks = [](const MPlug& plug) { return CurveOf(plug).isNull(); };
  const bool any = std::any_of(plugs, plugs + count, lacks);
  MDGModifier& modifier = change && any ? change->AddCurves() : unnoted;
  std::vector<MObject> curves, made;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isNew = lacks(plugs[i]);
    curves.push_back(WhyNoKeysOn(plugs[i]).empty() ? CurveFor(plugs[i], modifier) : MObject());
    if (isNew && !curves.back().isNull()) made.push_back(curves.back());
  }
  if (!DoLogged(modifier, "make the curves of " + BareName(plugs->node()))) {
    modifier.undoIt();
    return std::vector<MObject>(count);
  }
  for (const MObject& curve : made) MFnAnimCurve(curve).setIsWeighted(false);
  return curves;
}

std::string CMayaNode::WhyNoKeys() const {
  const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
  for (std::size_t i = 0; i < plugs.size(); ++i) {
    const std::string why = WhyNoKeysOn(plugs[i]);
    if (!why.empty()) return std::string("its channel ") + kPoseChannels[i] + " " + why;
  }
  return {};
}

std::string CMayaNode::WriteKeys(double from, const std::vector<PoseSample>& take) {
  std::string problem = WhyNoKeys();
  if (!problem.empty()) return problem;
  const ChannelFrame frame = ReadFrame();
  Vector3<double> angles = ReadChannels(from).angles;
  std::vector<double> times;
  std::array<std::vector<double>, 9> values;
  times.reserve(take.size());
  for (auto& list : values) list.reserve(take.size());
  for (const PoseSample& sample : take) {
    const HostChannels channels = ToChannels(sample.time, sample.local, frame, angles);
    angles = channels.angles;
    times.push_back(sample.time);
    for (int i = 0; i < 3; ++i) {
      values[static_cast<std::size_t>(i)].push_back(channels.translation[i]);
      values[static_cast<std::size_t>(3 + i)].push_back(channels.angles[i]);
      values[static_cast<std::size_t>(6 + i)].push_back(channels.scale[i]);
    }
  }
  const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
  PlugChange* const change = ChangeOf(m_poseChange);
  const std::vector<MObject> curves = MakeCurves(plugs.data(), plugs.size(), change);
  if (curves[0].isNull()) return "the host refused to make its curves";
  for (std::size_t i = 0; i < 9; ++i)
    ReplaceKeys(curves[i], from, times, values[i], change ? change->GetKeys() : nullptr);
  KeepSamples(from, take);
  return {};
}

void CMayaNode::KeepSamples(double from, const std::vector<PoseSample>& take) {
  std::vector<PoseSample> kept;
  const auto before = m_kept ? FirstKept(*m_kept, from) - m_kept->begin() : 0;
  kept.reserve(static_cast<std::size_t>(before) + take.size());
  if (before > 0) kept.assign(m_kept->begin(), m_kept->begin() + before);
  kept.insert(kept.end(), take.begin(), take.end());
  m_kept = std::make_shared<const std::vector<PoseSample>>(std::move(kept));
}

// --- undo ---

Exchange CMayaNode::SavePose() {
  const std::array<MPlug, 9> plugs = PosePlugs(GetObject());
  auto change =
      std::make_shared<PlugChange>(plugs.data(), plugs.size(), m_adaptor.GetUndo().openId());
  m_poseChange = change;
  return [this, change, kept = m_kept]() mutable {
    if (!Exists()) return;
    change->Exchange();
    std::swap(m_kept, kept);
  };
}

Exchange CMayaNode::SavePlace() {
  auto place = std::make_shared<Reparenting>();
  m_reparenting = place;
  return [this, place, pose = SavePose(), block = m_adaptor.GetUndo().openId()]() mutable {
    if (!IsValid()) return;
    // The pose follows where the node goes, and goes ahead of it where it came from.
    if (place->undone) RedoLogged(place->move, block);
    pose();
    if (!place->undone) UndoLogged(place->move, block);
    place->undone = !place->undone;
    std::swap(m_instance, place->instance);
  };
}

std::vector<double> CMayaNode::KeyTimes() const {
  std::set<double> times;
  for (const MPlug& plug : PosePlugs(GetObject())) {
    const MObject curve = CurveOf(plug);
    if (curve.isNull()) continue;
    const MFnAnimCurve keys(curve);
    for (unsigned i = 0; i < keys.numKeys(); ++i) times.insert(ToSeconds(keys.time(i)));
  }
  return {times.begin(), times.end()};
}

/// Below an instance the node stands below all others of it, too.
unsigned CMayaNode::InstanceBelow(HostNode* parent) const {
  MDagPathArray paths;
  MDagPath::getAllPathsTo(GetObject(), paths);
  for (unsigned i = 0; parent && i < paths.length(); ++i) {
    MDagPath above = paths[i];
    above.pop();
    if (above == static_cast<CMayaNode*>(parent)->GetPath()) return i;
  }
  return 0;
}

bool CMayaNode::PutUnder(HostNode* parent) {
  for (HostNode* above = parent; above; above = static_cast<CMayaNode*>(above)->ParentNode())
    if (above == this) return false;
  LeaveTake();
  std::vector<double> times = KeyTimes();
  const bool keyed = !times.empty();
  if (keyed && !WhyNoKeys().empty()) return false;
  if (!keyed) times.push_back(m_adaptor.GetCurrentTime());
  std::vector<PoseSample> poses;
  for (const double time : times) {
    Trs pose = Decompose(GetWorldPose(time));
    if (parent && !PoseUnder(parent->GetWorldPose(time), GetWorldPose(time), pose)) return false;
    poses.push_back({time, pose});
  }
  const std::shared_ptr<Reparenting> noted = m_reparenting.lock();
  Reparenting unnoted;
  MDagModifier& move = noted ? noted->move : unnoted.move;
  const std::string own = QuoteMel(GetPath().fullPathName().asUTF8());
  const std::string line =
      parent ? "parent " + own + " " +
                   QuoteMel(static_cast<CMayaNode*>(parent)->GetPath().fullPathName().asUTF8())
             : "parent -world " + own;
  move.commandToExecute(line.c_str());
  if (!DoLogged(move, "move " + GetSceneName() + " in the hierarchy")) return false;
  (noted ? noted->instance : unnoted.instance) = std::exchange(m_instance, InstanceBelow(parent));
  m_moving = noted != nullptr;
  if (keyed)
    WriteKeys(times.front(), poses);
  else
    WriteTrs(times.front(), poses.front().local, false);
  m_moving = false;
  return true;
}

// --- a take ---

void CMayaNode::EnterTake() {
  if (m_take || !IsValid()) return;
  auto take = std::make_unique<TakeChannels>(GetObject());
  take->frame = ReadFrame();
  take->inherits = Inherits();
  take->parent = ParentNode();
  m_take = std::move(take);
}

void CMayaNode::LeaveTake() {
  if (Exists())
    m_take.reset();
  else
    AbandonTake();
}

void CMayaNode::AbandonTake() {
  if (m_take) m_take->pose.Abandon();
  for (std::size_t i = 0; m_take && i < m_take->lens.size(); ++i)
    if (m_take->lens[i]) m_take->lens[i]->Abandon();
  m_take.reset();
}

void CMayaNode::ForgetShapes() {
  for (TakeRead* read : {&m_localRead, &m_meshRead, &m_curveRead}) read->Forget();
}

void CMayaNode::ShowTake() {
  ShowTakePose();
  if (IsValid()) ShowTakeLens();
}

void CMayaNode::ShowTakePose() {
  if (!IsValid() || GetRecorded().empty()) return;
  const PoseSample& latest = GetRecorded().back();
  if (m_take && m_shownTime == latest.time && m_shownPose == latest.local) return;
  EnterTake();
  m_shownTime = latest.time;
  m_shownPose = latest.local;
  const ChannelFrame frame = ReadFrame();
  const HostChannels channels = ToChannels(latest.time, latest.local, frame, m_shownAngles);
  m_shownAngles = channels.angles;
  const Vector3<double>&t = channels.translation, &a = channels.angles, &s = channels.scale;
  m_take->pose.Show({t.x, t.y, t.z, a.x, a.y, a.z, s.x, s.y, s.z});
}

}  // namespace orv::rws::adaptor::maya
