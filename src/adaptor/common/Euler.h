/// Rotations as three angles, in the six orders that hosts know.
#pragma once

#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor {

/// The axis named first acts first, each about the parent's own axis: `kXyz` turns about X, then
/// about Y, then about Z. The values are the numbers by which hosts store an order.
enum class RotationOrder { kXyz = 0, kYzx = 1, kZxy = 2, kXzy = 3, kYxz = 4, kZyx = 5 };
inline constexpr int kRotationOrders = 6;

/// The rotation by `angles` (radians, about X, Y and Z whatever the order, any number of turns).
util::Quat<double> FromEuler(const util::Vector3<double>& angles, RotationOrder order);

/// Angles of a unit quaternion (radians): the middle axis of the order within [-pi/2, pi/2], the
/// others within [-pi, pi]. In gimbal lock, where only a sum of the outer two is told, the first
/// one is 0.
util::Vector3<double> ToEuler(const util::Quat<double>& rotation, RotationOrder order);

/// Angles of the same rotation nearest to `previous`, the frame before: of the two solutions (the
/// other one turns both outer axes by half a turn and mirrors the middle one) and their whole turns
/// the one with the smallest sum of squared differences; the plain one where both are as near. In
/// gimbal lock the first axis of the order keeps its previous angle.
util::Vector3<double> ToEulerNear(const util::Quat<double>& rotation, RotationOrder order,
                                  const util::Vector3<double>& previous);

}  // namespace orv::rws::adaptor
