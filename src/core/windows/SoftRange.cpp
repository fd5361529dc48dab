#include "core/windows/SoftRange.h"

#include <algorithm>
#include <cmath>

namespace orv::rws::core::windows {

namespace {

constexpr double kMostSteps = 2000.0;
constexpr double kLeastSteps = 100.0;

/// The least of 1, 2 and 5 times a power of ten that is not below `value`, which is positive.
double RoundUp(double value) {
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double digit : {1.0, 2.0, 5.0})
    if (digit * power >= value) return digit * power;
  return 10.0 * power;
}

}  // namespace

SoftRange SoftRangeOf(const ConfigElement::Range& range, double value, double usual) {
  const double step = range.step > 0.0 && std::isfinite(range.step) ? range.step : 0.01;
  SoftRange soft{range.min, range.max};
  if (!(range.max - range.min <= kMostSteps * step)) {
    const double far = 2.0 * std::max(std::abs(value), std::abs(usual));
    const double reach = RoundUp(std::clamp(far, kLeastSteps * step, 1e300));
    soft.from = std::max(range.min, -reach);
    soft.to = std::min(range.max, reach);
  }
  // A range beside 0, or none: what the slider shows must have a length.
  if (!(soft.from < soft.to)) soft = {range.min, range.min + std::max(step, std::abs(range.min))};
  return soft;
}

}  // namespace orv::rws::core::windows
