// A car that stands, stands still.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;

/// Drives on a slope, and expects no movement between 20 and 30 s but that of the least gas along
/// the heading.
void ExpectStillOn(const Height& slope, const std::string& what, const Inputs& inputs) {
  CarScene car;
  car.AddGround(GridMesh(slope, Rows(-100, 100, 6), Rows(-200, 60, 20)));
  car.PlaceOn(slope);
  car.Drive(30, inputs);
  const Vector heading = car.Axis("CarBodyBaseMesh", 2, 500);
  for (const char* node : {"CarBodyMesh", "CarBodyBaseMesh", "WheelMesh_FL", "WheelMesh_BR"}) {
    for (int i = 501; i <= 750; ++i) {
      const Vector moved = car.At(node, i) - car.At(node, 500);
      const double along = moved.dot(heading);
      ASSERT_LT(std::abs(along), 1.1e-8 * CarScene::kScale * (i - 500) * 0.04 + 1e-9)
          << what << " " << node << " " << i;
      ASSERT_LT((moved - heading * along).length(), 1e-9 * CarScene::kScale)
          << what << " " << node << " " << i;
    }
  }
  for (std::size_t wheel = 0; wheel < 4; ++wheel)
    EXPECT_NEAR(car.Clearance(wheel, 750, slope), 0.0, 2e-3) << what << wheel;
}

TEST(CarParked, ACarStandsStillOnASlopeHoweverItCameToStand) {
  for (const auto& [name, slope] : {std::pair{"along", Slope(20)},
                                    {"across", Slope(0, 20)},
                                    {"down", Slope(-20)},
                                    {"aslant", Slope(14, -14)}}) {
    const std::string what = name;
    const Control gas = Between(0.01, 4);
    ExpectStillOn(slope, what + " parked", {});
    ExpectStillOn(slope, what + " ABS", {{kGas, gas}, {kAbs, Between(5, 40)}});
    ExpectStillOn(slope, what + " ABS let go", {{kGas, gas}, {kAbs, Between(5, 12)}});
    ExpectStillOn(slope, what + " reverse",
                  {{kGas, [=](double t) { return gas(t) - Between(5, 8)(t); }}});
    ExpectStillOn(slope, what + " skid brake",
                  {{kGas, gas}, {kSteer, Between(3.7, 9, 0.5)}, {kSkidBrake, Between(4, 40)}});
    ExpectStillOn(slope, what + " skid brake let go",
                  {{kGas, gas}, {kSteer, Between(3.7, 9, 0.5)}, {kSkidBrake, Between(4, 12)}});
  }
}

TEST(CarParked, ACarStandsFromItsFirstFrameOnAlsoOverAGapInItsGround) {
  const auto tiles = [](double, double z) { return std::abs(z + 1.35) < 0.005 ? -2.0 : 0.0; };
  for (const std::string& profile : CarProfiles()) {
    for (const double radius : {0.0, 1.2}) {
      CarScene car;
      car.AddGround(GridMesh(tiles, Rows(-5, 5, 2), {-60, -1.3551, -1.3549, -1.3451, -1.3449, 10}));
      car.Apply(profile);
      car.Edit("Ray Multiplier", 20);
      if (radius != 0.0) car.Edit("Wheel Radius Multiplier", radius);
      const double wheel = 0.351 * car.Setting("Wheel Radius Multiplier");
      EXPECT_NEAR(car.World("WheelMesh_FL", 0).rowLengths().y, wheel, 1e-9) << profile;
      car.Drive(4, {});
      for (int i = 0; i <= 100; ++i) {
        ASSERT_LT((car.At("CarBodyMesh", i) - car.At("CarBodyMesh", 0)).length(), 1e-3)
            << profile << i;
        for (const char* node : CarScene::kWheels) {
          ASSERT_NEAR(car.At(node, i).y, wheel, 3e-3) << profile << node << i;
          ASSERT_NEAR(car.World(node, i).rowLengths().y, wheel, 1e-9) << profile << node << i;
        }
      }
    }
  }
}

}  // namespace
}  // namespace orv::tests
