// What lies along a time line.
#pragma once

#include <string>
#include <vector>

namespace orv::app::timeline {

/// A stretch of time with a name (s).
struct Bar {
  double from = 0.0, to = 0.0;
  std::string name;
  int lane = 0;
};

/// Bars of equal times become one with all names; those that overlap get lanes of their own, of
/// which there are at most `most`: the last takes what is left. The number of lanes comes back.
int StackBars(std::vector<Bar>& bars, int most);

/// The nearest of `times`, which rise, behind or before `time` by more than `tolerance`; false
/// without one.
bool FindNext(const std::vector<double>& times, double time, bool later, double tolerance,
              double& found);

/// Rows of a painted time line, from the top, and what a place in it means.
struct Rows {
  double ruler = 0.0, keys = 0.0, takes = 0.0, sound = 0.0, range = 0.0;  ///< their lower ends

  enum class Part { kTime, kSound, kRangeBegin, kRangeEnd, kRange };
  /// `begin` and `end` are the range's, and those of the sound (`soundEnd` at most `soundBegin`:
  /// there is none), along `x`.
  Part Find(double x, double y, double begin, double end, double soundBegin, double soundEnd,
            double reach) const;
};

}  // namespace orv::app::timeline
