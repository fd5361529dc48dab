// The save data of a crawler.
#include <cmath>

#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"

namespace orv::rws::addon {

using util::DataChunk;
using Vector = CrawlerTracks::Vector;

namespace {

const char kChunkName[] = "crawlerTracksplugin";
const char kCrawlerTracks[] = "crawlerTracks";
const char kWheels[] = "wheels";
const char kSupportWheels[] = "supportWheels";
const char kWheel[] = "wheel";
const char kTrack[] = "track";
const char kSteps[] = "steps";
const char kStep[] = "step";
const char kCustomData[] = "customdata";
constexpr double kHuge = 1e9;

/// Shape and body of a step as they lie in the file.
struct StepDescInfo {
  double size[3], middle[3], scale[3];
};
struct StepBodyDescInfo {
  double size[3], mass, pitch;
};

void Copy(const Vector& from, double to[3]) {
  for (int i = 0; i < 3; ++i) to[i] = from[i];
}
Vector ToVector(const double from[3]) {
  return {from[0], from[1], from[2]};
}

bool AllFinite(std::initializer_list<const double*> rows) {
  for (const double* row : rows)
    for (int i = 0; i < 3; ++i)
      if (!std::isfinite(row[i])) return false;
  return true;
}

DataChunk SaveStep(const CrawlerTracks::Track::Step& step) {
  StepDescInfo shape{};
  Copy(step.shape.size, shape.size);
  Copy(step.shape.middle, shape.middle);
  Copy(step.shape.scale, shape.scale);
  StepBodyDescInfo body{{}, step.body.mass, step.body.pitch};
  Copy(step.body.size, body.size);
  DataChunk chunk(kStep);
  chunk.addValue("stepDescInfo", shape);
  chunk.addValue("stepBodyDescInfo", body);
  AddHistory(chunk, "linVelocity", step.linVelocity);
  AddHistory(chunk, "angVelocity", step.angVelocity);
  return chunk;
}

/// False when the data is what no step can have.
bool LoadStep(const DataChunk& chunk, CrawlerTracks::Track::Step& step) {
  StepDescInfo shape{};
  StepBodyDescInfo body{};
  if (!chunk.getValue("stepDescInfo", shape) || !chunk.getValue("stepBodyDescInfo", body))
    return false;
  SaveReader reader(chunk);
  reader.ReadHistory("linVelocity", step.linVelocity);
  reader.ReadHistory("angVelocity", step.angVelocity);
  if (!reader.IsGood() || !AllFinite({shape.size, shape.middle, shape.scale, body.size}) ||
      !std::isfinite(body.mass) || !(body.pitch > 0.0) || !std::isfinite(body.pitch))
    return false;
  for (int i = 0; i < 3; ++i)
    if (!(body.size[i] > 0.0) || !(shape.size[i] > 0.0) || !(shape.scale[i] > 0.0)) return false;
  step.shape.size = ToVector(shape.size);
  step.shape.middle = ToVector(shape.middle);
  step.shape.scale = ToVector(shape.scale);
  step.body = {ToVector(body.size), body.mass, body.pitch};
  return true;
}

}  // namespace

// --- writing ---

void CrawlerTracks::SaveWheels(DataChunk& chunk, const char* name, const WheelList& wheels) const {
  DataChunk list(name);
  for (const auto& wheel : wheels) {
    DataChunk one(kWheel);
    one.addText("name", wheel->GetName());
    one.addValue("staticWheel", wheel->kind.staticWheel);
    one.addValue("innerWheel", wheel->kind.innerWheel);
    one.addValue("trackWheel", wheel->kind.trackWheel);
    one.addValue("radius", wheel->radius);
    list.addChunk(std::move(one));
  }
  chunk.addChunk(std::move(list));
}

int CrawlerTracks::Store() {
  DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  DataChunk own(kCrawlerTracks);
  const std::vector<Parameter> parameters = ParametersOf(m_settings);
  SaveParameters(own, parameters);
  own.addValue("bulletInitialized", m_track != nullptr);
  own.addValue("groundExist", m_gravityDirection.HasMesh(m_pInterface->GetTime()));
  SaveParameters(own, parameters, CrawlerSettings::kSavedBoxes);
  // Nodes of the rig by name; the ground is what the node called so stands on.
  own.addText("frame", "Frame");
  own.addText("templateStep", "TemplateStep");
  own.addText("gravityDirection", "GravityDirection");
  own.addText("ground", "GravityDirection");
  chunk.addChunk(std::move(own));
  SaveWheels(chunk, kWheels, m_wheels);
  SaveWheels(chunk, kSupportWheels, m_supportWheels);
  if (m_track) {
    DataChunk track(kTrack), steps(kSteps);
    track.addValue("density", m_track->density);
    AddHistory(track, "heldStep", m_track->heldStep);
    AddHistory(track, "heldAngle", m_track->heldAngle);
    for (const auto& step : m_track->steps) steps.addChunk(SaveStep(*step));
    track.addChunk(std::move(steps));
    chunk.addChunk(std::move(track));
  }
  chunk.addChunk(DataChunk(kCustomData));
  int size = 0;
  if (StoreSaveChunk(*m_pInterface, chunk) == 0 && m_pInterface->GetUserData(&size) && size > 0)
    return 0;
  Tell("Error", "Error when saving. Please try again.", kIconCritical);
  return 1;
}

// --- reading ---

bool CrawlerTracks::LoadWheels(const DataChunk& chunk, bool support, WheelList& wheels) {
  for (const DataChunk& one : chunk.children) {
    WheelKind kind;
    kind.support = support;
    std::string name;
    double radius = Wheel::kMeshRadius;
    SaveReader reader(one);
    reader.Read("staticWheel", kind.staticWheel);
    reader.Read("innerWheel", kind.innerWheel);
    reader.Read("trackWheel", kind.trackWheel);
    reader.Read("radius", radius, 0.0, kHuge);
    const bool named = one.getText("name", name) && !name.empty();
    auto wheel = std::make_shared<Wheel>(*this, name, m_frame, kind);
    wheel->radius = radius;
    if (!reader.IsGood() || !named || !wheel->Find()) {
      Tell("Error", "Could not load Wheel", kIconCritical);
      return false;
    }
    wheels.push_back(std::move(wheel));
  }
  return true;
}

bool CrawlerTracks::LoadTrack(const DataChunk& chunk) {
  bool isMesh = false;
  auto track = std::make_shared<Track>(
      *this, m_gravityDirection.MeshOf(m_templateStep.GetNode(), m_pInterface->GetTime(), isMesh));
  SaveReader reader(chunk);
  reader.Read("density", track->density, -kHuge, kHuge);
  reader.ReadHistory("heldStep", track->heldStep);
  reader.ReadHistory("heldAngle", track->heldAngle);
  if (!reader.IsGood()) return false;
  for (const DataChunk& one : chunk.getChunk(kSteps).children) {
    Track::Step& step = track->Add();
    if (LoadStep(one, step) && step.Find()) continue;
    Tell("Error", "Could not load Step", kIconCritical);
    return false;
  }
  const int count = static_cast<int>(track->steps.size());
  for (const auto& sample : track->heldStep.samples)
    if (sample.value < -1 || sample.value >= count) return false;
  if (track->steps.empty() || !m_caterpillar.Find()) return false;
  m_track = track;
  return true;
}

SaveState CrawlerTracks::LoadBlob() {
  DataChunk chunk;
  const SaveState found = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (found != SaveState::kGood) return found;
  CrawlerSettings settings = m_settings;
  const DataChunk& own = chunk.getChunk(kCrawlerTracks);
  SaveReader reader(own);
  const std::vector<Parameter> parameters = ParametersOf(settings);
  if (!LoadParameters(reader, parameters)) reader.Refuse();
  LoadParameters(reader, parameters, CrawlerSettings::kSavedBoxes);
  bool initialized = false, ground = false;
  reader.Read("bulletInitialized", initialized);
  reader.Read("groundExist", ground);
  if (!reader.IsGood()) return SaveState::kDamaged;
  WheelState wheels;
  if (!LoadWheels(chunk.getChunk(kWheels), false, wheels.wheels) ||
      !LoadWheels(chunk.getChunk(kSupportWheels), true, wheels.supportWheels) ||
      wheels.wheels.empty() || !wheels.wheels.front()->IsDriveWheel())
    return SaveState::kDamaged;
  SetWheelState(wheels);
  if (initialized && !LoadTrack(chunk.getChunk(kTrack))) return SaveState::kDamaged;
  m_settings = settings;
  groundExist = ground;
  return found;
}

int CrawlerTracks::Restore() {
  if (!m_frame.Find() || !m_templateStep.Find() || !m_wheels.front()->Find()) return 1;
  m_trackDirection.Find();
  m_gravityDirection.Find();
  if (LoadBlob() == SaveState::kDamaged) {
    Tell("Error", "Error when loading, try again.", kIconCritical);
    return 1;
  }
  m_hideModes.Restore();
  return 0;
}

}  // namespace orv::rws::addon
