#include "adaptor/common/Space.h"

namespace orv::rws::adaptor {

using util::Matrix;
using util::Quat;
using util::Vector3;

namespace {

/// A quarter turn about X, which takes Y to Z.
constexpr double kHalfRoot = 0.70710678118654752440;
constexpr Quat<double> kQuarterTurn(kHalfRoot, 0.0, 0.0, kHalfRoot);

/// Row by row instead of by a product, whose sums would lose the sign of a zero.
template <class Convert>
Matrix<double> eachRow(Matrix<double> m, const Convert& convert) {
  for (int i = 0; i < 3; ++i) m.setAxisRow(i, convert(m.axisRow(i)));
  m.setTranslation(convert(m.translation()));
  return m;
}

}  // namespace

Vector3<double> Space::directionToHost(const Vector3<double>& v) const {
  return up == UpAxis::kY ? v : Vector3<double>(v.x, -v.z, v.y);
}

Vector3<double> Space::directionToRig(const Vector3<double>& v) const {
  return up == UpAxis::kY ? v : Vector3<double>(v.x, v.z, -v.y);
}

Vector3<double> Space::pointToHost(const Vector3<double>& p) const {
  return directionToHost(p) * metre;
}

Vector3<double> Space::pointToRig(const Vector3<double>& p) const {
  return directionToRig(p) / metre;
}

Quat<double> Space::orientationToHost(const Quat<double>& q) const {
  return up == UpAxis::kY ? q : q * kQuarterTurn;
}

Quat<double> Space::orientationToRig(const Quat<double>& q) const {
  return up == UpAxis::kY ? q : q * kQuarterTurn.conjugate();
}

Quat<double> Space::turnToHost(const Quat<double>& q) const {
  const Vector3<double> axis = directionToHost({q.x, q.y, q.z});
  return {axis.x, axis.y, axis.z, q.w};
}

Quat<double> Space::turnToRig(const Quat<double>& q) const {
  const Vector3<double> axis = directionToRig({q.x, q.y, q.z});
  return {axis.x, axis.y, axis.z, q.w};
}

Matrix<double> Space::worldToHost(const Matrix<double>& world) const {
  return eachRow(world, [this](const Vector3<double>& row) { return pointToHost(row); });
}

Matrix<double> Space::worldToRig(const Matrix<double>& world) const {
  return eachRow(world, [this](const Vector3<double>& row) { return pointToRig(row); });
}

Trs Space::topLevelToHost(const Trs& pose) const {
  return {pointToHost(pose.translation), orientationToHost(pose.rotation), pose.scale * metre};
}

Trs Space::topLevelToRig(const Trs& pose) const {
  return {pointToRig(pose.translation), orientationToRig(pose.rotation), pose.scale / metre};
}

}  // namespace orv::rws::adaptor
