#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"

#include <cmath>

#include "plugins/common/History.h"
#include "util/FollowFilters.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Transform = util::QTransform<double>;
using Quat = util::Quat<double>;
using Settings = CSteadyCamObject::Settings;

namespace {

const char kChunkName[] = "SteadyCamDataChunk";
const char kHistoryKey[] = "ancSteadyCamNodeqTransMem";
constexpr double kMinFactor = 1e-08;
constexpr double kMaxFactor = 100.0;

/// Lenses and hide boxes, as they lie in the save data.
struct sDataChunkSaveStruct {
  LensValues attachedCam;
  LensValues followCam;
  unsigned char hideAttachedCam;
  unsigned char hideFollowCam;
  unsigned char unused[6];
};
static_assert(sizeof(sDataChunkSaveStruct) == 40, "the size is part of the format");

using Row = ParameterRow<Settings>;
constexpr Row kRows[] = {
    Row::Group("General Modes", "What is shown"),
    Row::Flag(kNotSaved, nullptr, "Hide AttachedCam", "Hides the AttachedCam.",
              &Settings::hideAttachedCam, Hides::kAlways),
    Row::Flag(kNotSaved, nullptr, "Hide FollowCam", "Hides the FollowCam.",
              &Settings::hideFollowCam, Hides::kAlways),
    Row::EndGroup(),
    Row::Group("Camera Parameters", "How the FollowCam follows the AttachedCam"),
    // Unlike those of other rigs these keys have no point: scenes hold them like this.
    Row::Number(0, "cSteadyCamNodetranslationalResponseFactor", "Translation Response Factor",
                "This factor determines how fast the camera should react to changes in position",
                &Settings::translationalResponseFactor, {kMinFactor, kMaxFactor, 0.001})
        .AsInput(),
    Row::Number(1, "cSteadyCamNoderotationalResponseFactor", "Rotation Response Factor",
                "This factor determines how fast the camera should react to changes in rotation",
                &Settings::rotationalResponseFactor, {kMinFactor, kMaxFactor, 0.001})
        .AsInput(),
    Row::EndGroup(),
    Row::Button(kReInitialize, "The next take starts to follow from the AttachedCam itself"),
    Row::Group("Cuts", "What happens when the AttachedCam jumps"),
    JumpThreshold<Settings>("cSteadyCamNodejumpThreshold"),
    Row::EndGroup(),
};

double Difference(const Quat& a, const Quat& b) {
  return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.z - b.z) + std::abs(a.w - b.w);
}

/// Picks the sign of `q` (the same rotation) that lies on the side of `reference`.
void TakeSide(Quat& q, const Quat& reference) {
  if (Difference(reference, q) >= 2.0) q = -q;
}

}  // namespace

CSteadyCamObject::CSteadyCamNode::CSteadyCamNode(CSteadyCamObject& rig)
    : FollowCamNode(rig), m_rig(rig) {}

void CSteadyCamObject::CSteadyCamNode::Step(double time) {
  double dt = Core().GetFrameDuration();
  const double before = util::frameBefore(time, dt);
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
  m_rig.m_memory.history.set(time, firstStage);
  WritePose(time, current);
}

CSteadyCamObject::CSteadyCamObject(const CreationRecord& record)
    : FollowRig(record, m_followCam), m_followCam(*this) {
  m_hideModes.SetNodes(m_followCam.settings.hideAttachedCam, {&m_attachedCam});
  m_hideModes.SetNodes(m_followCam.settings.hideFollowCam, {&m_followCam});
}

void CSteadyCamObject::Start(double time) {
  m_followCam.TakeScale(time);
  auto& history = m_memory.history;
  PushVariableUndo(*m_pInterface, m_memory);
  m_followCam.firstStage = history.value(time);
  if (m_memory.bFirstTime)
    m_followCam.firstStage = Transform::fromMatrix(m_attachedCam.ReadMatrix(time));
  CutHistory(history, util::frameAfter(time, m_pInterface->GetFrameDuration()));
  m_memory.bFirstTime = false;
  // A later start at this time finds the same first stage, also where this one was a first time.
  history.set(time, m_followCam.firstStage);
  m_hideModes.Start();
}

void CSteadyCamObject::Stop() {
  m_hideModes.Stop();
}

int CSteadyCamObject::Define() {
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(kRows, m_followCam.settings));
  m_pInterface->EndConfig();
  return 0;
}

SaveState CSteadyCamObject::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (state != SaveState::kGood) return state;
  Settings settings = m_followCam.settings;
  sDataChunkSaveStruct display{
      m_attachedCam.lens, m_followCam.lens, settings.hideAttachedCam, settings.hideFollowCam, {}};
  FollowMemory memory;
  SaveReader reader(chunk);
  reader.ReadStruct("sDataChunkSaveStruct", display);
  reader.Read("bFirstTime", memory.bFirstTime);
  reader.ReadHistory(kHistoryKey, memory.history);
  LoadParameters(reader, ParametersOf(kRows, settings));
  if (display.hideAttachedCam > 1 || display.hideFollowCam > 1) reader.Refuse();
  if (!display.attachedCam.IsPossible() || !display.followCam.IsPossible()) reader.Refuse();
  if (!reader.IsGood()) return SaveState::kDamaged;
  m_attachedCam.lens = display.attachedCam;
  m_followCam.lens = display.followCam;
  settings.hideAttachedCam = display.hideAttachedCam != 0;
  settings.hideFollowCam = display.hideFollowCam != 0;
  m_memory = memory;
  m_followCam.settings = settings;
  return state;
}

int CSteadyCamObject::Store() {
  Settings& s = m_followCam.settings;
  util::DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  chunk.addValue("sDataChunkSaveStruct",
                 sDataChunkSaveStruct{
                     m_attachedCam.lens, m_followCam.lens, s.hideAttachedCam, s.hideFollowCam, {}});
  chunk.addValue("bFirstTime", m_memory.bFirstTime);
  AddHistory(chunk, kHistoryKey, m_memory.history);
  SaveParameters(chunk, ParametersOf(kRows, s));
  return StoreSaveChunk(*m_pInterface, chunk);
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
