// The units in which a user may give speeds.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::addon {

/// In the order of the user's choice.
enum class SpeedUnit : int {
  kMetresPerSecond,
  kKilometresPerHour,
  kMilesPerHour,
  kCentimetres,
  kInches
};

inline std::vector<std::string> SpeedUnitNames() {
  return {"m/s", "km/h", "mph", "cm/s", "inch/s"};
}

/// A speed in the unit, in metres per second.
inline double ToMetresPerSecond(double speed, SpeedUnit unit) {
  switch (unit) {
    case SpeedUnit::kKilometresPerHour:
      return speed / 3.6;
    case SpeedUnit::kMilesPerHour:
      return speed / 2.23693629;
    case SpeedUnit::kCentimetres:
      return speed * 0.01;
    case SpeedUnit::kInches:
      return speed * 0.0254;
    case SpeedUnit::kMetresPerSecond:
      break;
  }
  return speed;
}

}  // namespace orv::rws::addon
