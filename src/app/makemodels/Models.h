// The models that come with the program, without their rigs.
#pragma once

#include "Kit.h"

namespace orv::app {

/// Body, and the wheels WheelFL, WheelFR, WheelBL and WheelBR: 4.2 m long, the nose to -Z.
void ModelCar(Kit& kit);

/// Where the wheels of one belt stand, in the hull's Y and Z (m), the drive wheel first and then as
/// they follow each other round the belt.
struct BeltWheel {
  double y, z, radius;
};
inline constexpr BeltWheel kBeltWheels[] = {
    {0.66, -2.00, 0.27}, {0.39, -1.35, 0.33}, {0.39, -0.65, 0.33}, {0.39, 0.05, 0.33},
    {0.39, 0.75, 0.33},  {0.39, 1.45, 0.33},  {0.66, 2.05, 0.27}};
inline constexpr double kBeltSide = 1.18;  ///< of the belts' middles from the hull's (m)
inline constexpr double kMuzzle = -3.95;   ///< where the barrel ends (z, m)
inline constexpr double kGunHeight = 1.72;

/// Hull, Turret and Gun, and a wheel Left0, Left1, ... Right0, ... for each of the belts'.
void ModelTank(Kit& kit);

}  // namespace orv::app
