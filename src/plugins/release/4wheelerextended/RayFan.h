// The angles of the extra rays round a wheel.
#pragma once

#include <cmath>
#include <vector>

#include "util/Angles.h"

namespace orv::rws::addon {

/// One fan serves all wheels of a car, so that a car among many brings few lines of it back into
/// the processor's caches in each frame.
class RayFan {
 public:
  struct Angle {
    double sine, cosine;
    bool IsCentre() const { return sine == 0.0; }
  };

  /// `rays` on each side of the suspension line, the line itself among them, every `degrees`, and
  /// none farther out than a quarter turn.
  void Plan(int rays, double degrees) {
    if (m_rays == rays && m_degrees == degrees) return;
    m_rays = rays;
    m_degrees = degrees;
    const double step = degrees / 180.0 * util::kPi;
    int count = rays - 1;
    if (count * step > util::kQuarterTurn) count = static_cast<int>(util::kQuarterTurn / step);
    m_angles.clear();
    for (int k = -count; k <= count; ++k)
      m_angles.push_back({std::sin(k * step), std::cos(k * step)});
  }
  /// From one side of the wheel to the other.
  const std::vector<Angle>& GetAngles() const { return m_angles; }

 private:
  std::vector<Angle> m_angles;
  int m_rays = 0;
  double m_degrees = 0.0;
};

}  // namespace orv::rws::addon
