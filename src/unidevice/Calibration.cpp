#include "unidevice/Calibration.h"

#include <algorithm>
#include <cmath>

#include "util/NumberText.h"

namespace orv::unidevice {

double Calibration::apply(double hardware) const {
  if (kind == Kind::kNone) return hardware;
  const double up = (hardware - rest) / (full - rest);
  if (kind == Kind::kPedal || up >= 0.0) return std::clamp(up, 0.0, 1.0);
  return -std::clamp((hardware - rest) / (low - rest), 0.0, 1.0);
}

util::Sentence Calibration::problem() const {
  if (kind == Kind::kNone) return {};
  if (!std::isfinite(rest) || !std::isfinite(full) || !std::isfinite(low))
    return {"One of the values is not a finite number."};
  const auto tooNear = [this](double end) { return std::abs(end - rest) < kLeastTravel; };
  if (tooNear(full))
    return {"Rest (%1) and full (%2) are too near to each other: they must lie %3 apart.",
            {util::shortText(rest), util::shortText(full), util::shortText(kLeastTravel)}};
  if (kind == Kind::kPedal) return {};
  if (tooNear(low))
    return {
        "The centre (%1) and the low end (%2) are too near to each other: they must lie %3 apart.",
        {util::shortText(rest), util::shortText(low), util::shortText(kLeastTravel)}};
  if ((full > rest) == (low > rest))
    return {"The centre (%1) does not lie between the ends (%2 and %3).",
            {util::shortText(rest), util::shortText(low), util::shortText(full)}};
  return {};
}

bool operator==(const Calibration& a, const Calibration& b) {
  return a.kind == b.kind && a.rest == b.rest && a.full == b.full && a.low == b.low;
}

}  // namespace orv::unidevice
