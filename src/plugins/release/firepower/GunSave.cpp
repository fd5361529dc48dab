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

}  // namespace

int Firepower::Store() {
  DataChunk chunk = MakeSaveChunk(kChunkName, kGunSaveVersion);
  const std::vector<Parameter> parameters = ParametersOf(m_settings);
  SaveParameters(chunk, parameters);
  chunk.addValue("timeDelayFire", m_logic.timeDelayFire);
  chunk.addValue("fireOffline", m_logic.fireOffline);
  SaveParameters(chunk, parameters, GunSettings::kSavedBoxes);
  m_memory.Save(chunk);
  DataChunk list(kBullets);
  list.children.reserve(bullets.size());
  for (const Bullet& bullet : bullets) list.addChunk(bullet.Save());
  chunk.addChunk(std::move(list));
  int size = 0;
  const bool stored = StoreSaveChunk(*m_pInterface, chunk) == 0;
  if (stored && m_pInterface->GetUserData(&size) && size > 0) return 0;
  TellError(kErrorOnSave);
  return 1;
}

SaveState Firepower::LoadBlob(std::vector<Bullet>& loaded, const char*& message) {
  DataChunk chunk;
  const SaveState found = LoadSaveChunk(*m_pInterface, kChunkName, kGunSaveVersion, chunk);
  if (found != SaveState::kGood) return found;
  GunSettings settings = m_settings;
  bool delayFire = false, offline = false;
  GunMemory memory;
  SaveReader reader(chunk);
  const std::vector<Parameter> parameters = ParametersOf(settings);
  LoadParameters(reader, parameters);
  LoadParameters(reader, parameters, GunSettings::kSavedBoxes);
  reader.Read("timeDelayFire", delayFire);
  reader.Read("fireOffline", offline);
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
  m_memory = std::move(memory);
  return found;
}

}  // namespace orv::rws::addon
