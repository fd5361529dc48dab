// Three numbers: a point, a direction, a velocity or a rotation vector.
#pragma once

#include <cmath>
#include <type_traits>

#include "util/LengthRange.h"

namespace orv::util {

/// Three components in a right-handed, Y-up space; the unit is the user's (metres in rig space).
template <class T>
struct Vector3 {
  T x{};
  T y{};
  T z{};

  constexpr Vector3() = default;
  constexpr Vector3(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}

  /// Component `i`: 0 is x, 1 is y, anything else z.
  constexpr T& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
  constexpr const T& operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }

  constexpr Vector3& operator+=(const Vector3& o) {
    x += o.x;
    y += o.y;
    z += o.z;
    return *this;
  }
  constexpr Vector3& operator-=(const Vector3& o) {
    x -= o.x;
    y -= o.y;
    z -= o.z;
    return *this;
  }
  constexpr Vector3& operator*=(T s) {
    x *= s;
    y *= s;
    z *= s;
    return *this;
  }
  constexpr Vector3& operator/=(T s) {
    x /= s;
    y /= s;
    z /= s;
    return *this;
  }
  constexpr Vector3 operator-() const { return {-x, -y, -z}; }

  friend constexpr Vector3 operator+(Vector3 a, const Vector3& b) { return a += b; }
  friend constexpr Vector3 operator-(Vector3 a, const Vector3& b) { return a -= b; }
  friend constexpr Vector3 operator*(Vector3 a, T s) { return a *= s; }
  friend constexpr Vector3 operator*(T s, Vector3 a) { return a *= s; }
  friend constexpr Vector3 operator/(Vector3 a, T s) { return a /= s; }
  friend constexpr bool operator==(const Vector3& a, const Vector3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  friend constexpr bool operator!=(const Vector3& a, const Vector3& b) { return !(a == b); }

  constexpr T dot(const Vector3& o) const { return x * o.x + y * o.y + z * o.z; }
  /// Right-handed: X cross Y is Z.
  constexpr Vector3 cross(const Vector3& o) const {
    return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
  }
  constexpr T lengthSquared() const { return dot(*this); }
  /// Right as far as a double reaches, though `lengthSquared` overflows beyond 1e154.
  T length() const {
    const T sum = lengthSquared();
    if (detail::isWholeSquare(sum)) return std::sqrt(sum);
    const T scale = detail::wholeSquareScale(sum);
    return std::sqrt((*this * scale).lengthSquared()) / scale;
  }

  /// Divides by the length.
  void normalize() {
    T sum = lengthSquared();
    if (!detail::isWholeSquare(sum)) {
      *this *= detail::wholeSquareScale(sum);
      sum = lengthSquared();
      // A zero vector becomes "up", and not zero: callers rely on a unit vector in every case.
      if (sum == T(0)) {
        *this = {T(0), T(1), T(0)};
        return;
      }
    }
    *this /= std::sqrt(sum);
  }
  /// The same on a copy.
  Vector3 normalized() const {
    Vector3 v = *this;
    v.normalize();
    return v;
  }
};

static_assert(sizeof(Vector3<double>) == 24 && std::is_trivially_copyable_v<Vector3<double>>);

}  // namespace orv::util
