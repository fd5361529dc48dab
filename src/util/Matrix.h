// A 4 by 4 transform, scale included.
#pragma once

#include <cmath>
#include <type_traits>

#include "util/Angles.h"
#include "util/Vector3.h"

namespace orv::util {

/// Sixteen numbers in the layout of a row-vector matrix: elements 0-3, 4-7 and 8-11 are the images
/// of the X, Y and Z axes (the "axis rows"), 12 to 14 the translation, 15 is 1. A
/// default-constructed matrix is the identity. In `A * B` the transform B acts on a point first and
/// A afterwards, which is the reverse of `Quat`: `(a * b).toMatrix()` equals `b.toMatrix() *
/// a.toMatrix()`.
template <class T>
struct Matrix {
  T m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

  T& operator[](int i) { return m[i]; }
  const T& operator[](int i) const { return m[i]; }
  T* data() { return m; }
  const T* data() const { return m; }

  friend bool operator==(const Matrix& a, const Matrix& b) {
    for (int i = 0; i < 16; ++i)
      if (!(a.m[i] == b.m[i])) return false;
    return true;
  }
  friend bool operator!=(const Matrix& a, const Matrix& b) { return !(a == b); }

  /// First b, then a, over all sixteen elements.
  friend Matrix operator*(const Matrix& a, const Matrix& b) {
    Matrix out;
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c) {
        T sum = b.m[4 * r] * a.m[c];
        for (int k = 1; k < 4; ++k) sum += b.m[4 * r + k] * a.m[4 * k + c];
        out.m[4 * r + c] = sum;
      }
    return out;
  }

  /// Elements 12 to 14.
  Vector3<T> translation() const { return {m[12], m[13], m[14]}; }
  void setTranslation(const Vector3<T>& t) {
    m[12] = t.x;
    m[13] = t.y;
    m[14] = t.z;
  }
  /// The image of axis `i` (0 = X, 1 = Y, 2 = Z), its length being the scale along that axis.
  Vector3<T> axisRow(int i) const { return {m[4 * i], m[4 * i + 1], m[4 * i + 2]}; }
  void setAxisRow(int i, const Vector3<T>& row) {
    m[4 * i] = row.x;
    m[4 * i + 1] = row.y;
    m[4 * i + 2] = row.z;
  }

  /// The image of point p, divided by the fourth coordinate unless that is exactly 0.
  Vector3<T> transformPoint(const Vector3<T>& p) const {
    const Vector3<T> q = {p.x * m[0] + p.y * m[4] + p.z * m[8] + m[12],
                          p.x * m[1] + p.y * m[5] + p.z * m[9] + m[13],
                          p.x * m[2] + p.y * m[6] + p.z * m[10] + m[14]};
    const T d = p.x * m[3] + p.y * m[7] + p.z * m[11] + m[15];
    return d == T(0) ? q : q / d;
  }
  /// The image of direction v: the upper-left 3 by 3 block alone.
  Vector3<T> transformVector(const Vector3<T>& v) const {
    return {v.x * m[0] + v.y * m[4] + v.z * m[8], v.x * m[1] + v.y * m[5] + v.z * m[9],
            v.x * m[2] + v.y * m[6] + v.z * m[10]};
  }

  /// A rotation about the unit axis (x, y, z), right-handed, by `angle` DEGREES (the one place of
  /// this folder that does not take radians).
  static Matrix rotationAxisAngle(T angle, T x, T y, T z) {
    const T radians = angle * T(kRadiansPerDegree);
    const T c = std::cos(radians);
    const T s = std::sin(radians);
    Matrix r;
    r.setAxisRow(0, {x * x * (1 - c) + c, s * z + x * y * (1 - c), x * z * (1 - c) - s * y});
    r.setAxisRow(1, {x * y * (1 - c) - s * z, y * y * (1 - c) + c, s * x + y * z * (1 - c)});
    r.setAxisRow(2, {s * y + x * z * (1 - c), y * z * (1 - c) - s * x, z * z * (1 - c) + c});
    return r;
  }

  /// Lengths of the three axis rows: the scale.
  Vector3<T> rowLengths() const {
    return {axisRow(0).length(), axisRow(1).length(), axisRow(2).length()};
  }
  /// Gives each axis row the length of its component of `scale`. A zero row counts as "up".
  void setRowLengths(const Vector3<T>& scale) {
    for (int i = 0; i < 3; ++i) setAxisRow(i, axisRow(i).normalized() * scale[i]);
  }
  void setRowLengthsFrom(const Matrix& other) { setRowLengths(other.rowLengths()); }
  /// Makes each axis row a unit vector: removes the scale.
  void normalizeRows() {
    for (int i = 0; i < 3; ++i) setAxisRow(i, axisRow(i).normalized());
  }

  /// The inverse of the upper-left 3 by 3 block. The translation is not inverted but dropped: the
  /// result has none. A singular block (determinant exactly 0) gives the zero matrix.
  Matrix inverse3x3() const {
    const Vector3<T> a = axisRow(0), b = axisRow(1), c = axisRow(2);
    const Vector3<T> bc = b.cross(c), ca = c.cross(a), ab = a.cross(b);
    const T determinant = a.dot(bc);
    Matrix r;
    if (determinant == T(0)) {
      // All zero, element 15 too: a caller sees at once that nothing can be mapped back.
      r.m[0] = r.m[5] = r.m[10] = r.m[15] = T(0);
      return r;
    }
    for (int i = 0; i < 3; ++i)
      r.setAxisRow(i, {bc[i] / determinant, ca[i] / determinant, ab[i] / determinant});
    return r;
  }

  /// The inverse of an affine matrix, translation included; the zero matrix if it has none.
  Matrix affineInverse() const {
    Matrix r = inverse3x3();
    r.setTranslation(-r.transformVector(translation()));
    return r;
  }
};

static_assert(sizeof(Matrix<double>) == 128 && std::is_trivially_copyable_v<Matrix<double>>);

}  // namespace orv::util
