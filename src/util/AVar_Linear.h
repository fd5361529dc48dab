// An animated variable that reads linearly between its samples.
#pragma once

#include <cmath>
#include <limits>

#include "util/AVar.h"

namespace orv::util {

namespace detail {

/// Linear between two numbers; the order of operations is part of the result.
inline double linear(double a, double b, double time, double from, double to) {
  return (b - a) * (time - from) / (to - from) + a;
}

/// Truncation that stays defined for what damaged samples may lead to.
inline int truncateToInt(double value) {
  if (std::isnan(value)) return 0;
  if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
  if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

}  // namespace detail

/// For `double`, `int` (truncated), `bool` (true wherever the number is not exactly 0) and
/// `Vector3<double>` (per component).
template <class T>
class AVar_Linear final : public AVar<T> {
 public:
  using Sample = typename AVar<T>::Sample;

  Sample& interpolate(Sample& out, const Sample& a, const Sample& b, double time) const override {
    out.value = between(a.value, b.value, time, a.time, b.time);
    out.time = time;
    return out;
  }

 private:
  static double between(double a, double b, double time, double from, double to) {
    return detail::linear(a, b, time, from, to);
  }
  static int between(int a, int b, double time, double from, double to) {
    return detail::truncateToInt(detail::linear(a, b, time, from, to));
  }
  // Meant: between a false and a later true the value is true right after the false.
  static bool between(bool a, bool b, double time, double from, double to) {
    return detail::linear(a, b, time, from, to) != 0.0;
  }
  static Vector3<double> between(const Vector3<double>& a, const Vector3<double>& b, double time,
                                 double from, double to) {
    return {detail::linear(a.x, b.x, time, from, to), detail::linear(a.y, b.y, time, from, to),
            detail::linear(a.z, b.z, time, from, to)};
  }
};

}  // namespace orv::util
