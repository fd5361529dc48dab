// Keeping a node's own scale under a computed pose.
#pragma once

#include "util/Matrix.h"

namespace orv::rws::addon {

/// Gives each axis row of `pose` the length that it has in `old`.
inline void KeepScale(util::Matrix<double>& pose, const util::Matrix<double>& old) {
  const util::Vector3<double> have = pose.rowLengths();
  const util::Vector3<double> want = old.rowLengths();
  for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * (want[i] / have[i]));
}

/// Stretches the axis rows of `pose`: a scaling that acts before the pose does.
inline void ScaleRows(util::Matrix<double>& pose, const util::Vector3<double>& scale) {
  for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * scale[i]);
}

}  // namespace orv::rws::addon
