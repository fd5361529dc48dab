// The gun's save data.
#include <set>
#include <utility>

#include "plugins/release/firepower/Bullet.h"
#include "plugins/release/firepower/Messages.h"

namespace orv::rws::addon {

using util::DataChunk;

namespace {

const char kChunkName[] = "bulletplugin";
constexpr int kGunSaveVersion = 8105;
const char kBullets[] = "bullets";

/// A field of the settings, with its parameter's range.
struct NumberRow {
  const char* key;
  double FirepowerSettings::*value;
  double min, max;
};
struct CountRow {
  const char* key;
  int FirepowerSettings::*value;
  int min, max;
};
struct FlagRow {
  const char* key;
  bool FirepowerSettings::*value;
};

using S = FirepowerSettings;
constexpr NumberRow kNumbers[] = {
    {"initSpeed", &S::initSpeed, 0.0, 100000.0},
    {"spreadAngle", &S::spreadAngle, 0.0, 180.0},
    {"lifeTime", &S::lifeTime, 0.0, kMostLifeTime},
    {"timeDelay", &S::timeDelay, 0.0, 10000.0},
    {"gravity", &S::gravity, -10000.0, 10000.0},
    {"angularVelocity", &S::angularVelocity, -1000.0, 1000.0},
    {"airResistance", &S::airResistance, 0.0, 1000.0},
    {"elasticity", &S::elasticity, 0.0, 100.0},
    {"deltaValue", &S::deltaValue, 0.001, 100.0},
    {"length", &S::length, 0.001, 10000.0},
    {"randomizeRotationSpeed", &S::randomizeRotationSpeed, 0.0, 1000.0},
    {"randomizeRotationAxis", &S::randomizeRotationAxis, 0.0, 180.0},
    {"recoilBack", &S::recoilBack, 0.0, 1000.0},
    {"recoilForward", &S::recoilForward, 0.0, 1000.0},
    {"response", &S::response, 0.001, 1.0},
    {"recoilDepth", &S::recoilDepth, 0.0, 100.0}};
constexpr CountRow kCounts[] = {{"rateOfFire", &S::rateOfFire, 0, 1000},
                                {"bunchOfBullets", &S::bunchOfBullets, 1, 1000},
                                {"fireNthTime", &S::fireNthTime, 0, 1000},
                                {"fireFirstNthTime", &S::fireFirstNthTime, 0, 1000},
                                {"randomSeed", &S::randomSeed, 0, 1000000}};
constexpr FlagRow kFlags[] = {{"pitchBullet", &S::pitchBullet}, {"rotateBullet", &S::rotateBullet}};

}  // namespace

int Firepower::Store() {
  DataChunk chunk = MakeSaveChunk(kChunkName, kGunSaveVersion);
  for (const NumberRow& row : kNumbers) chunk.addValue(row.key, m_settings.*row.value);
  for (const CountRow& row : kCounts) chunk.addValue(row.key, m_settings.*row.value);
  for (const FlagRow& row : kFlags) chunk.addValue(row.key, m_settings.*row.value);
  chunk.addValue("timeDelayFire", m_logic.timeDelayFire);
  chunk.addValue("fireOffline", m_logic.fireOffline);
  chunk.addValue("hideCamera", m_hideCamera->on);
  chunk.addValue("hideCameraDuringRecording", m_hideCameraDuringRecording->on);
  m_memory.Save(chunk);
  DataChunk list(kBullets);
  list.children.reserve(bullets.size());
  for (const Bullet& bullet : bullets) list.addChunk(bullet.Save());
  chunk.addChunk(std::move(list));
  int size = 0;
  const bool stored = StoreSaveChunk(*m_pInterface, chunk) == 0;
  if (stored && m_pInterface->GetUserData(&size) && size > 0) return 0;
  Tell(kErrorOnSave);
  return 1;
}

SaveState Firepower::LoadBlob(std::vector<Bullet>& loaded, const char*& message) {
  DataChunk chunk;
  const SaveState found = LoadSaveChunk(*m_pInterface, kChunkName, kGunSaveVersion, chunk);
  if (found != SaveState::kGood) return found;
  FirepowerSettings settings = m_settings;
  bool delayFire = false, offline = false;
  bool hide = m_hideCamera->on, hideInTakes = m_hideCameraDuringRecording->on;
  GunMemory memory;
  SaveReader reader(chunk);
  for (const NumberRow& row : kNumbers) reader.Read(row.key, settings.*row.value, row.min, row.max);
  for (const CountRow& row : kCounts) {
    reader.ReadStruct(row.key, settings.*row.value);
    settings.*row.value = std::clamp(settings.*row.value, row.min, row.max);
  }
  for (const FlagRow& row : kFlags) reader.Read(row.key, settings.*row.value);
  reader.Read("timeDelayFire", delayFire);
  reader.Read("fireOffline", offline);
  reader.Read("hideCamera", hide);
  reader.Read("hideCameraDuringRecording", hideInTakes);
  memory.Load(reader);
  if (!reader.IsGood()) return SaveState::kDamaged;
  const DataChunk& list = chunk.getChunk(kBullets);
  loaded.reserve(list.children.size());
  int number = 0;
  for (const DataChunk& one : list.children) {
    SaveReader in(one);
    Bullet bullet;
    bullet.Load(in, one);
    // In the order of their birth, each with a name of its own.
    if (!in.IsGood() || bullet.number <= number ||
        (!loaded.empty() && bullet.creationTime < loaded.back().creationTime)) {
      message = kCouldNotLoadBullet;
      return SaveState::kDamaged;
    }
    number = bullet.number;
    loaded.push_back(std::move(bullet));
  }
  m_settings = settings;
  m_logic.timeDelayFire = delayFire;
  m_logic.fireOffline = offline;
  m_hideCamera->on = hide;
  m_hideCameraDuringRecording->on = hideInTakes;
  m_memory = std::move(memory);
  return found;
}

}  // namespace orv::rws::addon
