#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"

#include <cmath>

#include "plugins/common/FollowCut.h"
#include "plugins/common/FrameGrid.h"
#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/ReplayedEvent.h"
#include "util/FollowFilters.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Transform = util::QTransform<double>;
using Quat = util::Quat<double>;

namespace {

const char kChunkName[] = "SteadyCamDataChunk";
const char kReInitialize[] = "Re-Initialize";
const char kJumpThresholdKey[] = "cSteadyCamNodejumpThreshold";
constexpr double kMinFactor = 1e-08;
constexpr double kMaxFactor = 100.0;

/// Lenses and hide flags, as they lie in the save data.
struct sDataChunkSaveStruct {
  LensValues attachedCam;
  LensValues followCam;
  unsigned char hideAttachedCam;
  unsigned char hideFollowCam;
  unsigned char unused[6];
};
static_assert(sizeof(sDataChunkSaveStruct) == 40, "the size is part of the format");

double Difference(const Quat& a, const Quat& b) {
  return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z) + std::abs(a.w - b.w);
}

/// Picks the sign of `q` (the same rotation) that lies on the side of `reference`.
void TakeSide(Quat& q, const Quat& reference) {
  if (Difference(reference, q) >= 2.0) q = -q;
}

}  // namespace

CSteadyCamObject::CSteadyCamNode::CSteadyCamNode(CSteadyCamObject& rig)
    : RigCameraNode(rig, "FollowCam", nullptr), m_rig(rig) {
  SetWritten();
}

void CSteadyCamObject::CSteadyCamNode::Step(double time) {
  double dt = Core().GetFrameDuration();
  const double before = FrameBefore(time, dt);
  Transform current = Transform::fromMatrix(ReadMatrix(before));
  Transform target = Transform::fromMatrix(m_rig.m_attachedCam.ReadMatrix(time));
  if (const auto cut = FindCut(m_rig.m_attachedCam, before, target, settings.jumpThreshold)) {
    current = cut->Carried(current);
    firstStage = cut->Carried(firstStage);
    dt = 0.0;
  }

  if (target.rotation.w < 0.0) target.rotation = -target.rotation;
  TakeSide(firstStage.rotation, target.rotation);
  TakeSide(current.rotation, firstStage.rotation);

  const double positionFactor = settings.translationalResponseFactor;
  util::ExpFollowVector(firstStage.position, target.position, positionFactor, dt);
  util::ExpFollowVector(current.position, firstStage.position, positionFactor, dt);
  const double rotationFactor = settings.rotationalResponseFactor;
  util::ExpFollowQuaternion(firstStage.rotation, target.rotation, rotationFactor, dt);
  util::ExpFollowQuaternion(current.rotation, firstStage.rotation, rotationFactor, dt);
  m_rig.m_memory.ancSteadyCamNodeqTransMem.set(time, firstStage);

  Matrix pose = current.toMatrix();
  pose.setRowLengths(scale);
  WriteKey(time, pose);
}

CSteadyCamObject::CSteadyCamObject(const CreationRecord& record)
    : CCamera(record),
      m_attachedCam(*this),
      m_followCam(*this),
      m_hideAttachedCam(m_hideModes.Add("Hide AttachedCam", "Hides the AttachedCam.",
                                        HideModes::kAlways, {&m_attachedCam})),
      m_hideFollowCam(m_hideModes.Add("Hide FollowCam", "Hides the FollowCam.", HideModes::kAlways,
                                      {&m_followCam})) {}

void CSteadyCamObject::Start(double time) {
  m_followCam.scale = ScaleOf(m_followCam.ReadMatrix(time));
  auto& history = m_memory.ancSteadyCamNodeqTransMem;
  PushVariableUndo(*m_pInterface, m_memory);
  m_followCam.firstStage = history.value(time);
  if (m_memory.bFirstTime)
    m_followCam.firstStage = Transform::fromMatrix(m_attachedCam.ReadMatrix(time));
  CutHistory(history, FrameAfter(time, m_pInterface->GetFrameDuration()));
  m_memory.bFirstTime = false;
  // A later start at this time finds the same first stage, also where this one was a first time.
  history.set(time, m_followCam.firstStage);
  m_hideModes.Start();
}

void CSteadyCamObject::Stop() {
  m_hideModes.Stop();
}

void CSteadyCamObject::Step(double time) {
  m_attachedCam.Step(time);
  m_followCam.Step(time);
}

void CSteadyCamObject::Forget(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  if (ForgetTake(m_memory.ancSteadyCamNodeqTransMem, time, dt)) m_memory.bFirstTime = true;
}

void CSteadyCamObject::Update(double /*time*/) {
  m_pInterface->RefreshConfig();
}

