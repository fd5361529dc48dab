#include "app/session/anyhost/TimeSpan.h"

#include <cmath>

#include "util/NumberText.h"

namespace orv::app {

namespace {

/// Index of a frame is a whole number of 32 bits in the engine.
constexpr double kMostFrames = 1e9;

std::string TimeText(double seconds) {
  return util::shortText(std::round(seconds * 1e6) / 1e6);
}

}  // namespace

std::string RangeText(const TimeSpan& span) {
  return TimeText(span.from) + " to " + TimeText(span.to) + " s";
}

std::string CheckFrameNumbers(const TimeSpan& span, double frameRate) {
  const double time = std::abs(span.from) > std::abs(span.to) ? span.from : span.to;
  if (std::abs(time) * frameRate <= kMostFrames) return {};
  return util::shortText(time) + " s at " + util::shortText(frameRate) +
         " frames/s is beyond the last frame that can be numbered, " + util::shortText(kMostFrames);
}

}  // namespace orv::app
