// A curve of the host's scene at one time.
#pragma once

#include "core/interface/CExtendable.h"
#include "util/LeastBetween.h"
#include "util/Vector3.h"

namespace orv::rws {

/// Reads a curve. Points and tangents are in world space; `fraction` runs along the arc length from
/// 0 to 1 and is clamped to that range.
class CSnapshot_Shape : public CExtendable {
 public:
  virtual int GetCount() = 0;   ///< number of curves, always 1 today
  virtual int GetDegree() = 0;  ///< 1 for a polyline
  virtual int Reserved() { return 0; }
  virtual double GetLength() = 0;  ///< arc length (m)
  virtual util::Vector3<double> GetPoint(double fraction) = 0;
  virtual util::Vector3<double> GetTangent(double fraction) = 0;  ///< unit vector
  /// Fraction of the curve's point that is closest to `point`; of several the first. This search
  /// serves any curve; a host that knows its curves better has a better one.
  virtual double GetClosest(const util::Vector3<double>& point) {
    constexpr int kSamples = 1000, kRefinements = 60;
    const auto distance = [&](double fraction) {
      return (GetPoint(fraction) - point).lengthSquared();
    };
    int best = 0;
    for (int i = 1; i <= kSamples; ++i)
      if (distance(1.0 * i / kSamples) < distance(1.0 * best / kSamples)) best = i;
    const double low = best > 0 ? (best - 1.0) / kSamples : 0.0;
    const double high = best < kSamples ? (best + 1.0) / kSamples : 1.0;
    const double middle = util::leastBetween(low, high, kRefinements, distance);
    const double sample = 1.0 * best / kSamples;
    return distance(middle) < distance(sample) ? middle : sample;
  }
  ~CSnapshot_Shape() override = default;
};

}  // namespace orv::rws
