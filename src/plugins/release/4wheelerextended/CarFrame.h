// The frame of a car, found from its four wheels.
#pragma once

#include <array>
#include <string>

#include "plugins/release/4wheelerextended/WheelMeasure.h"
#include "util/Matrix.h"

namespace orv::rws::addon {

/// Front left, front right, back left, back right.
using FourWheels = std::array<WheelMeasure, 4>;

/// Where a car stands, as its wheels tell. World space (m); X right, Y up, Z backward.
struct CarFrame {
  util::Vector3<double> right, up, back;  ///< unit, at right angles
  /// Of the body: above the middle of the wheels' bottoms.
  util::Vector3<double> origin;
  double wheelbase = 0.0;
  double frontTrack = 0.0;
  double backTrack = 0.0;
  /// Height of the origin: 0.2 wheelbases, as a new rig has it, but not below the wheels' centres,
  /// so that also a car on giant wheels leans outwards in a curve.
  double restHeight = 0.0;

  /// Pose of the frame at `place` with its axes stretched by `scale`.
  util::Matrix<double> At(const util::Vector3<double>& place,
                          const util::Vector3<double>& scale) const;
};

/// Up stands on the plane that the four wheels stand on, so wheels of two sizes are no slope. An
/// empty text means success; any other says why these are not the wheels of a car.
std::string FindCarFrame(const FourWheels& wheels, CarFrame& frame);

}  // namespace orv::rws::addon
