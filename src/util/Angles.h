// Pi, and the factors between radians and degrees.
#pragma once

namespace orv::util {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kQuarterTurn = kPi / 2.0;  ///< rad
inline constexpr double kDegreesPerRadian = 180.0 / kPi;
inline constexpr double kRadiansPerDegree = kPi / 180.0;

}  // namespace orv::util
