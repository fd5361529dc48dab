// A value over time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "util/FlatForm.h"

namespace orv::util {

/// The store of an animated variable: one sample per simulated frame, read at any time. The kinds
/// (`AVar_Linear`, `AVar_Nearest`, `AVar_Latest`, `AVar_Matrix`) decide only what lies between two
/// samples. Times are seconds on the host's time line. Appending is constant time, a read
/// logarithmic.
template <class T>
class AVar {
 public:
  struct Sample {
    double time = -1.0;  ///< s; -1 marks a sample that nothing was read into
    T value{};

    friend bool operator==(const Sample& a, const Sample& b) {
      return a.time == b.time && a.value == b.value;
    }
    friend bool operator!=(const Sample& a, const Sample& b) { return !(a == b); }
  };

  std::vector<Sample> samples;  ///< in strictly ascending order of time
  T defaultValue{};             ///< what a read gives while there are no samples

  /// Writes into `out`, and returns, the sample for `time`, between its neighbours a and b (a
  /// earlier).
  virtual Sample& interpolate(Sample& out, const Sample& a, const Sample& b, double time) const = 0;

  /// Bytes of the flat form: a header of 16, then each sample's time and value.
  virtual std::size_t flatSize() const { return kHeaderSize + samples.size() * kSampleSize; }

  /// Writes the flat form. A `capacity` under `flatSize()` gets the header alone, its count 0, by
  /// which (and by the payload size) the caller detects the short buffer; under 16, nothing.
  virtual void save(void* buffer, std::size_t capacity) const;

  /// Reads a flat form that this system wrote into memory of at least its size. A foreign header
  /// changes nothing; a wrong payload size leaves `count` samples of time -1. `defaultValue` stays.
  virtual void load(const void* buffer);

  /// The same for `size` bytes from outside. Fewer than a header change nothing; fewer than the
  /// count needs leave placeholders as a wrong payload size does: that many, or, of a count that no
  /// take has and the bytes can't hold, as many as they could, so that damage costs no memory.
  void load(const void* buffer, std::size_t size);

  /// The value at `time`: no extrapolation, and `defaultValue` when there are no samples.
  T value(double time) const;

  /// Stores a sample, replacing one of exactly this time; returns its index. Fast at the end.
  int set(double time, const T& value);

  /// Index of the sample nearest to `time`, the later one on a tie; -1 if there are none.
  int find(double time) const;

  /// Erases the first sample at or after `time` and all behind it: what a rewind does to the
  /// future.
  void cutFrom(double time) {
    const auto first =
        std::lower_bound(samples.begin(), samples.end(), time,
                         [](const Sample& sample, double t) { return sample.time < t; });
    samples.erase(first, samples.end());
  }

  /// Same samples and same default, whatever the kind.
  friend bool operator==(const AVar& a, const AVar& b) {
    return a.defaultValue == b.defaultValue && a.samples == b.samples;
  }
  friend bool operator!=(const AVar& a, const AVar& b) { return !(a == b); }

 protected:
  // Variables are members of their rigs, never owned through this base.
  AVar() = default;
  AVar(const AVar&) = default;
  AVar(AVar&&) = default;
  AVar& operator=(const AVar&) = default;
  AVar& operator=(AVar&&) = default;
  ~AVar() = default;

 private:
  /// Makes room by larger steps than a vector's own doubling while there are few samples: most of
  /// an append's cost is fresh memory and the copy into it.
  void grow() {
    const std::size_t count = samples.size();
    samples.reserve(count < 64 ? 64 : count < 16384 ? count * 4 : count * 2);
  }

  static constexpr std::uint32_t kHeaderSize = 16;
  static constexpr std::uint32_t kVersion = 100;
  static constexpr std::size_t kSampleSize = 8 + FlatForm<T>::size;
  /// Placeholders that a short buffer may leave whatever its size: 45 minutes of frames.
  static constexpr std::size_t kMostPlaceholders = 65536;

  /// Whether `from` begins with a header of ours.
  static bool hasHeader(const unsigned char* from) {
    return detail::getWord<std::uint32_t>(from) == kHeaderSize &&
           detail::getWord<std::uint32_t>(from + 8) == kVersion;
  }

  /// Of samples `i` and i + 1, the nearer to `time`.
  int nearer(int i, double time) const {
    return time - samples[i].time < samples[i + 1].time - time ? i : i + 1;
  }

