// Turns of directions.
#pragma once

#include <algorithm>
#include <cmath>

#include "util/Angles.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::addon {

/// A unit vector at a right angle to the unit vector `v`.
inline util::Vector3<double> SideOf(const util::Vector3<double>& v) {
  const bool steep = std::abs(v.y) > 0.9;
  const util::Vector3<double> other(steep ? 1.0 : 0.0, steep ? 0.0 : 1.0, 0.0);
  return other.cross(v).normalized();
}

/// The turn by `angle` (rad) about the unit vector `axis`.
inline util::Quat<double> TurnAbout(const util::Vector3<double>& axis, double angle) {
  const double s = std::sin(0.5 * angle);
  return {axis.x * s, axis.y * s, axis.z * s, std::cos(0.5 * angle)};
}

/// The shortest turn that takes the unit vector `from` to the unit vector `to`.
inline util::Quat<double> ArcBetween(const util::Vector3<double>& from,
                                     const util::Vector3<double>& to) {
  const double w = 1.0 + from.dot(to);
  if (w < 1e-12) return TurnAbout(SideOf(from), util::kPi);
  const util::Vector3<double> axis = from.cross(to);
  return util::Quat<double>(axis.x, axis.y, axis.z, w).normalized();
}

/// The unit vector at the angle whose cosine is given from the unit vector `axis`, turned about it
/// by `turn` (rad).
inline util::Vector3<double> Deviated(const util::Vector3<double>& axis, double cosine,
                                      double turn) {
  const util::Vector3<double> side = SideOf(axis), up = axis.cross(side);
  const double sine = std::sqrt(std::max(0.0, 1.0 - cosine * cosine));
  return (axis * cosine + (side * std::cos(turn) + up * std::sin(turn)) * sine).normalized();
}

}  // namespace orv::rws::addon
