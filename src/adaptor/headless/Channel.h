/// Keys of one property of a node.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::rws::adaptor::headless {

/// The property that a channel moves.
enum class ChannelPath { kTranslation, kRotation, kScale };

/// How a channel goes from key to key.
enum class Interpolation { kLinear, kStep, kCubicSpline };

/// Number of values of one key: 4 for a rotation (x, y, z, w), else 3.
constexpr int ComponentCount(ChannelPath path) {
  return path == ChannelPath::kRotation ? 4 : 3;
}

/// Animation of a translation (m), a rotation (unit quaternion) or a scale (factor) over time (s).
/// Times rise strictly. Before the first and behind the last key the value is held. A value type;
/// copies, and channels that were told to, hold one list of times as long as none changes its own.
///
/// LINEAR goes along the straight line, for rotations along the shorter great circle; at a key's
/// time the value is exactly the key's. A CUBICSPLINE key has three values: the tangent that comes
/// in, the value, the tangent that goes out (per second).
///
/// Evaluation allocates nothing and remembers the last interval, so that playing in time order
/// needs no search; because of that a channel must not be evaluated on two threads at once.
class Channel {
 public:
  explicit Channel(ChannelPath path, Interpolation mode = Interpolation::kLinear);

  ChannelPath GetPath() const { return m_path; }
  Interpolation GetMode() const { return m_mode; }
  bool IsEmpty() const { return m_times->empty(); }
  std::size_t GetKeyCount() const { return m_times->size(); }
  const std::vector<double>& GetTimes() const { return *m_times; }
  /// All keys' values one after the other, `ValuesPerKey()` for each.
  const std::vector<double>& GetValues() const { return m_values; }
  int ValuesPerKey() const;

  /// Replaces all keys. False, with the channel as it was, when times do not rise strictly, a
  /// number is not finite, or there are not `ValuesPerKey()` values for each time.
  bool SetKeys(std::vector<double> times, std::vector<double> values);

  /// Sets a LINEAR key at `time` (replacing one within kSameTime of it); `value` has
  /// `ComponentCount` numbers. A STEP or CUBICSPLINE channel becomes LINEAR first, by its own keys
  /// and frames (see `Bake`).
  /// False, with the channel as it was, when a number is not finite or the channel can't be baked.
  bool SetKey(double time, const double* value, double frameDuration);

  /// Puts a take's keys into the channel: keys before `start` stay, those from `start` to `end`
  /// give way to the take's, those behind `end` stay (give infinity to let none stay). Keys within
  /// kSameTime of the bounds count as inside. `times` rise strictly, `values` holds
  /// `ComponentCount` numbers per time. The channel is LINEAR afterwards: of a STEP or CUBICSPLINE
  /// channel what stays is baked (see `Bake`).
  /// False, with the channel as it was, when the take's keys are not in order or not finite, or
  /// baking would take more than kMostBakedKeys.
  bool ReplaceKeys(double start, double end, const std::vector<double>& times,
                   const std::vector<double>& values, double frameDuration);

  /// Makes a STEP or CUBICSPLINE channel LINEAR: one key at its first and last time and at each
  /// multiple of `frameDuration` (s, above 0) between. A LINEAR channel stays as it is. False, with
  /// the channel as it was, when that takes more than kMostBakedKeys.
  bool Bake(double frameDuration);

  /// Holds the times of `other` in place of its own when they are the same, to save memory.
  void ShareTimes(const Channel& other);

  /// Value at `time`: `ComponentCount(GetPath())` numbers. The channel must not be empty.
  void Evaluate(double time, double* value) const;

  /// Times closer than this are one key (s).
  static constexpr double kSameTime = 1e-5;
  static constexpr double kMostBakedKeys = 1e7;

  friend bool operator==(const Channel& a, const Channel& b) {
    return a.m_path == b.m_path && a.m_mode == b.m_mode && a.GetTimes() == b.GetTimes() &&
           a.m_values == b.m_values;
  }
  friend bool operator!=(const Channel& a, const Channel& b) { return !(a == b); }

 private:
  std::vector<double>& OwnTimes();
  std::size_t IntervalAt(double time) const;
  void KeyValue(std::size_t key, double* value) const;
  void InterpolateLinear(std::size_t key, double s, double* value) const;
  void InterpolateCubic(std::size_t key, double s, double dt, double* value) const;

  ChannelPath m_path;
  Interpolation m_mode;
  std::shared_ptr<std::vector<double>> m_times;  ///< never null; changed through OwnTimes only
  std::vector<double> m_values;
  mutable std::size_t m_cursor = 0;  ///< interval of the last evaluation
};

}  // namespace orv::rws::adaptor::headless
