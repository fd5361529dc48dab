// Cars and grounds that are not as they should be.
#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;
using Texts = std::vector<std::string>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
const char kUnknownSurface[] =
    "Error: 1024 !(parent->cGravityDirectionNode.mParentMesh_inv.size() > iSurface) meaning "
    "mParentMesh_inv[ iSurface] would crash.\n\n4wheelerextended_CCarCamObject";

void ExpectFinite(CarScene& car, int last) {
  for (const auto& [node, poses] : car.PosesOf(0, last))
    for (const auto& pose : poses)
      for (const double number : pose.m) ASSERT_TRUE(std::isfinite(number)) << node;
}
util::CMesh Floor() {
  return GridMesh(Flat, Rows(-20, 20, 8), Rows(-60, 20, 16));
}

TEST(CarRigging, WhatIsRiggedOddlyIsToldOfAndAnUnevenBodyMadeEven) {
  // What is done, how often it is told (when a box is checked and in a take), and how.
  const std::tuple<void (*)(CarScene&), int, const char*> rows[] = {
      {[](CarScene& car) {
         car.Find("CarBodyMesh").SetPose({{0, 0.54, 0}, {}, {2.7, 2.7, 3.0}});
       },
       1,
       "Nonuniform scaling is not allowed on the body since it would affect children.\nThe "
       "4-wheeler body will now rescale to become uniform.\nScale the meshes that you parent to "
       "the body instead."},
      {[](CarScene& car) {
         auto pose = car.Find("WheelCenterMesh_BR").GetPose();
         pose.translation.x += 0.5;
         car.Find("WheelCenterMesh_BR").SetPose(pose);
       },
       1,
       "In the rigging process the wheels should be moved and scaled with the "
       "WheelRelocatorMesh:es.\nUse the WheelCenterMesh:es for suspension and particles."},
      {[](CarScene& car) {
         car.scene().Reparent(car.Find("TargetMesh"), &car.Find("CarBodyMesh"), 0.0);
         car.Edit("Autonomous Mode", 1);
         EXPECT_EQ(car.messages.size(), 1u);
       },
       2,
       "The TargetMesh is parented to the CarBodyMesh.\nThis will mess up the autonomous mode "
       "making the car spin."}};
  for (const auto& [rig, times, told] : rows) {
    CarScene car;
    rig(car);
    const double size = car.World("CarBodyMesh", 0).rowLengths().z;
    car.Drive(2, {{kGas, Always(0.5)}});
    EXPECT_EQ(car.messages,
              Texts(static_cast<std::size_t>(times), std::string("Warning: ") + told));
    for (const int frame : {0, 50})
      EXPECT_LT((car.World("CarBodyMesh", frame).rowLengths() - Vector(size, size, size)).length(),
                1e-12);
  }
}

TEST(CarRigging, ACarWithoutAHelperDrivesAndOneWithoutItsBaseIsKeptUnopened) {
  for (const char* gone : {"TargetMesh", "FollowCam", "WheelCenterMesh_FL", "SteeringWheelMesh"}) {
    std::unique_ptr<CarScene::Node> node;
    CarScene car;
    car.AddGround(Floor());
    node = car.scene().Detach(car.Find(gone));
    car.Drive(2, {{kGas, Always(0.5)}});
    EXPECT_LT(car.At("CarBodyMesh", 50).z, -0.02) << gone;
    car.Reopen();
    car.Resimulate(0, 50);
    EXPECT_EQ(car.messages, Texts{}) << gone;
  }
  for (const char* gone : {"CarBodyBaseMesh", "GravityDirectionMesh", "WheelMesh_FL"}) {
    std::unique_ptr<CarScene::Node> node;
    CarScene car;
    node = car.scene().Detach(car.Find(gone));
    std::string error;
    const std::string path = testing::TempDir() + "car_without.glb";
    ASSERT_TRUE(car.session.Save(path, error) && car.session.Open(path, error)) << error;
    EXPECT_EQ(car.session.TakeWarnings().size(), 1u) << gone;
    EXPECT_FALSE(car.core().FindInstance("Car"));
    std::remove(path.c_str());
  }
}

TEST(CarRigging, NodesThatGoAwayBeforeOrInATakeLeaveFinitePoses) {
  for (const char* gone : {"WheelRelocatorMesh_BL", "WheelMesh_FR", "ChassisRelocatorMesh",
                           "CarBodyBaseMesh", "CarBodyMesh"}) {
    for (const int frame : {0, 25}) {
      std::unique_ptr<CarScene::Node> node;
      CarScene car;
      car.AddGround(Floor());
      if (frame == 0) node = car.scene().Detach(car.Find(gone));
      car.onFrame = [&](int i) {
        if (i == frame) node = car.scene().Detach(car.Find(gone));
      };
      car.Drive(2, {{kGas, Always(0.5)}});
      ExpectFinite(car, 50);
      EXPECT_FALSE(car.core().IsResimulating());
    }
  }
}

