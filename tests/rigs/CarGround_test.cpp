// How the wheels meet the ground: edges, gaps, no ground, and the three casters.
#include "core/interface/GroundReport.h"
#include "rigs/CarScene.h"
#include "support/RaceTrack.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;
using Node = CarScene::Node;

constexpr double kSide = 0.783;  ///< half track (m)
constexpr double kHalfWidth = 2.7 * 0.13 * 0.62 / 2;

/// A step up of 0.12 m, 8 m ahead; its face is half a millimetre deep.
double Kerb(double, double z) {
  return z < -8.0 ? 0.12 : 0.0;
}
util::CMesh KerbMesh() {
  return GridMesh(Kerb, Rows(-5, 5, 2), {-60, -20, -8.0005, -8, 10});
}

void ExpectWheelsAt(CarScene& car, int frame, double height) {
  for (const char* wheel : CarScene::kWheels)
    EXPECT_NEAR(car.At(wheel, frame).y, height, 1e-4) << wheel;
}

TEST(CarGround, AKerbIsClimbedAndHardlyEntersTheTyre) {
  for (const double tirePressure : {0.0, 0.8}) {
    CarScene car;
    car.AddGround(KerbMesh());
    car.Edit("Tire Pressure", tirePressure);
    car.Drive(12, {{kGas, Always(0.4)}});
    double deepest = 0.0;
    for (int i = 0; i <= 300; ++i)
      for (std::size_t wheel = 0; wheel < 4; ++wheel)
        deepest = std::min(deepest, car.Clearance(wheel, i, Kerb));
    ExpectWheelsAt(car, 300, 0.12 + CarScene::kRadius);
    EXPECT_GT(deepest, -0.12 * CarScene::kRadius);
    EXPECT_LT(car.At("CarBodyMesh", 300).z, -12.0);
  }
}

TEST(CarGround, AWheelBelowTheFloorComesBackUpToTwoBodyLengths) {
  // The rays climb in steps, of which the last one ends 2.1 body lengths above a wheel's centre.
  const double lowest = -2.1 * CarScene::kScale - CarScene::kRadius;
  for (const double depth : {-0.3, -1.0, -4.0, lowest + 0.05, lowest - 0.05}) {
    CarScene car;
    car.AddGround(GridMesh(Flat, Rows(-5, 5, 2), Rows(-60, 20, 4)));
    car.Place({0, depth, 0});
    car.Drive(6, {{kGas, Always(0.3)}});
    if (depth > lowest)
      ExpectWheelsAt(car, 150, CarScene::kRadius);
    else
      for (const char* wheel : CarScene::kWheels) EXPECT_LT(car.At(wheel, 150).y, depth);
  }
}

TEST(CarGround, WithoutAnyGroundACarStandsOnThePlaneOfZeroHeight) {
  for (const Vector& place : {Vector(0, 0, 0), Vector(5000, 0.2, 0), Vector(0, 2.0, -9000)}) {
    CarScene car;
    car.Place(place);
    car.Drive(10, {});
    ExpectWheelsAt(car, 250, CarScene::kRadius);
  }
}

TEST(CarGround, TheFastCastersOwnPlaneEndsAtAThousandMetres) {
  CarScene car;
  car.Edit("Use Fast Ray Cast", 1);
  car.Place({0, 0, -960});
  car.Drive(12, {{kGas, PressedSoon(1)}});
  for (int i = 1; i <= 300; ++i) {
    const double z = car.At("CarBodyBaseMesh", i).z;
    if (z > -998) {
      ASSERT_EQ(car.air[i], 0) << i;
      ASSERT_NEAR(car.At("WheelMesh_FL", i).y, CarScene::kRadius, 1e-3);
    }
    if (z < -1003) {
      ASSERT_EQ(car.air[i], 15) << i;
    }
  }
  EXPECT_LT(car.At("CarBodyMesh", 300).y, -5.0);
  EXPECT_TRUE(car.messages.empty());
}

TEST(CarGround, AWheelsEdgeAloneOnAKerbHoldsTheWheelByTheEdgeRays) {
  for (const auto& [rays, part] : {std::pair{1, 0.7}, {0, 0.7}, {1, 1.05}}) {
    const double edge = -kSide - kHalfWidth * part;
    const auto kerb = [&](double x, double) { return x < edge ? 0.1 : 0.0; };
    CarScene car;
    car.AddGround(GridMesh(kerb, {-5, edge - 0.0005, edge + 0.0005, 5}, Rows(-60, 10, 2)));
    car.Edit("Cast Rays at Wheel Edges", rays);
    car.Drive(5, {});
    const double held = rays && part < 1.0 ? 0.1 : 0.0;
    for (const char* wheel : {"WheelMesh_FL", "WheelMesh_BL"})
      EXPECT_NEAR(car.At(wheel, 125).y, CarScene::kRadius + held, 0.01) << wheel;
    EXPECT_NEAR(car.At("WheelMesh_FR", 125).y, CarScene::kRadius, 0.01);
  }
}

