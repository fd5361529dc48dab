// A sound in a file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "util/Sentence.h"

namespace orv::app::sound {

/// Decoded as it is wanted, so that an hour of it is there as soon as a second; nothing is kept but
/// what a picture of it needs. Main thread only.
class Sound {
 public:
  /// Of WAV, FLAC, Ogg and MP3. More than two channels become one. Null with `problem` when there
  /// is none.
  static std::shared_ptr<Sound> Open(const std::string& path, util::Sentence& problem);
  ~Sound();

  int GetRate() const { return m_rate; }          ///< samples a second and channel
  int GetChannels() const { return m_channels; }  ///< 1 or 2
  long GetLength() const { return m_length; }     ///< samples of a channel
  double GetSeconds() const { return static_cast<double>(m_length) / m_rate; }
  /// `count` samples of a channel from `first` on, those of all channels by turns; silence beside
  /// the sound, and where the file is damaged.
  void Read(long first, long count, std::int16_t* to);

  /// Looks at a little more of it, a millisecond or so, for its peaks; false when it has seen all.
  bool Look();
  /// Lowest and highest value in a stretch (s), -1 to 1, to some milliseconds; 0 and 0 beside the
  /// sound and where it has not been looked at yet.
  struct Peak {
    float low = 0.0f, high = 0.0f;
  };
  Peak FindPeak(double from, double to) const;

 private:
  class File;

  Sound(std::string path, std::unique_ptr<File> file);

  const std::string m_path;
  std::unique_ptr<File> m_file;    ///< that is heard
  std::unique_ptr<File> m_looked;  ///< that is looked at; null until then, and at the end
  int m_rate, m_channels;
  long m_length;
  bool m_isSeen = false;
  std::vector<std::int16_t> m_part;  ///< what is looked at, for reuse
  std::vector<Peak> m_peaks;         ///< of a block of samples each, as far as it has been seen
};

}  // namespace orv::app::sound
