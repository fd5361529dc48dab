// A rotation as four numbers, the scalar last.
#pragma once

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::util {

/// A rotation; (0, 0, 0, 1) is the identity and the default. Angles are radians; a rotation vector
/// is the axis times the angle. In `a * b` the rotation a acts first and b afterwards (the Hamilton
/// product of b and a), which is the reverse of `Matrix`, and meant.
template <class T>
struct Quat {
  T x{};
  T y{};
  T z{};
  T w = T(1);

  constexpr Quat() = default;
  constexpr Quat(T xValue, T yValue, T zValue, T wValue)
      : x(xValue), y(yValue), z(zValue), w(wValue) {}

  friend constexpr bool operator==(const Quat& a, const Quat& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
  }
  friend constexpr bool operator!=(const Quat& a, const Quat& b) { return !(a == b); }

  /// First a, then b.
  friend constexpr Quat operator*(const Quat& a, const Quat& b) {
    return {b.x * a.w + a.z * b.y - a.y * b.z + a.x * b.w,
            a.w * b.y - b.x * a.z + a.x * b.z + b.w * a.y,
            a.y * b.x - a.x * b.y + b.z * a.w + b.w * a.z,
            -b.x * a.x - a.y * b.y - b.z * a.z + b.w * a.w};
  }

  /// All four components negated: the same rotation.
  constexpr Quat operator-() const { return {-x, -y, -z, -w}; }
  /// The opposite rotation of a unit quaternion.
  constexpr Quat conjugate() const { return {-x, -y, -z, w}; }
  constexpr T lengthSquared() const { return x * x + y * y + z * z + w * w; }
  T length() const {
    const T sum = lengthSquared();
    if (detail::isWholeSquare(sum)) return std::sqrt(sum);
    const T scale = detail::wholeSquareScale(sum);
    return std::sqrt(scaled(scale).lengthSquared()) / scale;
  }

  /// Divides by the length; zero length becomes the identity.
  void normalize() {
    T sum = lengthSquared();
    if (!detail::isWholeSquare(sum)) {
      *this = scaled(detail::wholeSquareScale(sum));
      sum = lengthSquared();
      if (sum == T(0)) {
        *this = Quat();
        return;
      }
    }
    const T l = std::sqrt(sum);
    *this = {x / l, y / l, z / l, w / l};
  }
  Quat normalized() const {
    Quat q = *this;
    q.normalize();
    return q;
  }

  /// The rotation about v by |v| radians.
  static Quat fromRotationVector(const Vector3<T>& v) {
    const T h = v.length() / T(2);
    Vector3<T> axis = v;
    // The test on the plain sum is meant: a vector such as (1, -1, 0) stays unnormalised.
    if (v.x + v.y + v.z != T(0)) axis.normalize();
    const T s = std::sin(h);
    return {axis.x * s, axis.y * s, axis.z * s, std::cos(h)};
  }

  /// Axis times angle, the angle within [0, pi].
  Vector3<T> toRotationVector() {
    // The flip of the quaternion itself is meant: the caller goes on with the short way round.
    if (w < T(0)) *this = -*this;
    const T half = std::acos(std::clamp(w, T(-1), T(1)));
    const T angle = T(2) * half;
    if (angle == T(0)) return {};
    const T s = std::sin(half);
    return {x / s * angle, y / s * angle, z / s * angle};
  }

  /// The image of v under a unit quaternion.
  constexpr Vector3<T> rotate(const Vector3<T>& v) const {
    const Vector3<T> u = {x, y, z};
    const Vector3<T> t = u.cross(v) * T(2);
    return v + t * w + u.cross(t);
  }

  /// An affine matrix with no translation.
  Matrix<T> toMatrix() const {
    Matrix<T> r;
    r.setAxisRow(0, {x * x - y * y - z * z + w * w, 2 * (x * y + w * z), 2 * (x * z - w * y)});
    r.setAxisRow(1, {2 * (x * y - w * z), y * y - x * x - z * z + w * w, 2 * (y * z + w * x)});
    r.setAxisRow(2, {2 * (x * z + w * y), 2 * (y * z - w * x), z * z + w * w - x * x - y * y});
    return r;
  }

  /// The rotation of m, with its scale removed; w is at or above 0. A mirrored m gives the rotation
  /// that its largest magnitude leads to.
  static Quat fromMatrix(const Matrix<T>& m);

 private:
  constexpr Quat scaled(T s) const { return {x * s, y * s, z * s, w * s}; }
};

template <class T>
Quat<T> Quat<T>::fromMatrix(const Matrix<T>& m) {
  Matrix<T> n = m;
  n.normalizeRows();
  const T a = std::abs(1 + n[0] - n[5] - n[10]);
  const T b = std::abs(1 - n[0] + n[5] - n[10]);
  const T c = std::abs(1 - n[0] - n[5] + n[10]);
  const T d = std::abs(1 + n[0] + n[5] + n[10]);
  Quat q;
  // Ties go to w, then to x, then to y.
  if (!(a > d || b > d || c > d)) {
    const T s = 2 * std::sqrt(d);
    q = {(n[6] - n[9]) / s, (n[8] - n[2]) / s, (n[1] - n[4]) / s, s / 4};
  } else if (!(b > a || c > a)) {
    const T s = 2 * std::sqrt(a);
    q = {s / 4, (n[1] + n[4]) / s, (n[2] + n[8]) / s, (n[6] - n[9]) / s};
  } else if (c > b) {
    const T s = 2 * std::sqrt(c);
    q = {(n[2] + n[8]) / s, (n[6] + n[9]) / s, s / 4, (n[1] - n[4]) / s};
  } else {
    const T s = 2 * std::sqrt(b);
    q = {(n[1] + n[4]) / s, s / 4, (n[6] + n[9]) / s, (n[8] - n[2]) / s};
  }
  q.normalize();
  return q.w < T(0) ? -q : q;
}

static_assert(sizeof(Quat<double>) == 32 && std::is_trivially_copyable_v<Quat<double>>);

}  // namespace orv::util