TEST(CarRigging, AGroundThatGoesAwayInATakeLeavesThePlaneOrNothing) {
  for (const bool below : {true, false}) {
    std::unique_ptr<CarScene::Node> gone;
    CarScene car;
    auto& ground = car.scene().AddNode("Ground");
    ground.SetMesh(Floor());
    if (below)
      car.scene().Reparent(ground, &car.Find("GravityDirectionMesh"), 0.0);
    else
      car.Declare(ground);
    car.onFrame = [&](int i) {
      if (i == 40) gone = car.scene().Detach(ground);
    };
    car.Drive(4, {{kGas, Always(0.5)}});
    ExpectFinite(car, 100);
    EXPECT_TRUE(car.messages.empty());
    EXPECT_NEAR(car.At("WheelMesh_FR", 100).y, CarScene::kRadius, 1e-3) << below;
    EXPECT_FALSE(car.core().IsResimulating());
  }
}

TEST(CarRigging, AGroundThatGainsAChildInATakeIsToldOfOnceAndHoldsFromTheNextTakeOn) {
  CarScene car;
  car.AddGround(Floor());
  car.onFrame = [&](int i) {
    if (i != 40) return;
    auto& more = car.scene().AddNode("More", &car.Find("GravityDirectionMesh"));
    more.SetMesh(GridMesh([](double, double) { return 0.05; }, Rows(-20, 20, 2), Rows(-60, 20, 2)));
  };
  car.Drive(4, {{kGas, Always(0.5)}});
  EXPECT_EQ(car.messages, Texts{kUnknownSurface});
  ExpectFinite(car, 100);
  car.messages.clear();
  car.onFrame = nullptr;
  car.Edit("Ray Multiplier", 1);  // the nearer of the two carries it, without extra rays' help
  car.Resimulate(0, 100);
  EXPECT_TRUE(car.messages.empty());
  EXPECT_NEAR(car.At("WheelMesh_FR", 100).y - car.At("GravityDirectionMesh", 100).y,
              CarScene::kRadius + 0.05 * car.World("GravityDirectionMesh", 0).rowLengths().y, 1e-3);
}

TEST(CarRigging, DamagedTrianglesAreNoGroundForAnyCaster) {
  util::CMesh damaged = Floor();
  const int n = static_cast<int>(damaged.vertices.size());
  for (const Vector& v : {Vector(kNan, 0.1, 0), Vector(0, kNan, 0), Vector(0, 0.2, -HUGE_VAL),
                          Vector(0, 0.2, -3), Vector(0, 0.2, -3)})
    damaged.vertices.push_back(v);
  damaged.faces.insert(damaged.faces.begin(), {n, n + 1, n + 2, n, 0, 1, 2, n + 1, 5, n + 3, n + 4,
                                               n + 3, n + 3, n + 4, 0, 0, n + 2, 9});
  for (const int fast : {0, 1}) {
    for (const int store : {0, 1}) {
      std::vector<Vector> ends;
      for (const util::CMesh& mesh : {Floor(), damaged}) {
        CarScene car;
        car.AddGround(mesh);
        if (fast == 0 && store == 1) car.Edit("Ray Multiplier", 1);
        car.Edit("Use Fast Ray Cast", fast);
        car.Edit("Store Ground Mesh Data", store);
        car.Drive(4, {{kGas, PressedSoon(1)}});
        ExpectFinite(car, 100);
        EXPECT_TRUE(car.messages.empty());
        ends.push_back(car.At("CarBodyMesh", 100));
      }
      EXPECT_LT((ends[0] - ends[1]).length(), 1e-9) << fast << store;
    }
  }
}

TEST(CarRigging, AnEmptyMeshHoldsNothingAndIsRefusedByTheFastCaster) {
  {
    CarScene car;
    car.AddGround({});
    car.Drive(2, {});
    EXPECT_TRUE(car.messages.empty());
    ExpectFinite(car, 50);
  }
  std::vector<std::string> told;
  {
    CarScene fast;
    fast.AddGround({});
    fast.Edit("Use Fast Ray Cast", 1);
    fast.Drive(2, {});
    ASSERT_EQ(fast.messages.size(), 1u);
    EXPECT_EQ(fast.messages[0],
              "UNSUPPORTED SURFACE TYPE: Support for this kind of surface has not yet been "
              "implemented for FAST RAYCAST for this adaptor. Fast raycast is therefore "
              "cancelled.\nContact support for more information on this issue.\n\nSurface: Ground");
    EXPECT_EQ(fast.Setting("Use Fast Ray Cast"), 0);
    EXPECT_EQ(fast.Setting("Ray Multiplier"), 1);
    told = fast.messages;
  }

  // A stored mesh doesn't hide such a parent, and carries the car all the same.
  CarScene stored;
  CarScene::Node& ground = stored.AddGround(Floor());
  stored.Edit("Use Fast Ray Cast", 1);
  stored.Edit("Store Ground Mesh Data", 1);
  ground.SetMesh(util::CMesh());
  stored.Drive(2, {});
  EXPECT_EQ(stored.messages, told);
  EXPECT_EQ(stored.Setting("Use Fast Ray Cast"), 0);
  EXPECT_NEAR(stored.At("CarBodyMesh", 50).y, CarScene::kRestHeight, 0.02);
}

}  // namespace
}  // namespace orv::tests
