#include "app/studio/sound/Sound.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace orv::app::sound {

namespace {

constexpr long kBlock = 256;  ///< samples of a channel a peak stands for
/// Half a gigabyte: 46 minutes of two channels at 48 kHz.
constexpr sf_count_t kMostSamples = sf_count_t{1} << 28;

struct CloseFile {
  void operator()(SNDFILE* file) const { sf_close(file); }
};

}  // namespace

Sound::Sound(int rate, int channels, std::vector<std::int16_t> samples)
    : m_rate(rate),
      m_channels(channels),
      m_samples(std::move(samples)),
      m_length(static_cast<long>(m_samples.size()) / channels) {
  m_peaks.resize(static_cast<std::size_t>((m_length + kBlock - 1) / kBlock));
  for (std::size_t i = 0; i < m_samples.size(); ++i) {
    Peak& peak = m_peaks[i / static_cast<std::size_t>(kBlock * channels)];
    const float value = static_cast<float>(m_samples[i]) / 32768.0f;
    peak.low = std::min(peak.low, value);
    peak.high = std::max(peak.high, value);
  }
}

std::shared_ptr<const Sound> Sound::Read(const std::string& path, util::Sentence& problem) {
  std::error_code none;
  if (!std::filesystem::is_regular_file(path, none)) {
    problem = "there is no such file";
    return nullptr;
  }
  SF_INFO info{};
  const std::unique_ptr<SNDFILE, CloseFile> file(sf_open(path.c_str(), SFM_READ, &info));
  if (!file || info.channels < 1 || info.samplerate < 1) {
    problem = file ? util::Sentence("it holds no sound") : util::Sentence(sf_strerror(nullptr));
    return nullptr;
  }
  const int kept = info.channels <= 2 ? info.channels : 1;
  std::vector<std::int16_t> samples;
  constexpr sf_count_t kPart = 65536;
  std::vector<std::int16_t> part(static_cast<std::size_t>(kPart * info.channels));
  for (;;) {
    const sf_count_t count = sf_readf_short(file.get(), part.data(), kPart);
    if (count <= 0) break;
    if (static_cast<sf_count_t>(samples.size()) + count * kept > kMostSamples) {
      problem = "it is too long";
      return nullptr;
    }
    if (kept == info.channels) {
      samples.insert(samples.end(), part.begin(), part.begin() + count * kept);
      continue;
    }
    for (sf_count_t i = 0; i < count; ++i) {
      long sum = 0;
      for (int c = 0; c < info.channels; ++c)
        sum += part[static_cast<std::size_t>(i * info.channels + c)];
      samples.push_back(static_cast<std::int16_t>(sum / info.channels));
    }
  }
  if (samples.empty()) {
    problem = "it holds no sound";
    return nullptr;
  }
  return std::make_shared<const Sound>(info.samplerate, kept, std::move(samples));
}

Sound::Peak Sound::FindPeak(double from, double to) const {
  const double blocks = static_cast<double>(m_rate) / kBlock;
  const double last = static_cast<double>(m_peaks.size()) - 1.0;
  const double first = std::floor(from * blocks), end = std::floor(to * blocks);
  Peak peak;
  if (end < 0.0 || first > last) return peak;
  const auto stop = static_cast<std::size_t>(std::min(end, last));
  for (auto i = static_cast<std::size_t>(std::max(first, 0.0)); i <= stop; ++i) {
    peak.low = std::min(peak.low, m_peaks[i].low);
    peak.high = std::max(peak.high, m_peaks[i].high);
  }
  return peak;
}

}  // namespace orv::app::sound
