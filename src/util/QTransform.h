// A pose without scale.
#pragma once

#include <type_traits>

#include "util/Matrix.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::util {

/// Position (m), then rotation: seven numbers in this order. Where scale matters use `Matrix`.
template <class T>
struct QTransform {
  Vector3<T> position;
  Quat<T> rotation;

  friend constexpr bool operator==(const QTransform& a, const QTransform& b) {
    return a.position == b.position && a.rotation == b.rotation;
  }
  friend constexpr bool operator!=(const QTransform& a, const QTransform& b) { return !(a == b); }

  /// The rotation's matrix with the position as its translation.
  Matrix<T> toMatrix() const {
    Matrix<T> m = rotation.toMatrix();
    m.setTranslation(position);
    return m;
  }
  /// Position and rotation of an affine m; its scale is dropped.
  static QTransform fromMatrix(const Matrix<T>& m) {
    return {m.translation(), Quat<T>::fromMatrix(m)};
  }
};

static_assert(sizeof(QTransform<double>) == 56 && std::is_trivially_copyable_v<QTransform<double>>);

}  // namespace orv::util
