#include "adaptor/common/Euler.h"

#include <cmath>

#include "util/Angles.h"
#include "util/Matrix.h"

namespace orv::rws::adaptor {

using util::kPi;
using util::Matrix;
using util::Quat;
using util::Vector3;

namespace {

/// Cosine of the middle angle below which the outer two can't be told apart: a unit quaternion's
/// own rounding is about 1e-16, and an angle taken for another at this size moves nothing by more.
constexpr double kLocked = 1e-12;

struct Axes {
  int first, middle, last;
  double sign;  ///< 1 where the three follow each other as X, Y, Z do, else -1
};

Axes AxesOf(RotationOrder order) {
  constexpr Axes kAxes[kRotationOrders] = {{0, 1, 2, 1.0},  {1, 2, 0, 1.0},  {2, 0, 1, 1.0},
                                           {0, 2, 1, -1.0}, {1, 0, 2, -1.0}, {2, 1, 0, -1.0}};
  return kAxes[static_cast<int>(order)];
}

Quat<double> AboutAxis(int axis, double angle) {
  Vector3<double> v;
  v[axis] = std::sin(angle / 2.0);
  return {v.x, v.y, v.z, std::cos(angle / 2.0)};
}

/// The plain solution; `first` is the first axis' angle in gimbal lock.
Vector3<double> Solve(const Quat<double>& rotation, const Axes& axes, double first) {
  const auto [i, j, k, sign] = axes;
  const Matrix<double> m = rotation.toMatrix();
  const Vector3<double> x = m.axisRow(i), y = m.axisRow(j), z = m.axisRow(k);
  Vector3<double> angles;
  const bool locked = std::hypot(y[k], z[k]) < kLocked;
  angles[i] = locked ? first : std::atan2(sign * y[k], z[k]);
  angles[j] = std::atan2(-sign * x[k], std::hypot(x[i], x[j]));
  // With the first turn taken back the last one shows in the middle axis, exact also near the lock,
  // where the angles read from x alone would each be off by more than the rotation may be.
  const double c = std::cos(angles[i]), s = sign * std::sin(angles[i]);
  angles[k] = std::atan2(sign * (s * z[i] - c * y[i]), c * y[j] - s * z[j]);
  return angles + Vector3<double>();  // no -0
}

/// Moves each angle by whole turns as near to `previous` as they get; returns the squared distance.
double Unroll(Vector3<double>& angles, const Vector3<double>& previous) {
  for (int i = 0; i < 3; ++i)
    angles[i] += std::round((previous[i] - angles[i]) / (2.0 * kPi)) * (2.0 * kPi);
  return (angles - previous).lengthSquared();
}

}  // namespace

Quat<double> FromEuler(const Vector3<double>& angles, RotationOrder order) {
  const Axes axes = AxesOf(order);
  return AboutAxis(axes.first, angles[axes.first]) * AboutAxis(axes.middle, angles[axes.middle]) *
         AboutAxis(axes.last, angles[axes.last]);
}

Vector3<double> ToEuler(const Quat<double>& rotation, RotationOrder order) {
  return Solve(rotation, AxesOf(order), 0.0);
}

Vector3<double> ToEulerNear(const Quat<double>& rotation, RotationOrder order,
                            const Vector3<double>& previous) {
  const Axes axes = AxesOf(order);
  Vector3<double> plain = Solve(rotation, axes, previous[axes.first]);
  Vector3<double> other = plain + Vector3<double>(kPi, kPi, kPi);
  other[axes.middle] = kPi - plain[axes.middle];
  const double plainDistance = Unroll(plain, previous);
  return Unroll(other, previous) < plainDistance ? other : plain;
}

}  // namespace orv::rws::adaptor
