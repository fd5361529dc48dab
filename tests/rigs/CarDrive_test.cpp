// How a car drives, against closed forms and integrators of its own.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;

/// The input filter of a channel with a limited change, told again from its rules (25 frames/s).
struct Follower {
  double response, maximum, limit;  ///< per nominal step; limit per frame
  double value = 0.0, raw = 0.0;
  double Next(double wish) {
    raw = std::min(std::max(wish, raw - limit), raw + limit);
    for (int i = 0; i < 2; ++i) value += (maximum * raw - value) * 0.5 * response;
    return value;
  }
};

TEST(CarDrive, TheSpeedFollowsTheGasFilterToTheMaximumAlongTheHeading) {
  CarScene car;
  car.AddGround(GridMesh(Flat, Rows(-30, 30, 6), Rows(-600, 30, 63)));
  car.Drive(60, {{kGas, PressedSoon(1)}});
  Follower gas{0.01, 3.0, 2.0 * 0.04 / 3.0};
  for (int i = 1; i <= 1500; ++i) {
    const double way = car.At("CarBodyBaseMesh", i - 1).z - car.At("CarBodyBaseMesh", i).z;
    ASSERT_NEAR(way, CarScene::kScale * gas.Next(i > 2 ? 1.0 : 0.0) * 0.04, 2e-7) << i;
  }
  EXPECT_NEAR(gas.value, 3.0, 1e-5);
  const Vector line = car.At("CarBodyBaseMesh", 1500) - car.At("CarBodyBaseMesh", 250);
  EXPECT_LT(std::hypot(line.x, line.y), 1e-9 * line.length());
  // A pedal that is down at the start begins at its speed.
  car.SetInputs({{kGas, Always(1)}}, 1);
  car.Resimulate(0, 20);
  EXPECT_NEAR(car.At("CarBodyBaseMesh", 0).z - car.At("CarBodyBaseMesh", 1).z,
              CarScene::kScale * 3.0 * 0.04, 1e-9);
}

/// Middle and radius of the circle through three points, seen from above.
Vector Circle(const Vector& a, const Vector& b, const Vector& c) {
  const double d = 2 * (a.x * (b.z - c.z) + b.x * (c.z - a.z) + c.x * (a.z - b.z));
  const auto s = [](const Vector& p) { return p.x * p.x + p.z * p.z; };
  const double x = (s(a) * (b.z - c.z) + s(b) * (c.z - a.z) + s(c) * (a.z - b.z)) / d;
  const double z = (s(a) * (c.x - b.x) + s(b) * (a.x - c.x) + s(c) * (b.x - a.x)) / d;
  return {x, std::hypot(a.x - x, a.z - z), z};
}

TEST(CarDrive, ATurnHasTheRadiusOfItsSteeringAndTheInnerWheelYawsMore) {
  CarScene car;
  car.Edit("Skidding Release Value (Lateral Vel Rel)", 100);
  car.Drive(60, {{kGas, PressedSoon(0.5)}, {kSteer, PressedSoon(0.6)}});
  const double gas = 1.5;
  Follower steer{0.1, 0.7, 2.0 * 0.04};
  for (int i = 1; i <= 1490; ++i) steer.Next(i < 3 ? 0.0 : 0.6 / (gas * 0.2 + 1.0));
  const double rho = CarScene::kScale / std::tan(steer.value);
  const auto at = [&](int i) { return car.At("TurnBaseMesh", i); };
  const Vector circle = Circle(at(1450), at(1470), at(1490));
  EXPECT_NEAR(circle.y, rho, rho * 1e-3);
  for (int i = 1300; i <= 1490; ++i)
    ASSERT_NEAR(std::hypot(at(i).x - circle.x, at(i).z - circle.z), rho, rho * 1e-3);
  EXPECT_GT(at(60).x, 0.1) << "positive steers right";
  const auto yaw = [&](const std::string& wheel) {
    return std::asin(car.Axis("WheelCenterMesh" + wheel, 2, 1490)
                         .dot(-car.Axis("WheelRelocatorMesh" + wheel, 0, 1490)));
  };
  EXPECT_GT(yaw("_FR"), yaw("_FL") + 0.02);
  EXPECT_GT(yaw("_FL"), 0.1);
  EXPECT_NEAR(yaw("_BL"), 0.0, 1e-9);
  const double pull = -std::pow(CarScene::kScale * gas, 2) / rho / (4.0 * CarScene::kScale);
  EXPECT_NEAR(car.rig->GetProperties().property(kSteer)->feel.push, pull, 0.02) << "drawn back";
}

TEST(CarDrive, NoWheelIsSteeredBeyondARightAngle) {
  const auto yaws = [](double maximum) {
    CarScene car;
    car.Edit("Steering Wheel (Right/Left) Maximum", maximum);
    car.Drive(6, {{kSteer, PressedSoon(1.0)}});
    std::vector<double> yaws;
    for (const char* wheel : {"_FL", "_FR"}) {
      const std::string relocator = std::string("WheelRelocatorMesh") + wheel;
      const Vector back = car.Axis(std::string("WheelCenterMesh") + wheel, 2, 150);
      yaws.push_back(std::atan2(-back.dot(car.Axis(relocator, 0, 150)),
                                back.dot(car.Axis(relocator, 2, 150))));
    }
    return yaws;
  };
  const std::vector<double> right = yaws(1.6), farther = yaws(2.2);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_NEAR(farther[i], right[i], 1e-9);
    EXPECT_GT(std::abs(right[i]), 1.0);
  }
}

TEST(CarDrive, ADriveIsTheSameAtEveryScale) {
  const auto drive = [](double scale) {
    auto car = std::make_unique<CarScene>();
    car->AddGround(GridMesh(Hills, Rows(-30, 30, 60), Rows(-120, 30, 150), scale));
    car->Place({0, Hills(0, 0) * scale, 0}, {}, scale);
    car->Drive(10, {{kGas, Always(1)},
                    {kSteer, [](double t) { return 0.8 * std::sin(t * 1.3); }},
                    {kBoost, Between(3, 4)},
                    {kSkidBrake, Between(7, 7.5)}});
    EXPECT_TRUE(car->messages.empty());
    return car;
  };
  auto one = drive(1.0);
  // A core at a time.
  std::map<std::string, std::vector<Vector>> paths;
  for (const char* node : {"CarBodyMesh", "WheelMesh_FL", "WheelMesh_BR"})
    for (int i = 0; i <= 250; ++i) paths[node].push_back(one->At(node, i));
  one.reset();
  for (const double scale : {0.1, 10.0}) {
    auto other = drive(scale);
    for (const auto& [node, path] : paths)
      for (int i = 0; i <= 250; ++i)
        ASSERT_LT((other->At(node, i) / scale - path[i]).length(), 1e-6) << scale << node << i;
  }
}

TEST(CarDrive, WheelsStayOnSmoothGround) {
  CarScene car;
  car.AddGround(GridMesh(Hills, Rows(-40, 40, 160), Rows(-120, 30, 300)));
  car.Place({0, Hills(0, 0), 0});
  car.Drive(15, {{kGas, Always(0.6)}, {kSteer, [](double t) { return 0.6 * std::sin(t); }}});
  double most = 0;
  for (int i = 25; i <= 375; ++i)
    for (std::size_t wheel = 0; wheel < 4; ++wheel)
      most = std::max(most, std::abs(car.Clearance(wheel, i, Hills)));
  EXPECT_LT(most, 1e-3 * CarScene::kScale);
}

}  // namespace
}  // namespace orv::tests
