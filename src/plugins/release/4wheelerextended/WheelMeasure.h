// What the mesh of a wheel tells of it.
#pragma once

#include <string>
#include <vector>

#include "util/Vector3.h"

namespace orv::rws::addon {

/// A wheel as a disc. World space (m).
struct WheelMeasure {
  util::Vector3<double> centre;  ///< middle of the least circle round it, half-way across its width
  util::Vector3<double> axis;    ///< unit; which of its two ends is open
  double radius = 0.0;           ///< of the least circle round it, seen along the axis
  double width = 0.0;            ///< extent along the axis
  double unevenness = 0.0;       ///< how much nearer than `radius` its outline comes, part of it
};

/// Part by which the outline of a wheel may come nearer to its middle than its radius.
inline constexpr double kMostUneven = 0.05;

/// Measures the wheel whose mesh has these corners. Its axis is the direction of least extent, so
/// nothing depends on how its node is turned or scaled, nor on where its corners lie dense. The
/// outline counts at its corners: a wheel of six sides or more is as round as its corners are.
/// An empty text means success; any other says why this is no wheel.
std::string MeasureWheel(const std::vector<util::Vector3<double>>& corners, WheelMeasure& wheel);

}  // namespace orv::rws::addon
