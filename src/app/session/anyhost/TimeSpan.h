// Stretches of time.
#pragma once

#include <string>

namespace orv::app {

/// Seconds of a run.
struct TimeSpan {
  double from = 0.0;
  double to = 0.0;
};
inline bool operator==(const TimeSpan& a, const TimeSpan& b) {
  return a.from == b.from && a.to == b.to;
}

/// "0 to 10 s", without what rounding adds to frames' times.
std::string RangeText(const TimeSpan& span);

/// Why frames of this time can't be numbered by the engine; empty when all is well.
std::string CheckFrameNumbers(const TimeSpan& span, double frameRate);

}  // namespace orv::app
