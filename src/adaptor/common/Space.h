/// Rig space told in the space of a host that has another up axis or unit.
#pragma once

#include "adaptor/common/Trs.h"
#include "util/Matrix.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor {

enum class UpAxis { kY, kZ };

/// A host's world: right-handed as rig space is (Y up, metres), with Y or Z up and a unit of length
/// of its own. In a host with Z up the rigs' +Y is +Z and their +Z is -Y.
///
/// One rule: a world pose in the host is the rigs' world pose, then the conversion. So only a
/// top-level node's local pose carries it, as a quarter turn and as a scale of one metre; below it
/// cancels, and a child's local pose, its pivots, its mesh and its lens' axis are the same numbers
/// on both sides. Times and lens values are not converted here.
///
/// `toRig(toHost(v))` is v to the bit for all but orientations where a metre is a power of two of
/// the unit, and else within two roundings; an orientation with Y up is v itself, with Z up within
/// 1e-14. A host of Y up and metres gets every value as it is, the sign of a zero included.
struct Space {
  UpAxis up = UpAxis::kY;
  double metre = 1.0;  ///< one metre in the host's unit of length, above 0 (100 = centimetres)

  /// A direction or normal: turned, its length kept.
  util::Vector3<double> DirectionToHost(const util::Vector3<double>& v) const;
  util::Vector3<double> DirectionToRig(const util::Vector3<double>& v) const;
  /// A point of the world, or a vector with a length (a move, a velocity, an extent).
  util::Vector3<double> PointToHost(const util::Vector3<double>& p) const;
  util::Vector3<double> PointToRig(const util::Vector3<double>& p) const;
  /// How a top-level node stands: its own axes stay, the world around it is turned.
  util::Quat<double> OrientationToHost(const util::Quat<double>& q) const;
  util::Quat<double> OrientationToRig(const util::Quat<double>& q) const;
  /// A turn from one pose of the world to another: the same angle about the turned axis.
  util::Quat<double> TurnToHost(const util::Quat<double>& q) const;
  util::Quat<double> TurnToRig(const util::Quat<double>& q) const;
  /// A world pose, or the local one of a top-level node. The fourth column stays.
  util::Matrix<double> WorldToHost(const util::Matrix<double>& world) const;
  util::Matrix<double> WorldToRig(const util::Matrix<double>& world) const;

  /// The local pose of a top-level node. Uneven and mirrored scale stay so: it acts along the
  /// node's own axes, before the conversion.
  Trs TopLevelToHost(const Trs& pose) const;
  Trs TopLevelToRig(const Trs& pose) const;
};

}  // namespace orv::rws::adaptor
