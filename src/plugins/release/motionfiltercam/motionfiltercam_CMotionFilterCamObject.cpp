#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"

#include <cmath>
#include <utility>

#include "core/interface/CNode.h"
#include "plugins/common/History.h"
#include "util/FollowFilters.h"
#include "util/FrameGrid.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

using Transform = util::QTransform<double>;
using Settings = CMotionFilterCamObject::Settings;

namespace {

const char kChunkName[] = "MotionFilterCamDataChunk";
const char kHistoryKey[] = "ancMotionFilterCamNodeqTransMem";
const char kSmoothingTip[] =
    "This factor determines how much the camera will smooth out rebounces at a stop";
constexpr double kMax = 1e18;
/// What a filter that diverges may reach (m, rad/s): a scene has to hold its poses.
constexpr double kFarthest = 1e12;
/// Steps that the rotation's filter takes in a frame.
constexpr double kRotationSteps = 10.0;

/// The lenses that the nodes were made with, as they lie in the save data.
struct sDataChunkSaveStruct {
  LensValues attachedCam;
  LensValues followCam;
};
static_assert(sizeof(sDataChunkSaveStruct) == 32, "the size is part of the format");

using Row = ParameterRow<Settings>;
constexpr Row kRows[] = {
    Row::Group("Motion Filter Parameters", "How the FollowCam follows the AttachedCam"),
    Row::Flag(6, "cMotionFilterCamNode.bFixateTranslations", "Fixate Translations",
              "Fixates the camera's translations, ie no filtering", &Settings::bFixateTranslations),
    Row::Number(0, "cMotionFilterCamNode.translationalResponseFactor",
                "Translation Response Factor",
                "This factor determines how fast the camera should react to changes in position",
                &Settings::translationalResponseFactor, {0.0, kMax, 0.01})
        .AsInput(),
    Row::Number(2, "cMotionFilterCamNode.translationalSmoothingFactor",
                "Translation Smoothing Factor", kSmoothingTip,
                &Settings::translationalSmoothingFactor, {0.0, kMax, 0.01})
        .AsInput(),
    Row::Number(4, "cMotionFilterCamNode.translationalMaxVel", "Translation Max Velocity",
                "This factor determines the maximum translation velocity of the camera",
                &Settings::translationalMaxVel, {0.0, kMax, 0.01})
        .AsInput(),
    Row::Flag(7, "cMotionFilterCamNode.bFixateRotations", "Fixate Rotations",
              "Fixates the camera's rotations, ie no filtering", &Settings::bFixateRotations),
    Row::Number(1, "cMotionFilterCamNode.rotationalResponseFactor", "Rotation Response Factor",
                "This factor determines how fast the camera should react to changes in rotation",
                &Settings::rotationalResponseFactor, {0.0, kMax, 0.01})
        .AsInput(),
    Row::Number(3, "cMotionFilterCamNode.rotationalSmoothingFactor", "Rotation Smoothing Factor",
                kSmoothingTip, &Settings::rotationalSmoothingFactor, {0.0, kMax, 0.01})
        .AsInput(),
    Row::Number(5, "cMotionFilterCamNode.rotationalMaxVel", "Rotation Max Velocity",
                "This factor determines the maximum rotation velocity of the camera",
                &Settings::rotationalMaxVel, {0.0, kMax, 0.01})
        .AsInput(),
    Row::EndGroup(),
    Row::Button(kReInitialize, "The next take starts without the velocity of the last"),
    Row::Group("Cuts", "What happens when the AttachedCam jumps"),
    JumpThreshold<Settings>("cMotionFilterCamNode.jumpThreshold"),
    Row::EndGroup(),
};

/// Position or rotation, filtered in `rate` explicit steps a second, each h long. The eigenvalues
/// of a step, [[1, h], [-h R, 1 - h² R - h S]], lie within the unit circle for R < 4/h² - 2 S/h.
struct FilterHalf {
  const char* name;
  double response, smoothing, rate;

