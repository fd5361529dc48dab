// A sound on the loudspeakers.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/studio/sound/Sound.h"

namespace orv::app::sound {

/// Plays one sound through SDL at the time that it is told. SDL's own thread takes what has been
/// decoded ahead of it, a few seconds, and counts its samples; while nothing is played there is
/// neither device nor thread.
class SoundOutput {
 public:
  /// Told time and what is heard may differ so much (s) before the sound jumps.
  static constexpr double kTolerance = 0.06;

  SoundOutput();
  ~SoundOutput();
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;

  /// Ends what is played; null for none.
  void SetSound(std::shared_ptr<Sound> sound);
  /// `time` (s, from the sound's beginning, before it too) is to be heard now, and the sound goes
  /// on by itself from there, for some seconds unless it is told again. False, with `problem`, when
  /// it can't be played, which is tried again only after Stop.
  bool Follow(double time, std::string& problem);
  void Stop();
  bool IsPlaying() const { return m_device != 0; }

 private:
  struct Supply;

  bool Open(std::string& problem);
  void DecodeAhead();

  std::shared_ptr<Sound> m_sound;
  std::unique_ptr<Supply> m_supply;   ///< shared with the thread that plays, by the device's lock
  std::vector<std::int16_t> m_block;  ///< freshly decoded, for reuse
  std::uint32_t m_device = 0;
  bool m_hasFailed = false;
  bool m_isSystemOpen = false;  ///< SDL's audio
};

}  // namespace orv::app::sound