using Prepare = std::function<void(CarScene&)>;
/// A drive over the hills with what a caster needs set by `prepare`, on one mesh or on `many`.
std::unique_ptr<CarScene> DriveHills(const Prepare& prepare, bool many = false) {
  auto car = std::make_unique<CarScene>();
  const util::CMesh hills = GridMesh(Hills, Rows(-30, 30, 60), Rows(-100, 30, 130));
  if (many) {
    // The car and its model stand below the same group.
    const auto before = car->scene().GetNodeCount();
    Node& track = AddRaceTrack(car->scene(), hills);
    EXPECT_EQ(car->scene().GetNodeCount() - before, 753u);
    car->scene().Reparent(car->Find("CarBodyMesh"), &track, 0.0);
    car->scene().AddNode("Model", &car->Find("CarBodyMesh")).SetMesh(util::CMesh_Box(9, 9, 9));
    car->Declare(track);
    rws::GroundReport report;
    EXPECT_EQ(car->rig->GetRig()->Extension(rws::kTellGround, &report, nullptr), 1);
    EXPECT_EQ(report.nodes, std::vector<std::string>{"Track"});
    EXPECT_EQ(report.meshes, 544);
    EXPECT_EQ(report.triangles, 2 * 60 * 130 + 24 * 12);
  } else {
    car->AddGround(hills);
  }
  car->Place({0, Hills(0, 0), 0});
  prepare(*car);
  car->Drive(10, {{kGas, PressedSoon(1)}, {kSteer, [](double t) { return 0.6 * std::sin(t); }}});
  EXPECT_TRUE(car->messages.empty()) << car->messages[0];
  return car;
}
using Path = std::vector<Vector>;
/// That of a drive with so many rays.
Path PathOf(int rays, const Prepare& prepare, bool many = false) {
  const auto car = DriveHills(
      [&](CarScene& scene) {
        scene.Edit("Ray Multiplier", rays);
        prepare(scene);
      },
      many);
  Path path;
  for (int i = 0; i <= 250; ++i)
    for (const char* node : {"CarBodyMesh", "WheelMesh_FL"}) path.push_back(car->At(node, i));
  return path;
}
double Deviation(const Path& a, const Path& b) {
  double most = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) most = std::max(most, (a[i] - b[i]).length());
  return most;
}

TEST(CarGround, AllCastersGiveTheSameDriveOnOneMeshOnManyAndFromAStoredMesh) {
  const auto host = [](CarScene&) {};
  const auto fast = [](CarScene& car) { car.Edit("Use Fast Ray Cast", 1); };
  // The stored ground is where it was, whatever becomes of the one in the scene.
  const auto store = [](CarScene& car) {
    car.Edit("Store Ground Mesh Data", 1);
    EXPECT_EQ(car.Setting("Store Ground Mesh Data"), 1);
    // The car leaves the group, which would take it along.
    car.scene().Reparent(car.Find("CarBodyMesh"), nullptr, 0.0);
    Node* const ground = car.scene().Find("Ground");
    (ground ? ground : car.scene().Find("Track"))->SetPose({{0, -50, 0}, {}, {1, 1, 1}});
    car.Reopen();
    EXPECT_EQ(car.Setting("Store Ground Mesh Data"), 1);
  };
  const auto fastStored = [&](CarScene& car) {
    fast(car);
    store(car);
  };
  for (const int rays : {10, 1}) {
    const Path expected = PathOf(rays, host);
    for (const bool many : {false, true}) {
      std::vector<Prepare> ways{fast, fastStored};
      if (many) ways.push_back(host);
      if (rays == 1) ways.push_back(store);  // by the tree
      for (const Prepare& way : ways)
        EXPECT_LT(Deviation(expected, PathOf(rays, way, many)), 1e-6) << &way - ways.data() << many;
    }
  }
}

TEST(CarGround, AMovingMeshOfAGroupCarriesTheCarAndForFastRaysStandsWhereItStood) {
  for (const int fast : {0, 1}) {
    CarScene car;
    Node& set = car.scene().AddNode("Set");
    Node& lift = car.scene().AddNode("Lift", &car.scene().AddNode("Inner", &set));
    lift.SetMesh(GridMesh(Flat, Rows(-5, 5, 2), Rows(-5, 5, 2)));
    CarScene::Animate(lift, 2.0, 2, [](double t) {
      return rws::adaptor::Trs{{0.0, std::max(t / 2.0 - 1.0, 0.0), 0.0}, {}, {1, 1, 1}};
    });
    // Another rig's helpers are no ground.
    auto* const other = car.core().CreateToolFromFactory("4WheelerExt", "Other");
    ASSERT_TRUE(other);
    car.scene().Reparent(*car.scene().Find("Other_CarBodyMesh"), &set, 0.0);
    car.Declare(set);
    car.Edit("Use Fast Ray Cast", fast);
    car.Drive(6, {});
    EXPECT_NEAR(car.At("WheelMesh_FL", 50).y, CarScene::kRadius, 1e-3);
    EXPECT_NEAR(car.At("WheelMesh_FL", 150).y, CarScene::kRadius + (fast ? 0.0 : 1.0), 1e-3);
  }
}

TEST(CarGround, AGroundThatCannotBeStoredIsToldOf) {
  CarScene car;
  const auto refused = [&](const std::string& text) {
    car.messages.clear();
    car.Edit("Store Ground Mesh Data", 1);
    EXPECT_EQ(car.messages, std::vector<std::string>{"Error: " + text});
    EXPECT_EQ(car.Setting("Store Ground Mesh Data"), 0);
  };
  car.scene().Reparent(car.Find("GravityDirectionMesh"), nullptr, 0.0);
  refused("No ground mesh available");
  auto& locator = car.scene().AddNode("Locator");
  car.Declare(locator);
  refused("Surface not a mesh");
  car.AddGround({}, "Empty");
  refused("Mesh Invalid");
  // One that is stored is forgotten with the fast rays.
  car.AddGround(KerbMesh(), "Kerb");
  car.Set("Use Fast Ray Cast=1; Store Ground Mesh Data=1; Use Fast Ray Cast=0");
  EXPECT_EQ(car.Setting("Store Ground Mesh Data"), 0);
}

}  // namespace
}  // namespace orv::tests