  bool IsStable() const {
    return response == 0.0 || response < 2.0 * rate * (2.0 * rate - smoothing);
  }
  /// What is too high for `camera` in one that is not stable, and what it must stay below.
  std::string Excess(const std::string& camera, double frameRate) const {
    const double most = 4.0 * rate * rate;  // response without smoothing
    if (smoothing < 2.0 * rate || response >= most) {
      const double with = smoothing < 2.0 * rate ? smoothing : 0.0;
      return Told(camera, "Response", response, frameRate, "Smoothing", with,
                  most - 2.0 * rate * with);
    }
    return Told(camera, "Smoothing", smoothing, frameRate, "Response", response,
                (most - response) / (2.0 * rate));
  }

 private:
  std::string Told(const std::string& camera, const std::string& factor, double value,
                   double frameRate, const std::string& other, double with, double limit) const {
    return std::string(name) + ' ' + factor + " Factor " + util::shortText(value) +
           " is too high at " + util::shortText(frameRate) + " frames per second: " + camera +
           " shakes itself apart. With a " + other + " Factor of " + util::shortText(with) +
           " it is stable below " +
           util::shortText(limit < 1.0 ? limit : std::floor(limit * 100.0) / 100.0) +
           ". Lower it, or simulate at a higher frame rate.";
  }
};

util::Vector3<double> AngularVelocity(const Transform& memory) {
  return {memory.rotation.x, memory.rotation.y, memory.rotation.z};
}

}  // namespace

CMotionFilterCamObject::CMotionFilterCamNode::CMotionFilterCamNode(CMotionFilterCamObject& rig)
    : FollowCamNode(rig), m_rig(rig) {}

void CMotionFilterCamObject::CMotionFilterCamNode::Step(double time) {
  double dt = Core().GetFrameDuration();
  const double before = util::frameBefore(time, dt);
  Transform current = Transform::fromMatrix(ReadMatrix(before));
  const Transform target = Transform::fromMatrix(m_rig.m_attachedCam.ReadMatrix(time));
  if (const auto cut = FindCut(m_rig.m_attachedCam, before, target, settings.jumpThreshold)) {
    current = cut->Carried(current);
    linearVelocity = cut->Turn().rotate(linearVelocity);
    dt = 0.0;
  }
  const Transform last = current;

  if (settings.bFixateTranslations)
    current.position = target.position;
  else
    util::SpringFollowPosition(
        current.position, linearVelocity, target.position, settings.translationalResponseFactor,
        settings.translationalSmoothingFactor, settings.translationalMaxVel, dt);
  if (settings.bFixateRotations)
    current.rotation = target.rotation;
  else
    util::SpringFollowRotation(current.rotation, angularVelocity, target.rotation,
                               settings.rotationalResponseFactor,
                               settings.rotationalSmoothingFactor, settings.rotationalMaxVel, dt);
  if (!(current.position.length() < kFarthest)) {
    current.position = last.position;
    linearVelocity = {};
  }
  if (!(angularVelocity.length() < kFarthest)) {
    current.rotation = last.rotation;
    angularVelocity = {};
  }
  m_rig.StoreVelocities(time);
  WritePose(time, current);
}

CMotionFilterCamObject::CMotionFilterCamObject(const CreationRecord& record)
    : FollowRig(record, m_followCam), m_followCam(*this) {}

void CMotionFilterCamObject::Start(double time) {
  m_toldTranslation = m_toldRotation = false;
  m_followCam.TakeScale(time);
  auto& history = m_memory.history;
  PushVariableUndo(*m_pInterface, m_memory);
  if (m_memory.bFirstTime) {
    m_followCam.linearVelocity = {};
    // Only the linear velocity: a camera that spins at Re-Initialize goes on spinning. What it had
    // last is the latest key, in this run of the program as in any other.
    m_followCam.angularVelocity =
        AngularVelocity(history.samples.empty() ? Transform() : history.samples.back().value);
  } else {
    const Transform memory = history.value(time);
    m_followCam.linearVelocity = memory.position;
    m_followCam.angularVelocity = AngularVelocity(memory);
  }
  CutHistory(history, util::frameAfter(time, m_pInterface->GetFrameDuration()));
  m_memory.bFirstTime = false;
  // A later start at this time finds the same velocities, also where this one was a first time.
  StoreVelocities(time);
}

