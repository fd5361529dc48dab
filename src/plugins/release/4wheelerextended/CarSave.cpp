// The save data of a car.
#include <algorithm>
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
  unsigned char flags[8];  ///< the part kFixedFlags
  double maxima[kChannelCount];
  double responseFactors[kChannelCount];
  double scale, dHeight;
  double numbers[9];  ///< the part kFixedNumbers
  CarWheelGeometry wheels[kWheelCount];
};
static_assert(sizeof(sDataChunkSaveStruct) == 368, "the size is part of the format");

/// `settings` is read alone.
sDataChunkSaveStruct Pack(CarSettings& settings, const CarGeometry& geometry) {
  sDataChunkSaveStruct out{};
  const std::vector<Parameter> parameters = ParametersOf(settings);
  unsigned char* flag = out.flags;
  for (const Parameter* p : SavedParameters(parameters, CarSettings::kFixedFlags))
    *flag++ = *p->flag;
  double* number = out.numbers;
  for (const Parameter* p : SavedParameters(parameters, CarSettings::kFixedNumbers))
    *number++ = *p->number;
  for (std::size_t i = 0; i < kChannelCount; ++i) {
    out.maxima[i] = settings.channels[i].maximum;
    out.responseFactors[i] = settings.channels[i].responseFactor;
  }
  out.scale = geometry.scale;
  out.dHeight = geometry.dHeight;
  for (std::size_t i = 0; i < kWheelCount; ++i) out.wheels[i] = geometry.wheels[i];
  return out;
}

void TakeClamped(const Parameter& parameter, double value) {
  *parameter.number = std::clamp(value, parameter.range.min, parameter.range.max);
}

/// False when the struct holds what no car can have.
bool Unpack(const sDataChunkSaveStruct& in, CarSettings& settings, CarGeometry& geometry) {
  const std::vector<Parameter> parameters = ParametersOf(settings);
  const unsigned char* flag = in.flags;
  for (const Parameter* p : SavedParameters(parameters, CarSettings::kFixedFlags)) {
    if (*flag > 1) return false;
    *p->flag = *flag++ != 0;
  }
  double numbers[(sizeof in - sizeof in.flags) / sizeof(double)];
  std::memcpy(numbers, in.maxima, sizeof numbers);
  for (const double number : numbers)
    if (!std::isfinite(number)) return false;
  if (in.scale <= 0.0) return false;
  const double* number = in.numbers;
  for (const Parameter* p : SavedParameters(parameters, CarSettings::kFixedNumbers))
    TakeClamped(*p, *number++);
  for (std::size_t i = 0; i < kChannelCount; ++i) {
    const std::vector<Parameter> channel = ParametersOf(settings.channels[i]);
    TakeClamped(channel[CarChannelSettings::kResponseFactor], in.responseFactors[i]);
    TakeClamped(channel[CarChannelSettings::kMaximum], in.maxima[i]);
  }
  geometry.scale = in.scale;
  geometry.dHeight = in.dHeight;
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
  SaveParameters(chunk, ParametersOf(m_settings));
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
  LoadParameters(reader, ParametersOf(settings));
  reader.ReadStruct("dStartTime", memory.dStartTime);
  reader.ReadStruct("steeringWheelmInit_loc", memory.geometry.steeringWheel);
  reader.ReadStruct("driverCammInit_loc", memory.geometry.driverCam);
  memory.Load(reader);
  // A car that was never driven has the sizes that the scene gives it.
  if (memory.IsEmpty()) memory.geometry = cCarCam.geometry;
  ApplyOldDefaults(chunk, version, settings, memory.geometry);
  if (std::isnan(memory.dStartTime) || !IsFinite(memory.geometry.steeringWheel) ||
      !IsFinite(memory.geometry.driverCam))
    reader.Refuse();
  if (version >= kStoredGroundVersion && settings.bStoreGroundMeshData)
    ReadStoredGround(chunk, settings.bStoreGroundMeshData, reader);
  if (!reader.IsGood()) {
    m_gravity.DropStoredMesh();
    return SaveState::kDamaged;
  }
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
