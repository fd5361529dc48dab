// A sound in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "util/Sentence.h"

namespace orv::app::sound {

/// What a file holds, decoded. Never changed once it is shared: the thread that plays it reads it.
class Sound {
 public:
  /// Of WAV, FLAC, Ogg and MP3. More than two channels become one. Null with `problem` when there
  /// is none or it is too long.
  static std::shared_ptr<const Sound> Read(const std::string& path, util::Sentence& problem);
  /// `samples` are those of all channels, 1 or 2, by turns.
  Sound(int rate, int channels, std::vector<std::int16_t> samples);

  int GetRate() const { return m_rate; }  ///< samples a second and channel
  int GetChannels() const { return m_channels; }
  const std::vector<std::int16_t>& GetSamples() const { return m_samples; }
  long GetLength() const { return m_length; }  ///< samples of a channel
  double GetSeconds() const { return static_cast<double>(m_length) / m_rate; }

  /// Lowest and highest value in a stretch (s), -1 to 1, to some milliseconds; 0 and 0 beside the
  /// sound.
  struct Peak {
    float low = 0.0f, high = 0.0f;
  };
  Peak FindPeak(double from, double to) const;

 private:
  int m_rate, m_channels;
  std::vector<std::int16_t> m_samples;
  long m_length;
  std::vector<Peak> m_peaks;  ///< of a block of samples each
};

}  // namespace orv::app::sound
