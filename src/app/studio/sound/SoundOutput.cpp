#include "app/studio/sound/SoundOutput.h"

#include <SDL.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <utility>

namespace orv::app::sound {

namespace {

/// Handed over at once (s): well below what may be off.
constexpr double kBuffer = 0.0125;

/// Samples of a channel, as SDL wants them.
Uint16 PowerOfTwo(double most) {
  Uint16 samples = 32;
  while (samples * 2.0 <= most && samples < 8192) samples = static_cast<Uint16>(samples * 2);
  return samples;
}

}  // namespace

struct SoundOutput::Reading {
  const Sound* sound = nullptr;
  std::atomic<std::int64_t> place{0};  ///< sample of a channel that is played next

  /// Called by SDL's thread.
  static void Fill(void* self, Uint8* to, int bytes) {
    auto& reading = *static_cast<Reading*>(self);
    const Sound& sound = *reading.sound;
    const auto channels = static_cast<std::size_t>(sound.GetChannels());
    const std::size_t frame = channels * sizeof(std::int16_t);
    const std::int64_t wanted = bytes / static_cast<int>(frame);
    const std::int64_t from = reading.place.fetch_add(wanted);
    std::memset(to, 0, static_cast<std::size_t>(bytes));
    const std::int64_t first = std::max<std::int64_t>(from, 0);
    const std::int64_t end = std::min<std::int64_t>(from + wanted, sound.GetLength());
    if (end <= first) return;
    std::memcpy(to + static_cast<std::size_t>(first - from) * frame,
                sound.GetSamples().data() + static_cast<std::size_t>(first) * channels,
                static_cast<std::size_t>(end - first) * frame);
  }
};

SoundOutput::SoundOutput() : m_reading(std::make_unique<Reading>()) {}

SoundOutput::~SoundOutput() {
  Stop();
  if (m_isSystemOpen) SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SoundOutput::SetSound(std::shared_ptr<const Sound> sound) {
  Stop();
  m_sound = std::move(sound);
}

bool SoundOutput::Open(std::string& problem) {
  m_isSystemOpen = m_isSystemOpen || SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
  SDL_AudioSpec wanted{}, got{};
  wanted.freq = m_sound->GetRate();
  wanted.format = AUDIO_S16SYS;
  wanted.channels = static_cast<Uint8>(m_sound->GetChannels());
  wanted.samples = PowerOfTwo(kBuffer * m_sound->GetRate());
  wanted.callback = &Reading::Fill;
  wanted.userdata = m_reading.get();
  m_reading->sound = m_sound.get();
  // What the machine can't do SDL converts.
  if (m_isSystemOpen) m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
  if (m_device == 0) problem = SDL_GetError();
  return m_device != 0;
}

bool SoundOutput::Follow(double time, std::string& problem) {
  if (!m_sound || m_hasFailed) return true;
  const auto place = static_cast<std::int64_t>(std::llround(time * m_sound->GetRate()));
  if (m_device == 0) {
    m_reading->place = place;
    m_hasFailed = !Open(problem);
    if (m_hasFailed) return false;
    SDL_PauseAudioDevice(m_device, 0);
    return true;
  }
  const std::int64_t off = m_reading->place - place;
  if (std::abs(static_cast<double>(off)) > kTolerance * m_sound->GetRate())
    m_reading->place = place;
  return true;
}

void SoundOutput::Stop() {
  if (m_device != 0) SDL_CloseAudioDevice(m_device);
  m_device = 0;
  m_hasFailed = false;
}

}  // namespace orv::app::sound
