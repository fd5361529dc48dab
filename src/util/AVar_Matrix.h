// An animated transform, scale included.
#pragma once

#include "util/AVar.h"
#include "util/Matrix.h"
#include "util/QTransform.h"
#include "util/ResponseFilters.h"

namespace orv::util {

/// Between two samples position and scale go linearly and the rotation turns evenly about one axis,
/// the short way. Shear is not kept.
template <class T>
class AVar_Matrix final : public AVar<Matrix<T>> {
 public:
  using Sample = typename AVar<Matrix<T>>::Sample;

  Sample& interpolate(Sample& out, const Sample& a, const Sample& b, double time) const override {
    // Single precision here and in the lengths is meant: stored takes were made with it.
    const float span = static_cast<float>(b.time - a.time);
    const double u = static_cast<float>((time - a.time) / span);
    const Vector3<T> lengthA = a.value.rowLengths();
    const Vector3<T> lengthB = b.value.rowLengths();
    const Vector3<T> from = a.value.translation();
    const Vector3<T> to = b.value.translation();

    const QTransform<T> pose{(to - from) * u + from, turn(a.value, b.value, u)};
    out.value = pose.toMatrix();
    for (int i = 0; i < 3; ++i) {
      const float length = static_cast<float>((lengthB[i] - lengthA[i]) * u + lengthA[i]);
      out.value.setAxisRow(i, out.value.axisRow(i).normalized() * static_cast<T>(length));
    }
    out.time = time;
    return out;
  }

 private:
  static Quat<T> turn(const Matrix<T>& a, const Matrix<T>& b, double u) {
    Quat<T> qa = Quat<T>::fromMatrix(a);
    Quat<T> qb = Quat<T>::fromMatrix(b);
    detail::makeWPositive(qa);
    detail::makeWPositive(qb);
    Quat<T> rel = qb * qa.conjugate();
    const Quat<T> dq = Quat<T>::fromRotationVector(rel.toRotationVector() * u);
    Quat<T> q = dq * qa;
    detail::makeWPositive(q);
    return q;
  }
};

}  // namespace orv::util
