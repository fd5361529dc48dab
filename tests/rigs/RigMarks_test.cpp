// What rigs tell of their work, against the scene that they leave.
#include "core/interface/RigMarks.h"

#include "rigs/CarScene.h"
#include "util/CMesh_Box.h"

namespace orv::tests {
namespace {

using rws::RigMarks;
using Vector = HostScene::Vector;

RigMarks MarksOf(HostScene& scene, int frame) {
  RigMarks marks;
  marks.Begin(scene.Frame(frame));
  EXPECT_EQ(scene.rig->GetRig()->Extension(rws::kTellMarks, &marks, nullptr), 1);
  return marks;
}

TEST(RigMarks, WheelsOfACarAtRestCarryItWhereTheyStand) {
  CarScene car;
  const Height slope = [](double x, double) { return 2.0 + 0.05 * x; };
  car.AddGround(GridMesh(slope, Rows(-30, 30, 6), Rows(-30, 30, 6)));
  car.PlaceOn(slope);
  const Vector normal = Vector(-0.05, 1.0, 0.0).normalized();
  const auto expect = [&](int frame) {
    const RigMarks marks = MarksOf(car, frame);
    ASSERT_EQ(marks.contacts.size(), 4u);
    double load = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
      const RigMarks::Contact& contact = marks.contacts[i];
      EXPECT_NEAR(contact.point.y, slope(contact.point.x, contact.point.z), 1e-3);
      EXPECT_NEAR((contact.point - marks.rays[i].from).length(), CarScene::kRadius, 1e-6);
      EXPECT_LT((contact.normal - normal).length(), 1e-3);
      EXPECT_LT(contact.slip.length(), 5e-3);
      EXPECT_GT(contact.load, 0.1);
      load += contact.load;
      EXPECT_TRUE(marks.rays[i].hits);
    }
    EXPECT_NEAR(load, 1.0, 1e-3) << frame;
  };
  car.onFrame = [&](int frame) {
    if (frame == 40) expect(frame);
  };
  car.Drive(2.0, {});
  expect(45);
  EXPECT_LT((MarksOf(car, 45).rays[2].from - car.At(CarScene::kWheels[2], 45)).length(), 1e-12);
  EXPECT_TRUE(MarksOf(car, -5).contacts.empty()) << "no take has been there";
}

TEST(RigMarks, LockedWheelsSlipAsFastAsTheCarSlides) {
  CarScene car;
  car.Drive(4.0, {{kGas, PressedSoon(1)}, {kSkidBrake, Between(3.0, 9.0)}});
  const auto speed = [&](int frame) {
    return (car.At("CarBodyBaseMesh", frame) - car.At("CarBodyBaseMesh", frame - 1)) / 0.04;
  };
  for (const RigMarks::Contact& contact : MarksOf(car, 70).contacts)
    EXPECT_LT(contact.slip.length(), 0.02 * speed(70).length()) << "it rolls";
  const RigMarks sliding = MarksOf(car, 80);
  ASSERT_EQ(sliding.contacts.size(), 4u);
  for (const RigMarks::Contact& contact : sliding.contacts)
    EXPECT_LT((contact.slip - speed(80)).length(), 0.05 * speed(80).length());
}

TEST(RigMarks, ShotsLeadFromTheBarrelAndTellWhatTheyMet) {
  HostScene gun("Firepower", "Rig", 25.0, rws::addon::AllRigs());
  gun.scene().SetRange(0.0, 10.0);
  gun.AddAbove("collision", util::CMesh_Box(50.0, 50.0, 2.0))
      .SetPose({{0.0, 0.0, -60.0}, {}, {1, 1, 1}});
  gun.scene().Reparent(gun.Find("fire trigger"), nullptr, 0.0);
  gun.Set("Rate of fire (rounds/s)=5; Muzzle Velocity (m/s)=100");
  gun.Feed("Fire", 100, Always(1.0));
  gun.Resimulate(0, 60);
  int hits = 0;
  for (const int frame : {5, 12, 50}) {
    const RigMarks marks = MarksOf(gun, frame);
    ASSERT_FALSE(marks.shots.empty());
    for (std::size_t i = 0; i < marks.shots.size(); ++i) {
      char name[32];
      // The latest comes first.
      std::snprintf(name, sizeof name, "bullet_%05zu", marks.shots.size() - i);
      const RigMarks::Shot& shot = marks.shots[i];
      EXPECT_LT((shot.to - gun.At(name, frame)).length(), 1e-9);
      EXPECT_LT((shot.from - gun.At("templateBullet", 0)).length(), 1e-9);
      EXPECT_LT((shot.direction - Vector(0, 0, -1)).length(), 1e-9);
      // Four metres a frame as long as nothing is in its way.
      const double way = (shot.to - gun.At(name, frame - 1)).length();
      EXPECT_EQ(shot.hits, way < 3.9 && (shot.to - shot.from).length() > 1.0) << shot.to.z;
      hits += shot.hits;
    }
  }
  EXPECT_GT(hits, 3);
}

TEST(RigMarks, ABeltTellsItsSpeedAgainstItsFrame) {
  HostScene belt("CrawlerTracks", "Rig", 25.0, rws::addon::AllRigs());
  belt.scene().SetRange(0.0, 10.0);
  for (const char* action : {"Add Wheel", "Add Wheel", "Calculate Number of Steps", "Create Track"})
    belt.Press(action);
  belt.Feed("Forward/Backward", 250, Always(1.0));
  // The whole vehicle is on its way: that is no speed of the belt.
  HostScene::Animate(belt.Find("Frame"), 0.04, 250, [](double t) {
    return rws::adaptor::Trs{{0.0, 0.0, -2.0 * t}, {}, {1, 1, 1}};
  });
  belt.Resimulate(0, 60);
  double told = 0.0, moved = 0.0;
  for (int frame = 40; frame < 60; ++frame)
    for (const RigMarks::Speed& speed : MarksOf(belt, frame).speeds) told += speed.value;
  for (auto* node : belt.scene().GetNodes()) {
    if (node->GetName().find("_step") == std::string::npos) continue;
    for (int frame = 40; frame < 60; ++frame) {
      const auto inFrame = [&](int i) {
        return belt.World("Frame", i)
            .affineInverse()
            .transformPoint(node->WorldMatrix(belt.Frame(i)).translation());
      };
      moved += (inFrame(frame) - inFrame(frame - 1)).length() / 0.04;
    }
  }
  EXPECT_GT(moved, 0.0);
  EXPECT_NEAR(told, moved, 0.05 * moved);
}

TEST(RigMarks, ACameraTellsWhatItFollows) {
  HostScene camera("SteadyCam", "Rig", 25.0, rws::addon::AllRigs());
  HostScene::Animate(camera.Find("AttachedCam"), 0.04, 50, [](double t) {
    return rws::adaptor::Trs{{3.0 * t, 1.0, 0.0}, {}, {1, 1, 1}};
  });
  camera.Resimulate(0, 40);
  const RigMarks marks = MarksOf(camera, 30);
  ASSERT_EQ(marks.targets.size(), 1u);
  EXPECT_EQ(marks.targets[0].point, camera.At("AttachedCam", 30));
  EXPECT_EQ(marks.targets[0].from, camera.At("FollowCam", 30));
}

}  // namespace
}  // namespace orv::tests
