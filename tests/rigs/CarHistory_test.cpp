// Takes of a car that go on from a frame within an earlier one.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Poses = CarScene::Poses;

/// Hills with a jump, at 25 frames a second for 12 s, with every pedal in use.
std::unique_ptr<CarScene> NewDrive() {
  auto car = std::make_unique<CarScene>();
  const Height ground = [](double x, double z) { return Hills(x, z) + Ramp(x, z + 20.0); };
  car->AddGround(GridMesh(ground, Rows(-60, 60, 60), Rows(-150, 60, 420)));
  car->Place({0, ground(0, 0), 0});
  car->Edit("Gravel Shake Offset Value", 0.3);
  car->Edit("Steering Noise", 0.05);
  car->scene().SetRange(0.0, 12.0);
  car->SetInputs({{kGas, [](double t) { return t < 8 ? 1.0 : -0.7; }},
                  {kSteer, [](double t) { return 0.4 * std::sin(t * 1.3); }},
                  {kBoost, Between(2.5, 3.5)},
                  {kSkid, Between(4.5, 5, 0.5)},
                  {kSkidBrake, Between(6, 6.7)},
                  {kBurnout, Between(1, 1.5)},
                  {kForce, Between(7, 7.4, 0.5)},
                  {kAbs, Between(10, 10.6)}},
                 12.0);
  car->Reopen();  // a file's ground is as exact as its floats
  return car;
}

/// The first frame in which the poses differ, as text; empty when they are the same bits.
std::string Difference(const Poses& a, const Poses& b) {
  for (const auto& [node, poses] : a)
    for (std::size_t i = 0; i < poses.size(); ++i)
      if (!(poses[i] == b.at(node)[i])) return node + " at " + std::to_string(i);
  return {};
}

TEST(CarHistory, AnInterruptedTakeIsTheUninterruptedOneBitForBit) {
  auto car = NewDrive();
  car->Resimulate(0, 300);
  const Poses whole = car->PosesOf(0, 300);
  EXPECT_EQ(CarScene::Hash(whole), 2611523817375472610u)
      << "a change to a car's motion is to be a choice";
  EXPECT_NE(std::count(car->air.begin(), car->air.end(), 15), 0) << "a jump is in it";
  for (int frame = 0; frame < 300; frame += 13) {
    car->Resimulate(frame, 300);
    ASSERT_EQ(Difference(whole, car->PosesOf(0, 300)), "") << "gone back to " << frame;
  }
  car.reset();
  for (const int frame : {30, 77, 156, 255}) {
    auto other = NewDrive();
    other->Resimulate(0, frame);
    if (frame != 77) other->Reopen();
    other->Resimulate(frame, 300);
    EXPECT_EQ(Difference(whole, other->PosesOf(0, 300)), "") << "broken off at " << frame;
  }
}

TEST(CarHistory, WithoutSeamlessTransitionsATakeBeginsAnew) {
  auto car = NewDrive();
  car->Edit("Enable Seamless Transitions", 0);
  car->Resimulate(0, 150);
  const double speed = (car->At("CarBodyBaseMesh", 150) - car->At("CarBodyBaseMesh", 149)).length();
  EXPECT_GT(speed, 0.1);
  car->SetInputs({}, 12.0);
  car->Edit("Initital Velocity (% of max)", 50);
  car->Find("CarBodyMesh").RemoveChannel(rws::adaptor::headless::ChannelPath::kTranslation);
  car->Resimulate(0, 10);
  EXPECT_NEAR((car->At("CarBodyBaseMesh", 1) - car->At("CarBodyBaseMesh", 0)).length(),
              CarScene::kScale * 1.5 * 0.04, 0.01);
}

}  // namespace
}  // namespace orv::tests
