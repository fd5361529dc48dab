// Off a ramp and down again.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;

struct Jump {
  int airborne = 0;       ///< frames with all four wheels in the air, until the landing
  int bounced = 0;        ///< the same after it
  double turned = 0.0;    ///< of the base in the air (rad)
  double deepest = 0.0;   ///< of a wheel in the ground (m)
  double trembles = 0.0;  ///< of the body's height in the last two seconds (m)
};

/// Over the ramp, until it stands again.
Jump Drive(CarScene& car, double end) {
  car.AddGround(GridMesh(Ramp, Rows(-300, 300, 2), Rows(-2000, 20, 20200)));
  // As a driver does who sees what he has done: off the gas when all is over.
  car.Drive(end, {{kGas, [=](double t) { return t > 0.1 && t < end - 6 ? 1.0 : 0.0; }},
                  {kAbs, [=](double t) { return t > end - 6 ? 1.0 : 0.0; }}});
  Jump jump;
  const int last = car.FrameOf(end);
  int first = 0, landed = 0;
  for (int i = 1; i <= last; ++i) {
    if (car.air[i] == 15 && car.At("CarBodyMesh", i).z < -60 && first == 0) first = i;
    if (first != 0 && landed == 0 && car.air[i] != 15) landed = i;
    if (landed != 0 && car.air[i] == 15) ++jump.bounced;
    for (std::size_t wheel = 0; wheel < 4; ++wheel)
      jump.deepest =
          std::min(jump.deepest, car.At(CarScene::kWheels[wheel], i).y - CarScene::kRadius);
    if (i > last - car.FrameOf(2))
      jump.trembles = std::max(
          jump.trembles, std::abs(car.At("CarBodyMesh", i).y - car.At("CarBodyMesh", last).y));
  }
  jump.airborne = landed - first;
  for (int i = first; first != 0 && i < landed; ++i)
    jump.turned = std::max(
        jump.turned,
        std::acos(std::min(
            1.0, car.Axis("CarBodyBaseMesh", 1, i).dot(car.Axis("CarBodyBaseMesh", 1, first)))));
  return jump;
}

/// How deep a body sinks in that meets its springs with `speed` (m), by an integrator of its own.
double Depth(CarScene& car, double speed) {
  const auto mean = [&](const std::string& what) {
    return (car.Setting("Front " + what) + car.Setting("Back " + what)) / 2.0;
  };
  const double mass = car.Setting("Mass Multiplier") * 25.0, h = 1e-5;
  const double stiffness = 4.0 * mean("Stiffness") / mass, damping = 4.0 * mean("Damping") / mass;
  double deep = 0.0;
  for (double v = speed; v > 0.0; deep += v * h) v -= (stiffness * deep + damping * v) * h;
  return std::min(deep, 0.9 * 0.351 * car.Setting("Suspension Length (Radius Relative)") *
                            car.Setting("Wheel Radius Multiplier"));
}

class CarJumpProfile : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(CarJump, CarJumpProfile, testing::ValuesIn(CarProfiles()),
                         [](const auto& profile) {
                           std::string name = profile.param;
                           for (char& c : name) c = std::isalnum(c) ? c : '_';
                           return name;
                         });

TEST_P(CarJumpProfile, ACarFliesKeepsItsAttitudeLandsAndStays) {
  const bool isNew = GetParam() == "Start Profile";
  for (const double fps : {12.0, 25.0, 60.0, 120.0}) {
    if (!isNew && fps != 25.0) continue;
    CarScene car(fps);
    car.Apply(GetParam());
    const Jump jump = Drive(car, isNew ? 24 : 40);
    EXPECT_TRUE(jump.airborne > 0 || GetParam().rfind("Boat", 0) == 0) << fps;
    EXPECT_TRUE(!isNew || jump.airborne < fps) << fps;
    EXPECT_EQ(jump.bounced, 0) << fps;
    EXPECT_LT(jump.turned, 0.02) << fps;
    EXPECT_GT(jump.deepest, -CarScene::kRadius) << fps;
    EXPECT_LT(jump.trembles, isNew ? 1e-6 : 1e-3) << fps;
  }
}

/// The speed of the contact is what the depth tells; a car leans by "Gravity" and doesn't fall by
/// it.
TEST_P(CarJumpProfile, ADropIsOneFallOneCompressionAndADecayingSettling) {
  for (const double fps : {12.0, 24.0, 25.0, 60.0, 120.0}) {
    CarScene car(fps);
    car.Apply(GetParam());
    car.Edit("Gravity", 0);
    const double reach = CarScene::kRadius * car.Setting("Suspension Length (Radius Relative)");
    const double drop = reach * 1.1 + 0.2;
    double height = 0.0;
    ASSERT_EQ(car.rig->GetRig()->Extension(rws::kStandingHeight, &height, nullptr), 1);
    car.Place({0, height - CarScene::kRestHeight + drop, 0});
    car.Drive(15, {});
    const int last = car.FrameOf(15);
    const auto over = [&](int i) { return car.At("CarBodyMesh", i).y - height; };
    int deepest = 0;
    while (over(deepest + 1) <= over(deepest) && deepest < last) ++deepest;
    double swing = std::abs(over(deepest));
    for (int i = deepest + 1; i < last; ++i) {
      const double rise = over(i) - over(i - 1), next = over(i + 1) - over(i);
      if (rise * next > 0.0) continue;
      ASSERT_LE(std::abs(over(i)), swing + 1e-9) << fps << " fps, frame " << i;
      swing = std::abs(over(i));
    }
    EXPECT_NEAR(over(last), 0.0, 1e-6) << fps;
    if (fps < 100.0) continue;  // between frames it is deeper
    const double pull = 14.5333 * car.Setting("Jump Gravity") * CarScene::kScale / 4.0;
    const double speed = std::sqrt(2.0 * pull * drop);
    EXPECT_GT(-over(deepest), Depth(car, speed - 0.3) - 1e-3) << speed;
    EXPECT_LT(-over(deepest), Depth(car, speed + 0.3) + 1e-3) << speed;
  }
}

/// Until it has landed the car has its full grip, however slowly tires take hold again.
TEST(CarJump, TiresTakeHoldAnewWhereACarLands) {
  std::ptrdiff_t landed = 0;
  const auto drive = [&](double release) {
    CarScene car;
    car.Edit("Skidding Release Response Factor", release);
    car.AddGround(GridMesh(Ramp, Rows(-30, 30, 2), Rows(-100, 20, 1200)));
    car.Drive(14.4, {{kGas, PressedSoon(1)}, {kSteer, Between(12, 15, 0.5)}});
    landed = car.air.rend() - std::find(car.air.rbegin(), car.air.rend(), 15);
    std::vector<Vector> path;
    for (int i = 0; i <= car.FrameOf(14.4); ++i) path.push_back(car.At("CarBodyMesh", i));
    return path;
  };
  const std::vector<Vector> atOnce = drive(1.0), slowly = drive(0.1);
  ASSERT_LT(landed, 345);
  for (int i = 0; i < landed; ++i) ASSERT_EQ(atOnce[i], slowly[i]) << i;
  EXPECT_GT((atOnce[350] - slowly[350]).length(), 0.01);
}

}  // namespace
}  // namespace orv::tests
