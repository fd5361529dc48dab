// The save data of a car.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "plugins/common/SaveChunk.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "util/xml/Element.h"
#include "util/xml/Tag.h"

namespace orv::rws::addon {

namespace {

const char kChunkName[] = "CarCamDataChunk";
/// What this writes. Each older version that is told apart below changed the meaning of a field.
constexpr int kVersion = 8148;
constexpr int kFirstVersion = 100;
constexpr int kTurnBaseVersion = 116;       ///< the turn base counts from the back wheels
constexpr int kFollowVersion = 122;         ///< autonomous strength and ignore sphere are saved
constexpr int kTirePressureVersion = 8135;  ///< from here to the version before ours: a snap
constexpr int kAccelerationVersion = 8136;  ///< the acceleration is limited
constexpr int kStoredGroundVersion = 8143;  ///< a ground mesh may be stored

/// The fields that every version has, as they lie in the save data.
struct sDataChunkSaveStruct {
  unsigned char flags[8];  ///< kFlagOrder
  double maxima[kChannelCount];
  double responseFactors[kChannelCount];
  double scale, dHeight;
  double fStiffness, fStiffnessBack, fDamping;
  double fGravity, dMassMult, fRelMaxBumperLen, dWheelRadiusMult, fSurfaceEdgeResponseFactor;
  double dTurnBase;
  CarWheelGeometry wheels[kWheelCount];
};
static_assert(sizeof(sDataChunkSaveStruct) == 368, "the size is part of the format");

/// A number of the settings that has a field of its own.
struct Field {
  const char* key;
  double CarSettings::*member;
  double min, max;
};
constexpr Field kFields[] = {
    {"dInitialVelocity", &CarSettings::dInitialVelocity, 0, 1000},
    {"dVelocityConversionMult", &CarSettings::dVelocityConversionMult, 0.001, 1e7},
    {"dFollowAccelerationMult", &CarSettings::dFollowAccelerationMult, 0.01, 30},
    {"dFollowAccRespFact", &CarSettings::dFollowAccRespFact, 0.0001, 1},
    {"dAutoSteeringValueRespFact", &CarSettings::dAutoSteeringValueRespFact, 0.0001, 1},
    {"dReverseMaxVelMult", &CarSettings::dReverseMaxVelMult, 0, 1000},
    {"dIgnoreSphereRadius", &CarSettings::dIgnoreSphereRadius, 0.001, 100},
    {"dVelRelMaxSteeringChangeVel", &CarSettings::dVelRelMaxSteeringChangeVel, 0.001, 100},
    {"dSpeedDependentTurnRadiusReductionFactor",
     &CarSettings::dSpeedDependentTurnRadiusReductionFactor, 0, 10},
    {"dSteeringNoise", &CarSettings::dSteeringNoise, 0, 1000},
    {"dSteeringWheelRotMult", &CarSettings::dSteeringWheelRotMult, 0, 1000},
    {"fDampingBack", &CarSettings::fDampingBack, 0, 10000},
    {"dMaximumForwardTiltAngle", &CarSettings::dMaximumForwardTiltAngle, 0, 1.5},
    {"dMaximumSideTiltAngle", &CarSettings::dMaximumSideTiltAngle, 0, 1.5},
    {"dBoosterStiffnessMult", &CarSettings::dBoosterStiffnessMult, 0, 10},
    {"dSkiddingOffset", &CarSettings::dSkiddingOffset, 0, 100},
    {"dSkiddingReleaseThresh", &CarSettings::dSkiddingReleaseThresh, 0, 100},
    {"dSkiddingReleaseRespFact", &CarSettings::dSkiddingReleaseRespFact, 1e-8, 1},
    {"dGravelShakeOffset", &CarSettings::dGravelShakeOffset, 0, 100},
    {"dGravelRoughness", &CarSettings::dGravelRoughness, 0, 1},
    {"dForceOffset", &CarSettings::dForceOffset, 0, 10000},
    {"dSkidBrakeStopFactor", &CarSettings::dSkidBrakeStopFactor, 1e-8, 100},
    {"dSkidBrakeRotBrakeMult", &CarSettings::dSkidBrakeRotBrakeMult, 0, 1000},
    {"dBurnoutShake", &CarSettings::dBurnoutShake, 0, 100},
    {"dBurnoutTiltForce", &CarSettings::dBurnoutTiltForce, 0, 100},
    {"dBurnoutFadeoutFactor", &CarSettings::dBurnoutFadeoutFactor, 0, 1},
    {"dWorldAvoidanceSphereRadius", &CarSettings::dWorldAvoidanceSphereRadius, 0, 2e9},
    {"dMaximumSpringChangeVelocityRel", &CarSettings::dMaximumSpringChangeVelocityRel, 0, 1000},
    {"dDegsPerRay", &CarSettings::dDegsPerRay, 0.1, 89},
    {"dGasPedalMaxRateOfChange", &CarSettings::dGasPedalMaxRateOfChange, 0.001, 1e6},
    {"dJumpGravity", &CarSettings::dJumpGravity, 0, 10000},
};

/// The flags of the fixed struct, in its order, and those that came later.
constexpr bool CarSettings::*kFlagOrder[8] = {&CarSettings::bSaveDynamicData,
                                              &CarSettings::bKeyframeOnlyEssential,
                                              &CarSettings::bAutonomousMode,
                                              &CarSettings::bFixateWheelBottomNodes,
                                              &CarSettings::bUseReverseAsAbsBrake,
                                              &CarSettings::bAddRaysAtWheelEdges,
                                              &CarSettings::bMoveWheelCenterNodeToGroundHitPoint,
                                              &CarSettings::bAlignWheelCenterToGroundNormal};

struct Flag {
  const char* key;
  bool CarSettings::*member;
};
constexpr Flag kFlags[] = {{"bGroundReleaseOn", &CarSettings::bGroundReleaseOn},
                           {"cCarCambGravityOn", &CarSettings::cCarCambGravityOn},
                           {"bUseStaticMesh", &CarSettings::bUseStaticMesh},
                           {"bStoreGroundMeshData", &CarSettings::bStoreGroundMeshData}};

sDataChunkSaveStruct Pack(const CarSettings& s, const CarGeometry& geometry) {
  sDataChunkSaveStruct out{};
  for (std::size_t i = 0; i < 8; ++i) out.flags[i] = s.*kFlagOrder[i];
  for (std::size_t i = 0; i < kChannelCount; ++i) {
    out.maxima[i] = s.channels[i].maximum;
    out.responseFactors[i] = s.channels[i].responseFactor;
  }
  out.scale = geometry.scale;
  out.dHeight = geometry.dHeight;
  out.fStiffness = s.fStiffness;
  out.fStiffnessBack = s.fStiffnessBack;
  out.fDamping = s.fDamping;
  out.fGravity = s.fGravity;
  out.dMassMult = s.dMassMult;
  out.fRelMaxBumperLen = s.fRelMaxBumperLen;
  out.dWheelRadiusMult = s.dWheelRadiusMult;
  out.fSurfaceEdgeResponseFactor = s.fSurfaceEdgeResponseFactor;
  out.dTurnBase = s.dTurnBase;
  for (std::size_t i = 0; i < kWheelCount; ++i) out.wheels[i] = geometry.wheels[i];
  return out;
}

/// False when the struct holds what no car can have.
bool Unpack(const sDataChunkSaveStruct& in, CarSettings& s, CarGeometry& geometry) {
  for (std::size_t i = 0; i < 8; ++i) {
    if (in.flags[i] > 1) return false;
    s.*kFlagOrder[i] = in.flags[i] != 0;
  }
  double numbers[(sizeof in - sizeof in.flags) / sizeof(double)];
  std::memcpy(numbers, in.maxima, sizeof numbers);
  for (const double number : numbers)
    if (!std::isfinite(number)) return false;
  if (in.scale <= 0.0) return false;
  for (std::size_t i = 0; i < kChannelCount; ++i)
    s.channels[i] = {std::clamp(in.responseFactors[i], 0.0, 100.0),
                     std::clamp(in.maxima[i], 0.0, 1e6)};
  geometry.scale = in.scale;
  geometry.dHeight = in.dHeight;
  s.fStiffness = std::clamp(in.fStiffness, 0.0, 1e4);
  s.fStiffnessBack = std::clamp(in.fStiffnessBack, 0.0, 1e4);
  s.fDamping = std::clamp(in.fDamping, 0.0, 1e4);
  s.fGravity = std::clamp(in.fGravity, 0.0, 1e4);
  s.dMassMult = std::clamp(in.dMassMult, 0.0, 1e3);
  s.fRelMaxBumperLen = std::clamp(in.fRelMaxBumperLen, 0.0, 1e3);
  s.dWheelRadiusMult = std::clamp(in.dWheelRadiusMult, 0.01, 10.0);
  s.fSurfaceEdgeResponseFactor = std::clamp(in.fSurfaceEdgeResponseFactor, 0.0, 1e3);
  s.dTurnBase = std::clamp(in.dTurnBase, -2.0, 2.0);
  for (std::size_t i = 0; i < kWheelCount; ++i) geometry.wheels[i] = in.wheels[i];
  return true;
}

/// What data of before `version` lacks, or means otherwise.
void ApplyOldDefaults(const util::DataChunk& chunk, int version, CarSettings& s,
                      const CarGeometry& geometry) {
  if (version < kTurnBaseVersion)
    s.dTurnBase += geometry.wheels[2].zOffset / (geometry.scale * 0.5);
  if (version < kFollowVersion) {
    s.dFollowAccelerationMult = 0.5;
    s.dIgnoreSphereRadius = 0.2;
  }
  if (version >= kTirePressureVersion && version < kVersion) s.fSurfaceEdgeResponseFactor = 99.0;
  if (version < kAccelerationVersion) s.dGasPedalMaxRateOfChange = 99999.0;
  if (!chunk.hasChunk("dSkidBrakeStopFactor")) s.dSkidBrakeStopFactor = 0.5;
  if (!chunk.hasChunk("fDampingBack")) s.fDampingBack = s.fDamping;
  if (!chunk.hasChunk("bGroundReleaseOn")) {
    s.bGroundReleaseOn = s.cCarCambGravityOn = false;
    s.fRelMaxBumperLen = 0.5;
    s.dMaximumSpringChangeVelocityRel = 3.0;
  }
  if (version < kStoredGroundVersion) s.bStoreGroundMeshData = false;
}

int ReadVersion(const std::string& name) {
  return std::atoi(name.c_str() + std::strlen(kChunkName));
}

}  // namespace

int CCarCamObject::Store() {
  util::DataChunk chunk = MakeSaveChunk(kChunkName, kVersion);
  // A car that was not driven yet has none of its own: the scene may still change.
  const CarGeometry geometry = m_memory.IsEmpty() ? CarGeometry() : m_memory.geometry;
  chunk.addValue("sDataChunkSaveStruct", Pack(m_settings, geometry));
  for (const Field& field : kFields) chunk.addValue(field.key, m_settings.*field.member);
  for (const Flag& flag : kFlags) chunk.addValue(flag.key, m_settings.*flag.member);
  chunk.addValue("iRayMultiplier", m_settings.iRayMultiplier);
  chunk.addValue("iRandomSeedAdder", m_settings.iRandomSeedAdder);
  for (std::size_t i = 0; i < m_hideModes.GetCount(); ++i)
    chunk.addValue("bHide" + std::to_string(i), m_hideModes.GetBox(i).on);
  chunk.addValue("dStartTime", m_memory.dStartTime);
  chunk.addValue("steeringWheelmInit_loc", geometry.steeringWheel);
  chunk.addValue("driverCammInit_loc", geometry.driverCam);
  m_memory.Save(chunk);
  if (m_settings.bStoreGroundMeshData && m_gravity.HasStoredMesh()) {
    chunk.addText("cMesh_storedGroundMesh", m_gravity.cMesh_storedGroundMesh.toTag().toText());
    chunk.addValue("mBulletGroundMesh", m_gravity.mBulletGroundMesh);
  }
  return StoreSaveChunk(*m_pInterface, chunk);
}

int CCarCamObject::Restore() {
  for (RigSceneNode* node : AllNodes()) {
    // The helpers may have gone; what a drive is made of may not.
    const bool needed = node == &m_body || node == &m_bodyBase || node == &m_gravity;
    if (!node->Find() && needed) return 1;
  }
  for (auto& wheel : m_wheels)
    if (!wheel->relocator.IsBound() || !wheel->wheel.IsBound()) return 1;
  const double now = m_pInterface->GetTime();
  ReadGeometry(now);
  if (LoadBlob() == SaveState::kDamaged) return 1;
  UpdateMaximumGauges();
  m_hideModes.Restore();
  return 0;
}

SaveState CCarCamObject::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, kChunkName, kFirstVersion, chunk);
  if (state != SaveState::kGood) return state;
  const int version = ReadVersion(chunk.name);
  CarSettings settings = m_settings;
  CarMemory memory;
  SaveReader reader(chunk);
  sDataChunkSaveStruct fixed = Pack(settings, cCarCam.geometry);
  reader.ReadStruct("sDataChunkSaveStruct", fixed);
  if (!reader.IsGood() || !Unpack(fixed, settings, memory.geometry)) return SaveState::kDamaged;
  std::array<bool, kHideBoxes> hidden{};
  for (std::size_t i = 0; i < m_hideModes.GetCount(); ++i) {
    hidden[i] = m_hideModes.GetBox(i).on;
    reader.Read("bHide" + std::to_string(i), hidden[i]);
  }
  for (const Field& field : kFields)
    reader.Read(field.key, settings.*field.member, field.min, field.max);
  for (const Flag& flag : kFlags) reader.Read(flag.key, settings.*flag.member);
  reader.ReadStruct("iRayMultiplier", settings.iRayMultiplier);
  reader.ReadStruct("iRandomSeedAdder", settings.iRandomSeedAdder);
  reader.ReadStruct("dStartTime", memory.dStartTime);
  reader.ReadStruct("steeringWheelmInit_loc", memory.geometry.steeringWheel);
  reader.ReadStruct("driverCammInit_loc", memory.geometry.driverCam);
  memory.Load(reader);
  // A car that was never driven has the sizes that the scene gives it.
  if (memory.IsEmpty()) memory.geometry = cCarCam.geometry;
  ApplyOldDefaults(chunk, version, settings, memory.geometry);
  settings.iRayMultiplier = std::clamp(settings.iRayMultiplier, 1, 1000);
  if (std::isnan(memory.dStartTime) || !IsFinite(memory.geometry.steeringWheel) ||
      !IsFinite(memory.geometry.driverCam))
    reader.Refuse();
  if (version >= kStoredGroundVersion && settings.bStoreGroundMeshData)
    ReadStoredGround(chunk, settings.bStoreGroundMeshData, reader);
  if (!reader.IsGood()) {
    m_gravity.DropStoredMesh();
    return SaveState::kDamaged;
  }
  for (std::size_t i = 0; i < m_hideModes.GetCount(); ++i) m_hideModes.GetBox(i).on = hidden[i];
  m_settings = settings;
  m_memory = std::move(memory);
  cCarCam.geometry = m_memory.geometry;
  m_gravity.BuildTree();
  return state;
}

void CCarCamObject::ReadStoredGround(const util::DataChunk& chunk, bool& stored,
                                     SaveReader& reader) {
  std::string text;
  if (!chunk.getText("cMesh_storedGroundMesh", text)) {
    stored = false;
    return;
  }
  util::CMesh mesh;
  util::xml::Element element;
  if (element.loadText(text) != util::xml::kReadOk || !mesh.fromTag(element)) {
    reader.Refuse();
    return;
  }
  m_gravity.cMesh_storedGroundMesh = mesh.faces.empty() ? util::CMesh() : std::move(mesh);
  m_gravity.mBulletGroundMesh = Matrix();
  reader.ReadStruct("mBulletGroundMesh", m_gravity.mBulletGroundMesh);
  if (!IsFinite(m_gravity.mBulletGroundMesh)) reader.Refuse();
}

}  // namespace orv::rws::addon
