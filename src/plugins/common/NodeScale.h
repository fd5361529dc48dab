// The scale of a node, and poses made of a scale or a place alone.
#pragma once

#include <cmath>

#include "util/Matrix.h"

namespace orv::rws::addon {

/// Lengths of the axis rows, with those that only rounding keeps from 1 at exactly 1: what a take
/// measures at its start must not carry the rounding of the take before.
inline util::Vector3<double> ScaleOf(const util::Matrix<double>& matrix) {
  constexpr double kRounding = 1e-9;
  util::Vector3<double> scale = matrix.rowLengths();
  for (int i = 0; i < 3; ++i)
    if (std::abs(scale[i] - 1.0) < kRounding) scale[i] = 1.0;
  return scale;
}

/// Stretches the axis rows of `pose`: a scaling that acts before the pose does.
inline void ScaleRows(util::Matrix<double>& pose, const util::Vector3<double>& scale) {
  for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * scale[i]);
}

inline util::Matrix<double> Translation(const util::Vector3<double>& by) {
  util::Matrix<double> pose;
  pose.setTranslation(by);
  return pose;
}

}  // namespace orv::rws::addon
