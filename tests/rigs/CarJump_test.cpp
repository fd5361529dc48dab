// Off a ramp and down again.
#include "core/Resources.h"
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

TEST(CarJump, ACarFliesKeepsItsAttitudeLandsAndStays) {
  for (const double fps : {12.0, 25.0, 60.0, 120.0}) {
    CarScene car(fps);
    EXPECT_EQ(car.core().LoadProfile("Car", "Start Profile"), "");
    car.Edit("Gravel Shake Offset Value", 0);
    const Jump jump = Drive(car, 24);
    const double seconds = jump.airborne / fps;
    EXPECT_TRUE(seconds > 0.0 && seconds < 1.0) << fps << ": " << seconds;
    EXPECT_EQ(jump.bounced, 0) << fps;
    EXPECT_LT(jump.turned, 0.02) << fps;
    EXPECT_LT(jump.trembles, 1e-6) << fps;
  }
}

TEST(CarJump, NoProfileBouncesOffAgain) {
  const std::string folder = ":/data/4wheelerextended/configprofiles";
  for (const std::string& path : rws::core::ListResources(folder, "ocp")) {
    const std::string name = path.substr(folder.size() + 1, path.size() - folder.size() - 5);
    CarScene car;
    EXPECT_EQ(car.core().LoadProfile("Car", name), "") << name;
    if (car.Setting("Autonomous Mode") != 0.0) continue;
    car.Edit("World Avoidance Sphere (scale relative)", 0);
    const Jump jump = Drive(car, 40);
    EXPECT_TRUE(jump.airborne > 0 || name.rfind("Boat", 0) == 0) << name;
    EXPECT_EQ(jump.bounced, 0) << name;
    EXPECT_LT(jump.turned, 0.02) << name;
    EXPECT_GT(jump.deepest, -CarScene::kRadius) << name;
    EXPECT_LT(jump.trembles, 1e-3) << name;
  }
}

}  // namespace
}  // namespace orv::tests
