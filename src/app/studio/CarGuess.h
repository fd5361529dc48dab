// Which nodes of a user's model are a car's parts, by their names.
#pragma once

#include <string>

namespace orv::app {

/// 0 to 3 for the wheel front left, front right, back left and back right, as in "WheelFL",
/// "wheel_rear_right" or "Tire.BL"; -1 for a name that tells no wheel.
int WheelOfName(const std::string& name);
/// Whether it is called like a car's body.
bool IsBodyName(const std::string& name);

}  // namespace orv::app
