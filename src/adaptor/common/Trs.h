/// A local pose as translation, rotation and scale.
#pragma once

#include "util/Matrix.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor {

/// A node's pose relative to its parent (m; unit quaternion; factors). Scale acts first, then the
/// rotation, then the translation.
struct Trs {
  util::Vector3<double> translation{0.0, 0.0, 0.0};
  util::Quat<double> rotation;
  util::Vector3<double> scale{1.0, 1.0, 1.0};
};

bool operator==(const Trs& a, const Trs& b);
inline bool operator!=(const Trs& a, const Trs& b) {
  return !(a == b);
}

bool IsFinite(const Trs& pose);

/// The pose as an affine matrix.
util::Matrix<double> Compose(const Trs& pose);

/// The pose whose matrix comes closest to `matrix`: shear is lost, a mirrored matrix gets a
/// negative scale along X, and an axis of length zero gives scale 0 along it.
Trs Decompose(const util::Matrix<double>& matrix);

/// The own pose that a node needs to stand at `world` below a parent at `parent`, both of the
/// world. False, with `pose` untouched, when the parent has no inverse (a scale of 0).
bool PoseUnder(const util::Matrix<double>& parent, const util::Matrix<double>& world, Trs& pose);

}  // namespace orv::rws::adaptor
