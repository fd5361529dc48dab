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
Matrix<double> EachRow(Matrix<double> m, const Convert& convert) {
  for (int i = 0; i < 3; ++i) m.setAxisRow(i, convert(m.axisRow(i)));
  m.setTranslation(convert(m.translation()));
  return m;
}

}  // namespace

Vector3<double> Space::DirectionToHost(const Vector3<double>& v) const {
  return up == UpAxis::kY ? v : Vector3<double>(v.x, -v.z, v.y);
}

Vector3<double> Space::DirectionToRig(const Vector3<double>& v) const {
  return up == UpAxis::kY ? v : Vector3<double>(v.x, v.z, -v.y);
}

Vector3<double> Space::PointToHost(const Vector3<double>& p) const {
  return DirectionToHost(p) * metre;
}

Vector3<double> Space::PointToRig(const Vector3<double>& p) const {
  return DirectionToRig(p) / metre;
}

Quat<double> Space::OrientationToHost(const Quat<double>& q) const {
  return up == UpAxis::kY ? q : q * kQuarterTurn;
}

Quat<double> Space::OrientationToRig(const Quat<double>& q) const {
  return up == UpAxis::kY ? q : q * kQuarterTurn.conjugate();
}

Quat<double> Space::TurnToHost(const Quat<double>& q) const {
  const Vector3<double> axis = DirectionToHost({q.x, q.y, q.z});
  return {axis.x, axis.y, axis.z, q.w};
}

Quat<double> Space::TurnToRig(const Quat<double>& q) const {
  const Vector3<double> axis = DirectionToRig({q.x, q.y, q.z});
  return {axis.x, axis.y, axis.z, q.w};
}

Matrix<double> Space::WorldToHost(const Matrix<double>& world) const {
  return EachRow(world, [this](const Vector3<double>& row) { return PointToHost(row); });
}

Matrix<double> Space::WorldToRig(const Matrix<double>& world) const {
  return EachRow(world, [this](const Vector3<double>& row) { return PointToRig(row); });
}

Trs Space::TopLevelToHost(const Trs& pose) const {
  return {PointToHost(pose.translation), OrientationToHost(pose.rotation), pose.scale * metre};
}

Trs Space::TopLevelToRig(const Trs& pose) const {
  return {PointToRig(pose.translation), OrientationToRig(pose.rotation), pose.scale / metre};
}

}  // namespace orv::rws::adaptor
