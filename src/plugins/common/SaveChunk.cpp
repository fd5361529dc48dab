#include "plugins/common/SaveChunk.h"

#include <algorithm>
#include <cmath>

#include "core/interface/CInterface.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

util::DataChunk MakeSaveChunk(const std::string& name, int version) {
  return util::DataChunk(name + std::to_string(version));
}

int StoreSaveChunk(CInterface& core, const util::DataChunk& chunk) {
  const std::vector<unsigned char> bytes = chunk.flatten();
  if (bytes.empty()) return 1;
  core.SetUserData(bytes.data(), static_cast<int>(bytes.size()));
  return 0;
}

SaveState LoadSaveChunk(CInterface& core, const std::string& name, int firstReadable,
                        util::DataChunk& chunk) {
  int size = 0;
  const void* data = core.GetUserData(&size);
  if (!data || size <= 0) return SaveState::kNone;
  util::DataChunk read;
  const void* end = read.read(data, static_cast<std::size_t>(size));
  if (end != static_cast<const unsigned char*>(data) + size) return SaveState::kDamaged;
  if (read.name.compare(0, name.size(), name) != 0) return SaveState::kDamaged;
  int version = 0;
  if (!util::parseNumber(read.name.substr(name.size()), version)) return SaveState::kDamaged;
  if (version < firstReadable) return SaveState::kTooOld;
  chunk = std::move(read);
  return SaveState::kGood;
}

void SaveReader::Read(const std::string& key, bool& value) {
  if (!m_chunk.hasChunk(key)) return;
  unsigned char byte = 2;
  if (m_chunk.getValue(key, byte) && byte <= 1)
    value = byte == 1;
  else
    m_good = false;
}

void SaveReader::Read(const std::string& key, double& value, double min, double max) {
  if (!m_chunk.hasChunk(key)) return;
  double read = 0.0;
  if (m_chunk.getValue(key, read) && std::isfinite(read))
    value = std::clamp(read, min, max);
  else
    m_good = false;
}

bool IsFinite(double value) {
  return std::isfinite(value);
}

bool IsFinite(const util::Vector3<double>& value) {
  return std::isfinite(value.x) && std::isfinite(value.y) && std::isfinite(value.z);
}

bool IsFinite(const util::Matrix<double>& value) {
  return std::all_of(std::begin(value.m), std::end(value.m),
                     [](double number) { return std::isfinite(number); });
}

bool IsFinite(const util::QTransform<double>& value) {
  const util::Quat<double>& q = value.rotation;
  return IsFinite(value.position) && std::isfinite(q.x) && std::isfinite(q.y) &&
         std::isfinite(q.z) && std::isfinite(q.w);
}

}  // namespace orv::rws::addon
