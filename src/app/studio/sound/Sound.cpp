#include "app/studio/sound/Sound.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace orv::app::sound {

namespace {

constexpr long kBlock = 256;         ///< samples of a channel a peak stands for
constexpr long kLook = 32 * kBlock;  ///< samples of a channel that are looked at at once

}  // namespace

/// One reader of the file, which goes on where it is.
class Sound::File {
 public:
  static std::unique_ptr<File> Open(const std::string& path) {
    auto file = std::make_unique<File>();
    file->m_file = sf_open(path.c_str(), SFM_READ, &file->m_info);
    return file->m_file ? std::move(file) : nullptr;
  }
  File() = default;
  ~File() {
    if (m_file) sf_close(m_file);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  const SF_INFO& GetInfo() const { return m_info; }
  int GetChannels() const { return m_info.channels <= 2 ? m_info.channels : 1; }

  /// How many samples of a channel there were.
  long Read(long first, long count, std::int16_t* to) {
    if (m_place != first) m_place = sf_seek(m_file, first, SEEK_SET);
    if (m_place < 0) return 0;
    const bool isMixed = GetChannels() != m_info.channels;
    if (isMixed) m_mixed.resize(static_cast<std::size_t>(count * m_info.channels));
    const sf_count_t read = sf_readf_short(m_file, isMixed ? m_mixed.data() : to, count);
    m_place += read;
    for (sf_count_t i = 0; isMixed && i < read; ++i) {
      long sum = 0;
      for (int c = 0; c < m_info.channels; ++c)
        sum += m_mixed[static_cast<std::size_t>(i * m_info.channels + c)];
      to[i] = static_cast<std::int16_t>(sum / m_info.channels);
    }
    return static_cast<long>(read);
  }

 private:
  SNDFILE* m_file = nullptr;
  SF_INFO m_info{};
  sf_count_t m_place = 0;             ///< of the next sample of a channel; below 0 for unknown
  std::vector<std::int16_t> m_mixed;  ///< of all channels, for reuse
};

Sound::Sound(std::string path, std::unique_ptr<File> file)
    : m_path(std::move(path)),
      m_file(std::move(file)),
      m_rate(m_file->GetInfo().samplerate),
      m_channels(m_file->GetChannels()),
      m_length(static_cast<long>(m_file->GetInfo().frames)) {}

Sound::~Sound() = default;

std::shared_ptr<Sound> Sound::Open(const std::string& path, util::Sentence& problem) {
  std::error_code none;
  if (!std::filesystem::is_regular_file(path, none)) {
    problem = "there is no such file";
    return nullptr;
  }
  std::unique_ptr<File> file = File::Open(path);
  if (!file) {
    problem = util::Sentence(sf_strerror(nullptr));
    return nullptr;
  }
  // A file may promise more than it has.
  std::int16_t sample[2];
  const SF_INFO& info = file->GetInfo();
  if (info.channels < 1 || info.samplerate < 1 || info.frames < 1 ||
      file->Read(0, 1, sample) != 1) {
    problem = "it holds no sound";
    return nullptr;
  }
  return std::shared_ptr<Sound>(new Sound(path, std::move(file)));
}

void Sound::Read(long first, long count, std::int16_t* to) {
  std::fill_n(to, count * m_channels, std::int16_t{0});
  const long from = std::max(first, 0L), end = std::min(first + count, m_length);
  if (from < end) m_file->Read(from, end - from, to + (from - first) * m_channels);
}

// --- peaks ---

bool Sound::Look() {
  if (m_isSeen) return false;
  if (!m_looked) m_looked = File::Open(m_path);
  m_part.resize(static_cast<std::size_t>(kLook * m_channels));
  const long first = static_cast<long>(m_peaks.size()) * kBlock;
  const long count = m_looked ? m_looked->Read(first, kLook, m_part.data()) : 0;
  for (long i = 0; i < count * m_channels; ++i) {
    if (i % (kBlock * m_channels) == 0) m_peaks.emplace_back();
    const float value = static_cast<float>(m_part[static_cast<std::size_t>(i)]) / 32768.0f;
    m_peaks.back().low = std::min(m_peaks.back().low, value);
    m_peaks.back().high = std::max(m_peaks.back().high, value);
  }
  m_isSeen = count < kLook;
  if (m_isSeen) m_looked.reset();
  return !m_isSeen;
}

Sound::Peak Sound::FindPeak(double from, double to) const {
  const double blocks = static_cast<double>(m_rate) / kBlock;
  const double last = static_cast<double>(m_peaks.size()) - 1.0;
  const double first = std::floor(from * blocks), end = std::floor(to * blocks);
  Peak peak;
  if (m_peaks.empty() || end < 0.0 || first > last) return peak;
  const auto stop = static_cast<std::size_t>(std::min(end, last));
  for (auto i = static_cast<std::size_t>(std::max(first, 0.0)); i <= stop; ++i) {
    peak.low = std::min(peak.low, m_peaks[i].low);
    peak.high = std::max(peak.high, m_peaks[i].high);
  }
  return peak;
}

}  // namespace orv::app::sound