  /// The last sample before `time` if the samples stood evenly, which a take's mostly do; never the
  /// last one of all. -1 where times that are no numbers allow no guess.
  int guessBefore(double time) const {
    const int last = static_cast<int>(samples.size()) - 1;
    const double start = samples.front().time;
    const double guess = (time - start) / (samples.back().time - start) * last;
    return guess >= 0.0 && guess < last ? static_cast<int>(guess) : -1;
  }
};

template <class T>
int AVar<T>::find(double time) const {
  if (samples.empty()) return -1;
  const Sample* const s = samples.data();
  if (s[0].time > time) return 0;
  const int last = static_cast<int>(samples.size()) - 1;
  if (time >= s[last].time) return last;
  const int guess = guessBefore(time);
  if (guess >= 0 && s[guess].time <= time && time <= s[guess + 1].time) return nearer(guess, time);
  int low = 0;
  int high = last;
  while (low <= high) {
    const int probe = low + (high - low) / 2;
    const double t = s[probe].time;
    if (t == time) return probe;
    if (t > time)
      high = probe - 1;
    else
      low = probe + 1;
  }
  if (high >= last) return last;
  if (high < 0) return 0;
  return nearer(high, time);
}

template <class T>
T AVar<T>::value(double time) const {
  const int i = find(time);
  if (i < 0) return defaultValue;
  const Sample& sample = samples[i];
  if (sample.time == time) return sample.value;
  const bool before = time < sample.time;
  const int neighbour = before ? i - 1 : i + 1;
  if (neighbour < 0 || neighbour >= static_cast<int>(samples.size())) return sample.value;
  Sample out;
  return before ? interpolate(out, samples[neighbour], sample, time).value
                : interpolate(out, sample, samples[neighbour], time).value;
}

template <class T>
int AVar<T>::set(double time, const T& value) {
  const int count = static_cast<int>(samples.size());
  if (count == 0 || time > samples.back().time) {
    if (samples.size() == samples.capacity()) grow();
    samples.push_back({time, value});
    return count;
  }
  int i = count - 1;
  for (; i >= 0; --i) {
    if (samples[i].time == time) {
      samples[i].value = value;
      return i;
    }
    if (samples[i].time < time) break;
  }
  samples.insert(samples.begin() + (i + 1), Sample{time, value});
  return i + 1;
}

template <class T>
void AVar<T>::save(void* buffer, std::size_t capacity) const {
  if (capacity < kHeaderSize) return;
  const auto put32 = [](unsigned char* to, std::size_t word) {
    detail::putWord(to, static_cast<std::uint32_t>(word));
  };
  auto* to = static_cast<unsigned char*>(buffer);
  put32(to, kHeaderSize);
  put32(to + 4, flatSize() - kHeaderSize);
  put32(to + 8, kVersion);
  put32(to + 12, 0);
  if (capacity < flatSize()) return;
  put32(to + 12, samples.size());
  to += kHeaderSize;
  for (const Sample& sample : samples) {
    detail::putDouble(to, sample.time);
    FlatForm<T>::put(to + 8, sample.value);
    to += kSampleSize;
  }
}

template <class T>
void AVar<T>::load(const void* buffer) {
  const auto* from = static_cast<const unsigned char*>(buffer);
  if (!hasHeader(from)) return;
  samples.clear();
  samples.resize(detail::getWord<std::uint32_t>(from + 12));
  // Meant: a damaged buffer leaves empty samples of time -1, and not the old ones.
  if (detail::getWord<std::uint32_t>(from + 4) != flatSize() - kHeaderSize) return;
  from += kHeaderSize;
  for (Sample& sample : samples) {
    sample.time = detail::getDouble(from);
    sample.value = FlatForm<T>::get(from + 8);
    from += kSampleSize;
  }
}

template <class T>
void AVar<T>::load(const void* buffer, std::size_t size) {
  if (size < kHeaderSize) return;
  const auto* from = static_cast<const unsigned char*>(buffer);
  const std::size_t count = detail::getWord<std::uint32_t>(from + 12);
  const std::size_t room = (size - kHeaderSize) / kSampleSize;
  if (count <= room) return load(buffer);
  if (!hasHeader(from)) return;
  samples.clear();
  samples.resize(count <= kMostPlaceholders ? count : room);
}

}  // namespace orv::util
