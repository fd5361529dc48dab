// A projectile's velocity by time, in little space.
#pragma once

#include <vector>

#include "plugins/release/firepower/Flight.h"

namespace orv::util {
class DataChunk;
}

namespace orv::rws::addon {

class SaveReader;

/// Holds a velocity where a flight begins or is changed by a hit or by a setting; what lies between
/// follows from it, bit for bit, by the steps of the flight itself. A frame costs nothing, and a
/// read the frames since the latest mark. Thousands of projectiles would fill the memory else.
class VelocityMemory {
 public:
  /// The velocity (m/s) from `time` (s) on, flown by `rules` in frames of `duration` (s).
  void Mark(double time, const util::Vector3<double>& velocity, const FlightRules& rules,
            double duration);
  /// Whether a flight by these from the latest mark on needs no other.
  bool Covers(const FlightRules& rules, double duration) const;
  /// The flight has come to the frame at `time`.
  void Reach(double time) { m_last = time; }
  double GetLast() const { return m_last; }
  /// The velocity in the frame at `time`, or in the last one that was reached.
  util::Vector3<double> At(double time) const;
  /// Whether something other than the rules has changed it up to the frame at `time`.
  bool IsTurnedUntil(double time) const;
  /// Forgets what lies behind the frame at `time`.
  void CutBehind(double time);

  void Save(util::DataChunk& chunk, const char* key) const;
  void Load(SaveReader& reader, const util::DataChunk& chunk, const char* key);

 private:
  /// Velocity of a frame.
  struct Sample {
    double time;
    util::Vector3<double> velocity;
  };
  /// How a flight goes on from a mark, until the next of these.
  struct Span {
    double time;
    FlightRules rules;
    double duration;
  };

  std::vector<Sample> m_marks;  ///< in rising time
  std::vector<Span> m_spans;    ///< in rising time; the first begins with the first mark
  double m_last = 0.0;          ///< time of the latest frame (s)
};

}  // namespace orv::rws::addon
