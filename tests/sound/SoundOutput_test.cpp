// What is played against what a file holds.
#include "app/studio/sound/SoundOutput.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "support/TempFolder.h"
#include "util/AtomicFile.h"

namespace orv::tests {

namespace {

using app::sound::Sound;
using app::sound::SoundOutput;

constexpr int kRate = 8000;

/// Each sample tells its place.
std::int16_t SampleAt(long i, int channel) {
  return static_cast<std::int16_t>(1 + i % 30000 + channel);
}

std::string WriteSound(const TempFolder& folder, const char* name, int format, int channels,
                       long length) {
  const std::string path = folder.path + "/" + name;
  SF_INFO info{};
  info.samplerate = kRate;
  info.channels = channels;
  info.format = format;
  SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
  std::vector<std::int16_t> samples;
  for (long i = 0; i < length; ++i)
    for (int c = 0; c < channels; ++c) samples.push_back(SampleAt(i, c));
  sf_write_short(file, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(file);
  return path;
}

}  // namespace

TEST(SoundOutput, ReadsFormatsAndRefusesWhatIsNone) {
  TempFolder folder;
  util::Sentence problem;
  for (const int channels : {1, 2, 4}) {
    const auto sound = Sound::Open(
        WriteSound(folder, "a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, channels, 20000), problem);
    ASSERT_TRUE(sound) << problem.text;
    EXPECT_EQ(sound->GetChannels(), channels == 2 ? 2 : 1);
    EXPECT_EQ(sound->GetLength(), 20000);
    // From anywhere, also beside it.
    for (const long first : {12345L, -3L, 0L, 19998L}) {
      const int kept = sound->GetChannels();
      std::vector<std::int16_t> read(static_cast<std::size_t>(5 * kept), 77);
      sound->Read(first, 5, read.data());
      for (long i = 0; i < 5 * kept; ++i) {
        const long place = first + i / kept;
        const int channel = channels == 4 ? 1 : static_cast<int>(i % kept);
        EXPECT_EQ(read[static_cast<std::size_t>(i)],
                  place < 0 || place >= 20000 ? 0 : SampleAt(place, channel))
            << place;
      }
    }
    EXPECT_EQ(sound->FindPeak(-1.0, 1.5).high, 0.0f) << "nobody has looked";
    while (sound->Look()) {
    }
    EXPECT_NEAR(sound->FindPeak(1.0, 1.5).high, 12256.0 / 32768.0, 0.01);
    EXPECT_EQ(sound->FindPeak(-2.0, -1.0).high + sound->FindPeak(3.0, 4.0).high, 0.0f);
  }
  EXPECT_TRUE(Sound::Open(WriteSound(folder, "a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 2, 20000),
                          problem));
  EXPECT_FALSE(Sound::Open(folder.path + "/gone.wav", problem));
  EXPECT_EQ(problem.text, "there is no such file");
  problem = {};
  EXPECT_FALSE(Sound::Open(folder.Write("text.wav", "no sound at all"), problem));
  EXPECT_TRUE(problem);
}

TEST(SoundOutput, PlaysFromTheToldTimeSampleForSample) {
  TempFolder folder;
  const std::string out = folder.path + "/out.raw";
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", out.c_str(), 1);
  std::string problem;
  util::Sentence unread;
  const auto sound =
      Sound::Open(WriteSound(folder, "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 24000), unread);
  ASSERT_TRUE(sound) << unread.text;
  // `begin` is the first time told; before the sound's beginning there is silence.
  for (const double begin : {0.5, -0.3}) {
    SoundOutput output;
    output.SetSound(sound);
    const auto start = std::chrono::steady_clock::now();
    double now = 0.0;
    while (now < 0.4) {
      ASSERT_TRUE(output.Follow(begin + now, problem)) << problem;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      now = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    output.Stop();
    std::string bytes;
    ASSERT_TRUE(util::readFile(out, bytes, &problem)) << problem;
    const auto* played = reinterpret_cast<const std::int16_t*>(bytes.data());
    const long count = static_cast<long>(bytes.size() / 4), from = std::lround(begin * kRate);
    EXPECT_GT(count, 0.2 * kRate);
    // Silence until the device has begun, and before the sound's beginning. Where the machine was
    // late the sound goes on as it should be, and its beginning comes so much sooner.
    long first = 0, jumps = 0;
    while (first < count && played[2 * first] == 0) ++first;
    EXPECT_GE(static_cast<double>(first), -static_cast<double>(from) - 0.2 * kRate);
    ASSERT_LT(first, count);
    EXPECT_EQ(played[2 * first], SampleAt(std::max(0L, from), 0));
    long last = std::max(0L, from) - 1;
    for (long i = first; i < count; ++i) {
      const long place = played[2 * i] - 1;
      jumps += place != last + 1 ? 1 : 0;
      last = place;
      ASSERT_EQ(played[2 * i + 1], SampleAt(place, 1)) << i;
    }
    EXPECT_LE(jumps, 2);
    EXPECT_NEAR(last, from + 0.4 * kRate, 0.2 * kRate);
    // What is told jumps: the sound goes along.
    output.Follow(0.0, problem);
    output.Follow(2.0, problem);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    output.Stop();
    ASSERT_TRUE(util::readFile(out, bytes, &problem));
    EXPECT_GE(reinterpret_cast<const std::int16_t*>(bytes.data())[bytes.size() / 2 - 2],
              SampleAt(2 * kRate, 0));
  }
  unsetenv("SDL_AUDIODRIVER");
  unsetenv("SDL_DISKAUDIOFILE");
}

}  // namespace orv::tests
