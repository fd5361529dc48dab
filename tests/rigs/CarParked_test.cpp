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

}  // namespace
}  // namespace orv::tests
