#include "adaptor/headless/FrameRate.h"

#include <cmath>

#include "util/NumberText.h"

namespace orv::rws::adaptor::headless {

namespace {

/// Where a time may lie beside its frame: what exporters round away (s), and a float's step.
constexpr double kNearInTime = 1e-5;
constexpr double kFloatStep = 1.2e-7;
/// Frames; a tolerance beyond this can't tell one frame from the next any more.
constexpr double kWidest = 0.1;

}  // namespace

bool ParseFrameRate(std::string_view text, double& rate) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return util::parseNumber(text, rate);
  double above = 0.0;
  double below = 0.0;
  if (!util::parseNumber(text.substr(0, slash), above) ||
      !util::parseNumber(text.substr(slash + 1), below) || !std::isfinite(above / below))
    return false;
  rate = above / below;
  return true;
}

std::string FrameRateText(double rate) {
  const double whole = std::round(rate * 1.001);
  if (rate == std::round(rate) || rate != whole * 1000.0 / 1001.0) return util::shortText(rate);
  return util::shortText(std::round(rate * 1000.0) / 1000.0) + " (" +
         util::shortText(whole * 1000.0) + "/1001)";
}

bool StandsOnFrame(double time, double rate) {
  const double tolerance = (kNearInTime + std::abs(time) * kFloatStep) * rate;
  const double frame = time * rate;
  return tolerance <= kWidest && std::abs(frame - std::round(frame)) <= tolerance;
}

}  // namespace orv::rws::adaptor::headless
