// A rig's save data: a named chunk with a version.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "util/AVar.h"
#include "util/DataChunk.h"

namespace orv::rws {
class CInterface;
}

namespace orv::rws::addon {

/// What became of reading a rig's save data.
enum class SaveState {
  kGood,
  kNone,     ///< there is none
  kTooOld,   ///< of a version below the first readable one: all defaults stay
  kDamaged,  ///< not to be trusted: all defaults stay
};

/// Present version of the save data of all rigs here, and the first that they read.
inline constexpr int kSaveVersion = 8101;

/// An empty chunk of this name, its version as decimal digits behind it.
util::DataChunk MakeSaveChunk(const std::string& name, int version);
/// Hands the chunk to the core as the rig's blob. 0 is success, 1 means that it can't be stored.
int StoreSaveChunk(CInterface& core, const util::DataChunk& chunk);
/// Reads the rig's blob into `chunk`.
SaveState LoadSaveChunk(CInterface& core, const std::string& name, int firstReadable,
                        util::DataChunk& chunk);

/// Appends the flat form of a history as a field.
template <class T>
void AddHistory(util::DataChunk& chunk, const std::string& key, const util::AVar<T>& history) {
  std::vector<unsigned char> bytes(history.flatSize());
  history.save(bytes.data(), bytes.size());
  chunk.addBytes(key, bytes.data(), bytes.size());
}

/// Reads the fields of a chunk, one after the other. A field that is missing keeps its value, as an
/// older version may not have had it. One that is damaged (a wrong size, a number that is not
/// finite, a history whose times do not rise) makes the reader not good; the caller
/// reads into copies and takes them over only from a good reader.
class SaveReader {
 public:
  explicit SaveReader(const util::DataChunk& chunk) : m_chunk(chunk) {}

  bool IsGood() const { return m_good; }
  /// For a caller that finds the content of a field impossible.
  void Refuse() { m_good = false; }
  void Read(const std::string& key, bool& value);
  /// A parameter, clamped to its range.
  void Read(const std::string& key, double& value, double min, double max);
  /// A structure of plain bytes. Its content is for the caller to check.
  template <class T>
  void ReadStruct(const std::string& key, T& value) {
    if (m_chunk.hasChunk(key) && !m_chunk.getValue(key, value)) m_good = false;
  }
  template <class History>
  void ReadHistory(const std::string& key, History& history);

 private:
  const util::DataChunk& m_chunk;
  bool m_good = true;
};

bool IsFinite(double value);
bool IsFinite(const util::Vector3<double>& value);
bool IsFinite(const util::QTransform<double>& value);
bool IsFinite(const util::Matrix<double>& value);
inline bool IsFinite(int) {
  return true;
}
template <std::size_t N>
bool IsFinite(const std::array<double, N>& row) {
  return std::all_of(row.begin(), row.end(), [](double value) { return IsFinite(value); });
}

template <class History>
void SaveReader::ReadHistory(const std::string& key, History& history) {
  if (!m_chunk.hasChunk(key)) return;
  const std::vector<unsigned char>& bytes = m_chunk.getBytes(key);
  History loaded;
  loaded.load(bytes.data(), bytes.size());
  // What was loaded whole saves to the very bytes that it came from.
  std::vector<unsigned char> again(loaded.flatSize());
  loaded.save(again.data(), again.size());
  bool good = again == bytes;
  const auto& samples = loaded.samples;
  for (std::size_t i = 0; good && i < samples.size(); ++i)
    good = IsFinite(samples[i].time) && IsFinite(samples[i].value) &&
           (i == 0 || samples[i - 1].time < samples[i].time);
  if (good)
    history = loaded;
  else
    m_good = false;
}

}  // namespace orv::rws::addon
