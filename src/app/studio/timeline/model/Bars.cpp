#include "app/studio/timeline/model/Bars.h"

#include <algorithm>
#include <cmath>

namespace orv::app::timeline {

int StackBars(std::vector<Bar>& bars, int most) {
  std::stable_sort(bars.begin(), bars.end(), [](const Bar& a, const Bar& b) {
    return a.from != b.from ? a.from < b.from : a.to > b.to;
  });
  std::vector<Bar> joined;
  for (Bar& bar : bars) {
    const bool same =
        !joined.empty() && joined.back().from == bar.from && joined.back().to == bar.to;
    if (same)
      joined.back().name += ", " + bar.name;
    else
      joined.push_back(std::move(bar));
  }
  std::vector<double> ends;
  for (Bar& bar : joined) {
    std::size_t lane = 0;
    while (lane < ends.size() && ends[lane] > bar.from) ++lane;
    lane = std::min(lane, static_cast<std::size_t>(most - 1));
    if (lane == ends.size()) ends.push_back(bar.to);
    ends[lane] = std::max(ends[lane], bar.to);
    bar.lane = static_cast<int>(lane);
  }
  bars = std::move(joined);
  return static_cast<int>(ends.size());
}

bool FindNext(const std::vector<double>& times, double time, bool later, double tolerance,
              double& found) {
  if (later) {
    const auto next = std::upper_bound(times.begin(), times.end(), time + tolerance);
    if (next == times.end()) return false;
    found = *next;
    return true;
  }
  const auto next = std::lower_bound(times.begin(), times.end(), time - tolerance);
  if (next == times.begin()) return false;
  found = *(next - 1);
  return true;
}

Rows::Part Rows::Find(double x, double y, double begin, double end, double soundBegin,
                      double soundEnd, double reach) const {
  if (y >= takes && y < sound && soundEnd > soundBegin && x >= soundBegin && x <= soundEnd)
    return Part::kSound;
  if (y < sound) return Part::kTime;
  const double toBegin = std::abs(x - begin), toEnd = std::abs(x - end);
  // Of two ends that lie together the one on whose side the pointer is.
  if (toEnd <= reach && (toEnd < toBegin || x >= end)) return Part::kRangeEnd;
  if (toBegin <= reach) return Part::kRangeBegin;
  return x > begin && x < end ? Part::kRange : Part::kTime;
}

}  // namespace orv::app::timeline