int CSteadyCamObject::Define() {
  Settings& s = m_followCam.settings;
  m_pInterface->BeginConfig();
  m_hideModes.Define(*m_pInterface, *this);
  m_pInterface->BeginGroup("Camera Parameters", "How the FollowCam follows the AttachedCam");
  m_pInterface->AddSpinner(
      "Translation Response Factor",
      "This factor determines how fast the camera should react to changes in position",
      &s.translationalResponseFactor, kMinFactor, kMaxFactor, 0.001, 3, true, this);
  m_pInterface->AddSpinner(
      "Rotation Response Factor",
      "This factor determines how fast the camera should react to changes in rotation",
      &s.rotationalResponseFactor, kMinFactor, kMaxFactor, 0.001, 3, true, this);
  m_pInterface->EndGroup();
  m_pInterface->AddButton(kReInitialize,
                          "The next take starts to follow from the AttachedCam itself", this);
  DefineCuts(*m_pInterface, s.jumpThreshold, *this);
  m_pInterface->EndConfig();
  return 0;
}

int CSteadyCamObject::Create() {
  return m_attachedCam.Create() != 0 || m_followCam.Create() != 0 ? 1 : 0;
}

int CSteadyCamObject::Restore() {
  // Without its AttachedCam the rig goes on, towards the origin; without its FollowCam it is none.
  m_attachedCam.Find();
  if (!m_followCam.Find()) return 1;
  if (LoadBlob() == SaveState::kDamaged) return 1;
  m_hideModes.Restore();
  return 0;
}

SaveState CSteadyCamObject::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (state != SaveState::kGood) return state;
  sDataChunkSaveStruct display{
      m_attachedCam.lens, m_followCam.lens, m_hideAttachedCam.on, m_hideFollowCam.on, {}};
  Memory memory;
  Settings settings = m_followCam.settings;
  SaveReader reader(chunk);
  reader.ReadStruct("sDataChunkSaveStruct", display);
  reader.Read("bFirstTime", memory.bFirstTime);
  reader.ReadHistory("ancSteadyCamNodeqTransMem", memory.ancSteadyCamNodeqTransMem);
  // Unlike those of other rigs these two keys have no point: scenes hold them like this.
  reader.Read("cSteadyCamNodetranslationalResponseFactor", settings.translationalResponseFactor,
              kMinFactor, kMaxFactor);
  reader.Read("cSteadyCamNoderotationalResponseFactor", settings.rotationalResponseFactor,
              kMinFactor, kMaxFactor);
  reader.Read(kJumpThresholdKey, settings.jumpThreshold, 0.0, kMostJump);
  if (display.hideAttachedCam > 1 || display.hideFollowCam > 1) reader.Refuse();
  if (!display.attachedCam.IsPossible() || !display.followCam.IsPossible()) reader.Refuse();
  if (!reader.IsGood()) return SaveState::kDamaged;
  m_attachedCam.lens = display.attachedCam;
  m_followCam.lens = display.followCam;
  m_hideAttachedCam.on = display.hideAttachedCam != 0;
  m_hideFollowCam.on = display.hideFollowCam != 0;
  m_memory = memory;
  m_followCam.settings = settings;
  return state;
}

int CSteadyCamObject::Store() {
  util::DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  chunk.addValue(
      "sDataChunkSaveStruct",
      sDataChunkSaveStruct{
          m_attachedCam.lens, m_followCam.lens, m_hideAttachedCam.on, m_hideFollowCam.on, {}});
  chunk.addValue("bFirstTime", m_memory.bFirstTime);
  AddHistory(chunk, "ancSteadyCamNodeqTransMem", m_memory.ancSteadyCamNodeqTransMem);
  chunk.addValue("cSteadyCamNodetranslationalResponseFactor",
                 m_followCam.settings.translationalResponseFactor);
  chunk.addValue("cSteadyCamNoderotationalResponseFactor",
                 m_followCam.settings.rotationalResponseFactor);
  chunk.addValue(kJumpThresholdKey, m_followCam.settings.jumpThreshold);
  return StoreSaveChunk(*m_pInterface, chunk);
}

void CSteadyCamObject::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  const ReplayedEvent event(name);
  // Undo and redo never re-initialise.
  if (!event.IsReplay() && event.label == kReInitialize) m_memory.bFirstTime = true;
}

CCamera* CSteadyCamPlugin::CreateObject(const CreationRecord& record) {
  return new CSteadyCamObject(record);
}

std::string CSteadyCamPlugin::GetDescription() {
  return "Orvel SoftMotionCam consists of two cameras. The AttachedCam is attached to an animated "
         "object/camera and the FollowCam will follow the AttachedCam in a smooth fashion by "
         "filtering out any sudden or turbulent movements. Therefore it can be used as a smooth "
         "follow camera or smooth out spline controlled cameras.";
}

}  // namespace orv::rws::addon
