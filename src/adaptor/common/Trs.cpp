#include "adaptor/common/Trs.h"

#include <cmath>

namespace orv::rws::adaptor {

using util::Matrix;
using util::Quat;
using util::Vector3;

bool operator==(const Trs& a, const Trs& b) {
  return a.translation == b.translation && a.rotation == b.rotation && a.scale == b.scale;
}

bool IsFinite(const Trs& pose) {
  const auto& [t, r, s] = pose;
  for (const double number : {t.x, t.y, t.z, r.x, r.y, r.z, r.w, s.x, s.y, s.z})
    if (!std::isfinite(number)) return false;
  return true;
}

Matrix<double> Compose(const Trs& pose) {
  Matrix<double> m = pose.rotation.toMatrix();
  for (int i = 0; i < 3; ++i) m.setAxisRow(i, m.axisRow(i) * pose.scale[i]);
  m.setTranslation(pose.translation);
  return m;
}

Trs Decompose(const Matrix<double>& matrix) {
  Trs pose;
  pose.translation = matrix.translation();
  pose.scale = matrix.rowLengths();
  Matrix<double> axes = matrix;
  if (axes.axisRow(0).dot(axes.axisRow(1).cross(axes.axisRow(2))) < 0.0) {
    pose.scale.x = -pose.scale.x;
    axes.setAxisRow(0, -axes.axisRow(0));
  }
  // An axis of no length takes the direction that the other two leave it.
  for (int i = 0; i < 3; ++i) {
    if (pose.scale[i] != 0.0) continue;
    const Vector3<double> rest = axes.axisRow((i + 1) % 3).cross(axes.axisRow((i + 2) % 3));
    if (rest.length() > 0.0) axes.setAxisRow(i, rest);
  }
  pose.rotation = Quat<double>::fromMatrix(axes);
  return pose;
}

bool PoseUnder(const Matrix<double>& parent, const Matrix<double>& world, Trs& pose) {
  const Matrix<double> inverse = parent.affineInverse();
  if (inverse[15] == 0.0) return false;
  pose = Decompose(inverse * world);
  return true;
}

}  // namespace orv::rws::adaptor