void CMotionFilterCamObject::StoreVelocities(double time) {
  const util::Vector3<double>& w = m_followCam.angularVelocity;
  m_memory.history.set(time, Transform{m_followCam.linearVelocity, {w.x, w.y, w.z, 1.0}});
}

/// Tells, once a take, of each half of the filter that diverges with what its factors have come to.
void CMotionFilterCamObject::CheckStability() {
  const Settings& s = m_followCam.settings;
  const double rate = m_pInterface->GetFrameRate();
  const FilterHalf translation{"Translation", s.translationalResponseFactor,
                               s.translationalSmoothingFactor, rate};
  const FilterHalf rotation{"Rotation", s.rotationalResponseFactor, s.rotationalSmoothingFactor,
                            kRotationSteps * rate};
  const auto tell = [&](const FilterHalf& half, bool& told) {
    if (std::exchange(told, true)) return;
    std::string camera = "the FollowCam";
    if (CNode* const node = m_followCam.GetNode()) node->Extension(kReadName, &camera, nullptr);
    Tell("Warning", half.Excess(camera, rate));
  };
  if (!s.bFixateTranslations && !translation.IsStable()) tell(translation, m_toldTranslation);
  if (!s.bFixateRotations && !rotation.IsStable()) tell(rotation, m_toldRotation);
}

void CMotionFilterCamObject::Step(double time) {
  CheckStability();
  FollowRig::Step(time);
}

int CMotionFilterCamObject::Define() {
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(kRows, m_followCam.settings));
  m_pInterface->EndConfig();
  return 0;
}

SaveState CMotionFilterCamObject::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (state != SaveState::kGood) return state;
  sDataChunkSaveStruct lenses{m_attachedCam.lens, m_followCam.lens};
  FollowMemory memory;
  Settings settings = m_followCam.settings;
  SaveReader reader(chunk);
  reader.ReadStruct("sDataChunkSaveStruct", lenses);
  reader.Read("bFirstTime", memory.bFirstTime);
  reader.ReadHistory(kHistoryKey, memory.history);
  LoadParameters(reader, ParametersOf(kRows, settings));
  if (!lenses.attachedCam.IsPossible() || !lenses.followCam.IsPossible()) reader.Refuse();
  if (!reader.IsGood()) return SaveState::kDamaged;
  m_attachedCam.lens = lenses.attachedCam;
  m_followCam.lens = lenses.followCam;
  m_memory = memory;
  m_followCam.settings = settings;
  return state;
}

int CMotionFilterCamObject::Store() {
  util::DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  chunk.addValue("sDataChunkSaveStruct",
                 sDataChunkSaveStruct{m_attachedCam.lens, m_followCam.lens});
  chunk.addValue("bFirstTime", m_memory.bFirstTime);
  AddHistory(chunk, kHistoryKey, m_memory.history);
  SaveParameters(chunk, ParametersOf(kRows, m_followCam.settings));
  return StoreSaveChunk(*m_pInterface, chunk);
}

CCamera* CMotionFilterCamPlugin::CreateObject(const CreationRecord& record) {
  return new CMotionFilterCamObject(record);
}

std::string CMotionFilterCamPlugin::GetDescription() {
  return "Orvel MotionFilterCam consists of two cameras. The AttachedCam is attached to an "
         "animated "
         "object/camera and the FollowCam will follow the AttachedCam in a smooth or bouncy "
         "fashion "
         "by filtering out any sudden or turbulent movements. It is used for both smooth motion as "
         "well as bouncy action.";
}

}  // namespace orv::rws::addon
