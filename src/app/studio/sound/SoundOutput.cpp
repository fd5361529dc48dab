#include "app/studio/sound/SoundOutput.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace orv::app::sound {

namespace {

/// Handed over at once (s): well below what may be off.
constexpr double kBuffer = 0.0125;
/// Decoded ahead of what is heard (s): the main thread may be away for so long.
constexpr double kAhead = 4.0;
/// Of it with one call (s), which takes a few milliseconds, and less is left for the next.
constexpr double kMostAtOnce = 1.0, kLeastAtOnce = 0.05;

/// Samples of a channel, as SDL wants them.
Uint16 PowerOfTwo(double most) {
  Uint16 samples = 32;
  while (samples * 2.0 <= most && samples < 8192) samples = static_cast<Uint16>(samples * 2);
  return samples;
}

}  // namespace

/// The samples from `begin` to `end`, each at its number's place in the ring.
struct SoundOutput::Supply {
  std::int64_t channels = 1;
  std::int64_t room = 0;  ///< samples of a channel
  std::vector<std::int16_t> ring;
  std::int64_t begin = 0, end = 0;
  std::int64_t place = 0;  ///< sample of a channel that is played next

  void Begin(int newChannels, int rate, std::int64_t from) {
    channels = newChannels;
    room = static_cast<std::int64_t>(kAhead * rate);
    ring.resize(static_cast<std::size_t>(room * channels));
    begin = end = place = from;
  }
  /// `Copy(part of the ring, number of its first sample, how many samples)`.
  template <class Copy>
  void ForParts(std::int64_t from, std::int64_t to, Copy copy) {
    while (from < to) {
      const std::int64_t at = (from % room + room) % room;
      const std::int64_t count = std::min(to - from, room - at);
      copy(ring.data() + at * channels, from, count);
      from += count;
    }
  }
  void Add(std::int64_t from, const std::vector<std::int16_t>& samples) {
    if (from != end) begin = from;
    end = from + static_cast<std::int64_t>(samples.size()) / channels;
    ForParts(from, end, [&](std::int16_t* part, std::int64_t first, std::int64_t count) {
      std::copy_n(samples.data() + (first - from) * channels, count * channels, part);
    });
    begin = std::max(begin, end - room);
  }

  /// Called by SDL's thread, which holds the device's lock.
  static void Fill(void* self, Uint8* to, int bytes) {
    auto& supply = *static_cast<Supply*>(self);
    const std::int64_t size = supply.channels * std::int64_t{sizeof(std::int16_t)};
    const std::int64_t place = supply.place;
    supply.place += bytes / size;
    std::memset(to, 0, static_cast<std::size_t>(bytes));
    supply.ForParts(std::max(place, supply.begin), std::min(supply.place, supply.end),
                    [&](std::int16_t* part, std::int64_t first, std::int64_t count) {
                      std::memcpy(to + (first - place) * size, part,
                                  static_cast<std::size_t>(count * size));
                    });
  }
};

/// While it lives the thread that plays waits.
class DeviceLock {
 public:
  explicit DeviceLock(SDL_AudioDeviceID device) : m_device(device) { SDL_LockAudioDevice(device); }
  ~DeviceLock() { SDL_UnlockAudioDevice(m_device); }
  DeviceLock(const DeviceLock&) = delete;
  DeviceLock& operator=(const DeviceLock&) = delete;

 private:
  SDL_AudioDeviceID m_device;
};

SoundOutput::SoundOutput() : m_supply(std::make_unique<Supply>()) {}

SoundOutput::~SoundOutput() {
  Stop();
  if (m_isSystemOpen) SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

void SoundOutput::SetSound(std::shared_ptr<Sound> sound) {
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
  wanted.callback = &Supply::Fill;
  wanted.userdata = m_supply.get();
  // What the machine can't do SDL converts.
  if (m_isSystemOpen) m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, 0);
  if (m_device == 0) problem = SDL_GetError();
  return m_device != 0;
}

bool SoundOutput::Follow(double time, std::string& problem) {
  if (!m_sound || m_hasFailed) return true;
  const auto place = static_cast<std::int64_t>(std::llround(time * m_sound->GetRate()));
  if (m_device == 0) {
    m_supply->Begin(m_sound->GetChannels(), m_sound->GetRate(), place);
    DecodeAhead();
    m_hasFailed = !Open(problem);
    if (m_hasFailed) return false;
    SDL_PauseAudioDevice(m_device, 0);
    return true;
  }
  {
    const DeviceLock lock(m_device);
    const auto off = static_cast<double>(m_supply->place - place);
    if (std::abs(off) > kTolerance * m_sound->GetRate()) m_supply->place = place;
  }
  DecodeAhead();
  return true;
}

/// Some of what is about to be played.
void SoundOutput::DecodeAhead() {
  const double rate = m_sound->GetRate();
  std::int64_t from = 0, to = 0;
  {
    const DeviceLock lock(m_device);
    const std::int64_t place = m_supply->place;
    const bool goesOn = place >= m_supply->begin && place <= m_supply->end;
    from = goesOn ? m_supply->end : place;
    to = std::min(place + m_supply->room, from + static_cast<std::int64_t>(kMostAtOnce * rate));
  }
  if (static_cast<double>(to - from) < kLeastAtOnce * rate) return;
  m_block.resize(static_cast<std::size_t>((to - from) * m_sound->GetChannels()));
  m_sound->Read(static_cast<long>(from), static_cast<long>(to - from), m_block.data());
  const DeviceLock lock(m_device);
  m_supply->Add(from, m_block);
}

void SoundOutput::Stop() {
  if (m_device != 0) SDL_CloseAudioDevice(m_device);
  m_device = 0;
  m_hasFailed = false;
}

}  // namespace orv::app::sound
