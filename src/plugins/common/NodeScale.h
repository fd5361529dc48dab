// Scaling a computed pose.
#pragma once

#include "util/Matrix.h"

namespace orv::rws::addon {

/// Stretches the axis rows of `pose`: a scaling that acts before the pose does.
inline void ScaleRows(util::Matrix<double>& pose, const util::Vector3<double>& scale) {
  for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * scale[i]);
}

}  // namespace orv::rws::addon
