// The gun: what it fires when, how projectiles fly and bounce, and how takes go on.
#include "plugins/release/firepower/FiringLogic.h"
#include "plugins/release/firepower/Flight.h"
#include "rigs/BareRig.h"
#include "rigs/RigSuite.h"
#include "support/FeltControl.h"

namespace orv::tests {
namespace {

using rws::addon::FiringLogic;
using rws::addon::Flight;
using rws::addon::GunSettings;
using rws::addon::GunState;
using Vector = util::Vector3<double>;
using Matrix = util::Matrix<double>;

/// Frames in which a gun discharges, the input given by frame.
std::vector<int> Discharges(const GunSettings& settings, int frames, double fps,
                            const std::function<bool(int)>& fire) {
  FiringLogic logic(settings);
  GunState state;
  std::vector<int> discharges;
  for (int i = 1; i <= frames; ++i)
    if (logic.Step(state, fire(i), i / fps, 1.0 / fps)) discharges.push_back(i);
  return discharges;
}

/// Pressed in the frames that are marked.
std::vector<int> Discharges(const GunSettings& settings, const std::string& presses) {
  return Discharges(settings, static_cast<int>(presses.size()), 25.0,
                    [&](int i) { return presses[static_cast<std::size_t>(i) - 1] == '#'; });
}

/// A gun alone in the world, its barrel along -Z unless it is turned.
class Gun : public RigScene {
 public:
  explicit Gun(double fps = 25.0) : RigScene("Firepower", fps) {
    scene().Reparent(Find("fire trigger"), nullptr, 0.0);
    scene().SetRange(0.0, 1000.0);
    for (auto path : {hl::ChannelPath::kTranslation, hl::ChannelPath::kRotation})
      EXPECT_FALSE(Find("fire trigger").GetChannel(path));
    Drive("Fire", {{0.0, 1.0}});
  }
  /// The collision node under a mesh that stands where it is told.
  void AddSurface(util::CMesh mesh, const Matrix& pose = {}) {
    AddAbove("collision", std::move(mesh)).SetPose(rws::adaptor::Decompose(pose));
  }
  Matrix Bullet(int number, int frame) {
    char name[32];
    std::snprintf(name, sizeof name, "bullet_%05d", number);
    return World(name, frame);
  }
  Vector At(int number, int frame) { return Bullet(number, frame).translation(); }
  int Count() {
    int count = 0;
    for (auto* node : scene().GetNodes()) count += node->GetName().rfind("Rig_bullet_", 0) == 0;
    return count;
  }
};

TEST(Firepower, RatesAreMetAtEveryFrameRateAndExactlyWhereTheyDivideIt) {
  for (const double fps : {24.0, 25.0, 29.97, 30.0, 50.0, 60.0}) {
    for (int rate = 1; rate <= 60; ++rate) {
      GunSettings settings;
      settings.rateOfFire = rate;
      settings.randomSeed = rate;
      const int frames = static_cast<int>(100.0 * fps);
      const auto fired = Discharges(settings, frames, fps, [](int) { return true; });
      const double want = std::min<double>(100.0 * rate, frames);
      EXPECT_NEAR(fired.size(), want, 0.02 * want) << rate << " at " << fps;
      const double wait = std::max(fps / rate, 1.0);
      for (std::size_t i = 1; i < fired.size(); ++i) {
        const int frameCount = fired[i] - fired[i - 1];
        ASSERT_TRUE(frameCount == std::floor(wait + 1e-9) || frameCount == std::ceil(wait - 1e-9))
            << rate << " at " << fps;
      }
    }
  }
}

TEST(Firepower, PressesAreCountedAndDelayedAsTold) {
  using Frames = std::vector<int>;
  GunSettings s;
  s.rateOfFire = 0;  // one discharge a press
  EXPECT_EQ(Discharges(s, "..###..#.##"), (Frames{3, 8, 10}));
  for (const int every : {0, 1}) {
    s.fireNthTime = s.fireFirstNthTime = every;
    EXPECT_EQ(Discharges(s, "#.#.##."), (Frames{1, 3, 5})) << every;
  }
  s.fireNthTime = 2;
  s.fireFirstNthTime = 3;
  EXPECT_EQ(Discharges(s, "#.##.##.#.#.#.#.#."), (Frames{6, 11, 15}));
  s.rateOfFire = 25;
  EXPECT_EQ(Discharges(s, "##.#.###.##.##."), (Frames{6, 7, 8, 13, 14})) << "held, it goes on";

  s = GunSettings();
  s.rateOfFire = 25;
  s.timeDelay = 3;
  EXPECT_EQ(Discharges(s, ".#######."), (Frames{5, 6, 7, 8})) << "one delay a press";
  EXPECT_EQ(Discharges(s, ".#......"), (Frames{5})) << "owed to a press that has ended";
  EXPECT_EQ(Discharges(s, ".##.##.#####.."), (Frames{5, 6, 11, 12}));
  s.rateOfFire = 0;
  EXPECT_EQ(Discharges(s, "#####...#......"), (Frames{4, 12}));
  s.fireFirstNthTime = 2;
  EXPECT_EQ(Discharges(s, "#.#..........#."), (Frames{6})) << "the last one is still delayed";
  // A second press that is not due holds the owed discharge back until it ends.
  s.fireFirstNthTime = 1;
  s.fireNthTime = 2;
  EXPECT_EQ(Discharges(s, "#.####..."), (Frames{7}));
}

TEST(Firepower, InAVacuumAProjectileFliesTheParabolaAndWithDragItSlowsDownAlone) {
  for (const double fps : {24.0, 59.94}) {
    Gun gun(fps);
    gun.Set("Rate of fire (rounds/s)=0; Muzzle Velocity (m/s)=40");
    gun.Resimulate(0, 100);
    ASSERT_EQ(gun.Count(), 1);
    const Vector muzzle = gun.World("templateBullet", 0).translation();
    for (int i = 1; i <= 100; ++i) {
      const double t = gun.Frame(i - 1);
      const Vector want = muzzle + Vector(0.0, -5.0 * t * t, -40.0 * t);
      ASSERT_LT((gun.At(1, i) - want).length(), 1e-9) << i;
    }
    EXPECT_LT(gun.Bullet(1, 0).rowLengths().length(), 1e-3) << "unseen until it is fired";
    EXPECT_NEAR(gun.Bullet(1, 1).rowLengths().x, 1.0, 1e-12);
  }
  for (const double k : {1e-6, 0.02, 1.0, 30.0, 1000.0}) {
    Flight whole{{}, {30.0, 20.0, 0.0}}, halves = whole;
    const double weight = 9.81;
    whole.Free({weight, k}, 0.04);
    for (int i = 0; i < 2; ++i) halves.Free({weight, k}, 0.02);
    EXPECT_LT((whole.position - halves.position).length(), 1e-12) << k;
    EXPECT_LT((whole.velocity - halves.velocity).length(), 1e-12) << k;
    Flight still{{}, {30.0, 20.0, 0.0}};
    for (int i = 0; i < 200; ++i) {
      const double before = still.velocity.length();
      still.Free({0.0, k}, 0.04);
      ASSERT_LE(still.velocity.length(), before);
      ASSERT_GE(still.velocity.x, 0.0);
    }
  }
}

TEST(Firepower, ShotsFillTheConeEvenlyAndNoneLeavesIt) {
  Gun gun;
  constexpr double kSpread = 25.0 * M_PI / 180.0;
  gun.Set(
      "Rate of fire (rounds/s)=0; Bullets/discharge=1000; Lifetime (seconds)=1; Spread Angle "
      "(degrees)=25; Set gravity affecting the bullets in flight=0; Muzzle Velocity (m/s)=100");
  std::vector<double> heights, turns;
  for (int seed = 0; seed < 10; ++seed) {
    gun.Set("Random Seed=" + util::shortText(seed));
    gun.Resimulate(0, 2);
    for (int i = 1; i <= 1000; ++i) {
      const Vector way = (gun.At(i, 2) - gun.At(i, 1)) / 4.0;
      ASSERT_NEAR(way.length(), 1.0, 1e-9);
      ASSERT_LE(std::acos(-way.z), kSpread + 1e-9);
      heights.push_back((1.0 + way.z) / (1.0 - std::cos(kSpread)));
      turns.push_back(std::atan2(way.y, way.x) / (2.0 * M_PI) + 0.5);
    }
  }
  for (auto* numbers : {&heights, &turns}) {  // Kolmogorov and Smirnov, at one in a thousand
    std::sort(numbers->begin(), numbers->end());
    for (int i = 0; i < 10000; ++i) ASSERT_NEAR((*numbers)[i], i / 10000.0, 1.95 / 100.0);
  }
}

TEST(Firepower, TheGunsOwnMotionIsAddedAndItsTurnAims) {
  Gun gun;
  auto& trigger = gun.Find("fire trigger");
  gun.scene().Reparent(trigger, gun.scene().Find("Mover"), 0.0);
  gun.Set(
      "Rate of fire (rounds/s)=25; Set gravity affecting the bullets in flight=0; Depth (%)=50");
  gun.Resimulate(0, 60);
  for (const int shot : {1, 10, 40}) {
    const auto barrel = [&](int frame) {  // at rest: the recoil adds nothing
      return trigger.WorldMatrix(gun.Frame(frame));
    };
    const Vector moved = (barrel(shot).translation() - barrel(shot - 1).translation()) / 0.04;
    const Vector want = barrel(shot).axisRow(2).normalized() * -300.0 + moved;
    const Vector found = (gun.At(shot, shot + 1) - gun.At(shot, shot)) / 0.04;
    EXPECT_LT((found - want).length(), 1e-6) << shot;
    const Vector muzzle = gun.World("templateBullet", shot).translation();
    EXPECT_LT((gun.At(shot, shot) - muzzle).length(), 1e-9) << shot;
  }
}

TEST(Firepower, ABounceLeavesItsShareOfTheSpeedAndStepsOffTheSurface) {
  Gun gun;
  gun.AddSurface(util::CMesh_Box(50.0, 50.0, 2.0), [] {
    Matrix pose = Matrix::rotationAxisAngle(30.0, 1.0, 0.0, 0.0);
    pose.setTranslation({0.0, 0.0, -14.0});
    return pose;
  }());
  const Vector normal(0.0, -0.5, std::sqrt(0.75));
  const double front = normal.dot({0.0, 0.0, -14.0}) + 1.0;
  for (const double elasticity : {0.0, 50.0, 100.0}) {
    // An elasticity of 0 still leaves a thousandth, and is not to leave nothing.
    const double share = elasticity == 0.0 ? 0.001 : elasticity / 100.0;
    gun.Set("Rate of fire (rounds/s)=0; Muzzle Velocity (m/s)=50; elasticity (%)=" +
            util::shortText(elasticity) +
            "; collision correction value=0.2; Set gravity affecting the bullets in flight=0");
    gun.Resimulate(0, 12);
    const Vector before(0.0, 0.0, -50.0);
    const Vector after = (before - normal * (2.0 * before.dot(normal))) * share;
    EXPECT_LT(((gun.At(1, 11) - gun.At(1, 10)) / 0.04 - after).length(), 1e-6) << elasticity;
    // It met the surface within a frame, stepped off it, and flew for the rest of that frame.
    const double way = (front - normal.dot(gun.At(1, 1))) / normal.dot({0.0, 0.0, -1.0});
    const Vector met = gun.At(1, 1) + Vector(0.0, 0.0, -way) + normal * 0.2;
    const double rest = gun.Frame(10) - gun.Frame(1) - way / 50.0;
    EXPECT_LT((gun.At(1, 10) - met - after * rest).length(), 1e-4) << elasticity;
  }
}

TEST(Firepower, NothingLeavesAClosedRoomAtAThousandMetresASecond) {
  for (const double correction : {0.001, 0.2}) {
    for (const double elasticity : {100.0, 30.0}) {
      Gun gun(24.0);
      const util::CMesh room = util::CMesh_Box(9.0, 7.0, 11.0, {0.3, 0.1, -4.2});
      gun.AddSurface(room, Matrix::rotationAxisAngle(17.0, 0.6, 0.8, 0.0));
      gun.Set(
          "Bullets/discharge=1000; Spread Angle (degrees)=180; Rate of fire (rounds/s)=0; Muzzle "
          "Velocity (m/s)=1000; elasticity (%)=" +
          util::shortText(elasticity) + "; collision correction value=" +
          util::shortText(correction) + "; Air Resistance Force=0.3; Lifetime (seconds)=3");
      gun.Resimulate(0, 72);
      const Matrix inverse = Matrix::rotationAxisAngle(-17.0, 0.6, 0.8, 0.0);
      for (int i = 1; i <= 1000; ++i)
        for (int frame = 2; frame <= 72; frame += 5) {
          const Vector p = inverse.transformPoint(gun.At(i, frame)) - Vector(0.3, 0.1, -4.2);
          ASSERT_TRUE(std::abs(p.x) <= 4.5 && std::abs(p.y) <= 3.5 && std::abs(p.z) <= 5.5)
              << i << " at " << frame;
        }
    }
  }
}

TEST(Firepower, WithEveryProfileShotsStayOnTheirSideOfTheGroundAndComeToRest) {
  for (const double fps : {12.0, 25.0}) {
    for (const std::string profile :
         {"Minigun", "Cannon", "Shotgun", "Handgun", "Laser", "Bouncing Balls"}) {
      Gun gun(fps);
      gun.AddSurface(util::CMesh_Box(40000.0, 0.01, 40000.0));
      gun.Find("fire trigger").SetPose({{0, 8, 0}, {-0.4, 0, 0, 0.9165}, {1, 1, 1}});
      ASSERT_EQ(gun.core().LoadProfile("Rig", profile), "");
      gun.Set("Lifetime (seconds)=20");
      gun.Drive("Fire", {{0.0, 1.0}, {1.1, 0.0}});
      gun.Resimulate(0, static_cast<int>(24.0 * fps));
      ASSERT_GE(gun.Count(), 1) << profile;
      for (int i = 1; i <= gun.Count(); i += 5) {
        double highest = 0.0;
        for (int frame = static_cast<int>(2.5 * fps); frame < 20.0 * fps; ++frame) {
          const double height = gun.At(i, frame).y - 0.005;
          ASSERT_GE(height, 0.0) << profile << i << " at " << frame;
          if (frame > 18.0 * fps) highest = std::max(highest, height);
        }
        EXPECT_EQ(highest < 0.01, profile != "Laser") << profile << i << ": " << highest;
      }
    }
  }
}

TEST(Firepower, AGroupsMeshesAreSurfacesAndMovingOnesMeetWhatFliesAndWhatLies) {
  Gun gun;
  auto& group = gun.scene().AddNode("Set");
  auto& wall = gun.scene().AddNode("Door", &group);
  auto& lift = gun.scene().AddNode("Lift", &gun.scene().AddNode("Shaft", &group));
  wall.SetMesh(util::CMesh_Box(30.0, 90.0, 0.1));
  lift.SetMesh(util::CMesh_Box(30.0, 0.1, 90.0));
  const auto wave = [](double t) { return 3.0 * std::sin(t / 0.04 * 0.3); };
  const auto door = [&](double t) {
    return rws::adaptor::Trs{{0.0, 0.0, -12.0 + wave(t)}, {}, {1, 1, 1}};
  };
  const auto floor = [&](double t) {
    return rws::adaptor::Trs{{0.0, -4.0 + wave(t), 0.0}, {}, {1, 1, 1}};
  };
  Gun::Animate(wall, gun.Frame(1), 100, door);
  Gun::Animate(lift, gun.Frame(1), 100, floor);
  gun.scene().Reparent(gun.Find("collision"), &group, 0.0);
  // Most fall to the lift, which is faster than they are, and are carried by it.
  for (const double elasticity : {0.0, 50.0}) {
    gun.Set("Muzzle Velocity (m/s)=30; elasticity (%)=" + util::shortText(elasticity) +
            "; collision correction value=0.01; Spread Angle (degrees)=20; Lifetime (seconds)=10");
    gun.Resimulate(0, 100);
    const int count = gun.Count();
    ASSERT_GT(count, 15);
    for (int frame = 2; frame <= 100; ++frame)
      for (int i = 1; i <= count && i * 5 - 3 < frame; ++i) {
        const Vector at = gun.At(i, frame);
        ASSERT_GT(at.y, lift.WorldMatrix(gun.Frame(frame)).translation().y) << i << " at " << frame;
        ASSERT_TRUE(std::abs(at.x) > 15.0 ||
                    at.z > wall.WorldMatrix(gun.Frame(frame)).translation().z)
            << i << " at " << frame;
      }
  }
}

TEST(Firepower, ProjectilesPointWhereTheyFlySpinAsToldAndRestWhenTheirLifeIsOver) {
  Gun gun;
  gun.Set(
      "Rate of fire (rounds/s)=0; Muzzle Velocity (m/s)=20; Pitch Bullet=1; Rotate Bullet=1; "
      "Rotation (revolutions/s)=2; Lifetime (seconds)=1");
  gun.Resimulate(0, 40);
  for (int i = 2; i <= 26; ++i) {
    const Vector velocity(0.0, -10.0 * gun.Frame(i - 1), -20.0);
    const Matrix pose = gun.Bullet(1, i);
    ASSERT_LT((pose.axisRow(2) + velocity.normalized()).length(), 1e-9) << i;
    // Two turns a second about the way it flies, to the right seen from behind.
    const Vector right(std::cos(4.0 * M_PI * gun.Frame(i - 1)), 0.0, 0.0);
    ASSERT_NEAR(pose.axisRow(0).x, right.x, 1e-9) << i;
  }
  EXPECT_EQ(gun.Bullet(1, 40), gun.Bullet(1, 26));
  // A shorter life takes back what an earlier take flew, from where the new one begins.
  gun.Set("Lifetime (seconds)=0.2");
  const Matrix there = gun.Bullet(1, 15);
  gun.Resimulate(15, 40);
  for (const int frame : {16, 40})
    for (int k = 0; k < 16; ++k) EXPECT_NEAR(gun.Bullet(1, frame)[k], there[k], 1e-12) << frame;
}

TEST(Firepower, AMirroredGunFiresMirroredProjectilesThatSpinAboutAxesOnAllSidesOfTheirFlight) {
  Gun gun;
  const double half = std::sqrt(0.5);
  gun.Find("fire trigger").SetPose({{1, 2, 3}, {0.6, 0, 0, 0.8}, {-1, 1, 2}});
  gun.Find("templateBullet").SetPose({{0, 0, -4}, {half, 0, 0, half}, {1, 1, 1}});
  gun.Set(
      "Rate of fire (rounds/s)=0; Bullets/discharge=100; Pitch Bullet=1; Randomize Rotation "
      "Axis=20; Set gravity affecting the bullets in flight=0");
  gun.Resimulate(0, 3);
  const Matrix shape = gun.World("templateBullet", 1);
  for (const int frame : {1, 3})
    for (int k = 0; k < 12; ++k) EXPECT_NEAR(gun.Bullet(1, frame)[k], shape[k], 1e-9) << k;
  gun.Set("Rotate Bullet=1; Rotation (revolutions/s)=6.25");  // a quarter turn a frame
  gun.Resimulate(0, 3);
  const Vector ahead = -gun.World("barrel", 1).axisRow(2).normalized();
  const Vector side = gun.World("barrel", 1).axisRow(0).normalized(), up = ahead.cross(side);
  double sides[4] = {};
  for (int i = 1; i <= 100; ++i) {
    // What a half turn leaves of a direction is what lies along its axis.
    const Vector was = gun.Bullet(i, 1).axisRow(1).normalized();
    const Vector axis = (was + gun.Bullet(i, 3).axisRow(1).normalized()).normalized();
    const Vector a = axis * (axis.dot(ahead) < 0.0 ? -1.0 : 1.0);
    ASSERT_GT(a.dot(ahead), std::cos(20.0 * M_PI / 180.0) - 1e-9) << i;
    const double lean[4] = {a.dot(side), -a.dot(side), a.dot(up), -a.dot(up)};
    for (int k = 0; k < 4; ++k) sides[k] = std::max(sides[k], lean[k]);
  }
  for (const double most : sides) EXPECT_GT(most, std::sin(13.0 * M_PI / 180.0));
  gun.Find("barrel").SetPose({{}, {}, {1, 1, 0}});
  gun.Resimulate(0, 3);
  EXPECT_EQ(gun.Count(), 0) << "it aims nowhere";
}

TEST(Firepower, TheBarrelRecoilsAndComesBackAlsoOnATurret) {
  Gun gun;
  gun.scene().Reparent(gun.Find("fire trigger"), gun.scene().Find("Mover"), 0.0);
  gun.Set("Rate of fire (rounds/s)=0; Depth (%)=25; Backward (frames)=2; Forward (frames)=4");
  gun.Drive("Fire", {{0.0, 0.0}, {0.4, 1.0}});
  const auto back = [&](int frame) {
    return gun.Find("barrel").LocalMatrix(gun.Frame(frame)).translation().z;
  };
  gun.Resimulate(0, 30);
  const std::vector<double> ways{0, 0, 0.5, 1, 0.75, 0.5, 0.25, 0, 0};  // frame 9 on; m
  for (std::size_t i = 0; i < ways.size(); ++i)
    EXPECT_NEAR(back(static_cast<int>(i) + 9), ways[i], 1e-9) << i;
  const auto whole = gun.PosesOf(0, 30);
  gun.Resimulate(12, 30);  // begins with the barrel back
  EXPECT_TRUE(gun.PosesOf(0, 30) == whole);
  gun.Set("Depth (%)=60");
  gun.Resimulate(12, 30);
  EXPECT_NEAR(back(30), 0.0, 1e-9) << "another depth is no other place";
  gun.Set("Depth (%)=25; Response Factor=0.2");
  gun.Resimulate(0, 30);
  EXPECT_TRUE(back(12) > 0.05 && back(12) < 0.9 && back(30) < back(16)) << "softer";
  gun.Drive("Fire", {{0.0, 0.0}});
  gun.Resimulate(50, 51);
  EXPECT_NEAR(back(51), 0.0, 1e-9) << "at rest where no take leads";
}

TEST(Firepower, ARetakeReplacesTheProjectilesOfItsFutureAndUndoBringsThemBack) {
  Gun gun;
  gun.LoadGun();
  gun.Drive("Fire", {{0.0, 1.0}});
  gun.Resimulate(0, 60);
  const std::string first = gun.Saved();
  const int fired = gun.Count();
  ASSERT_GT(fired, 10);
  gun.Resimulate(23, 60);
  EXPECT_EQ(gun.Saved(), first) << "names and all";
  gun.Resimulate(23, 30);
  EXPECT_LT(gun.Count(), fired);
  ASSERT_TRUE(gun.session.GetAdaptor().HostUndo());
  EXPECT_EQ(gun.Saved(), first);
  gun.Resimulate(10, 60);
  EXPECT_EQ(gun.Saved(), first);
  gun.Press("Select all bullets");
  EXPECT_EQ(gun.session.GetAdaptor().GetSelection().size(), static_cast<std::size_t>(fired));
  ASSERT_TRUE(gun.session.GetAdaptor().HostUndo());
  EXPECT_TRUE(gun.session.GetAdaptor().GetSelection().empty()) << "one step";
  // A frame of other settings is remembered as it was.
  gun.Set("Set gravity affecting the bullets in flight=30");
  gun.Resimulate(20, 40);
  const auto heavier = gun.PosesOf(0, 40);
  gun.Resimulate(27, 40);
  EXPECT_TRUE(gun.PosesOf(0, 40) == heavier);
  gun.Reopen();
  gun.Resimulate(23, 40);
  EXPECT_TRUE(gun.PosesOf(0, 40) == heavier) << "out of the file";
}

TEST(Firepower, EachFailureIsToldInItsWords) {
  RigScene world("Firepower");
  BareRig* rig = &Strip(world, "CreateMeshNode");
  const auto told = [&] {
    rig->refused.clear();
    return world.Told();
  };
  EXPECT_EQ(told(), Messages{"Error: Error in onCreate"});

  const auto renew = [&] {
    rig = &Strip(world);
    world.Drive("Fire", {{0.0, 1.0}});
  };
  renew();
  const auto fails = [&](const std::string& operation, int from, int to) {
    world.onFrame = [=](int frame) {
      rig->refused = frame + 1 >= from && frame + 1 < to ? operation : "";
    };
    world.onFrame(-1);
    world.Resimulate(0, 20);
    world.onFrame = nullptr;
    return told();
  };
  EXPECT_EQ(fails("CreateMeshNode", 0, 21), Messages{"Error: Error in onNodeCreate"})
      << "once a take";
  world.Resimulate(0, 20);
  EXPECT_EQ(fails("DeleteNode", 0, 1), Messages{"Error: Error in onNodeDelete"});
  EXPECT_EQ(fails("GetSnapshot", 10, 21), Messages{"Error: Error in onBulletFrame"});
  rig->refused = "SetUserData";
  rig->ClearUserData();
  EXPECT_EQ(rig->GetRig()->Store(), 1);
  EXPECT_EQ(told(), Messages{"Error: Error in onSave"});

  renew();
  world.Resimulate(0, 20);
  const auto blob = rig->Save();
  util::xml::Tag record("");
  rig->WriteRecord(record);
  const auto opened = [&](const std::vector<unsigned char>& data) {
    BareRig other(static_cast<rws::core::InstanceManager&>(world.core()), "Firepower");
    return other.Open(record, data);
  };
  EXPECT_EQ(opened({blob.begin(), blob.end() - 9}), 1);
  EXPECT_EQ(told(), Messages{"Error: Error in onLoad"});
  util::DataChunk chunk(blob.data(), blob.size());
  for (auto& child : chunk.children)
    if (child.name == "bullets") child.children.at(1).name = "bullet_00001";
  EXPECT_EQ(opened(chunk.flatten()), 1);
  EXPECT_EQ(told(), Messages{"Error: Could not load bullet"});

  const auto remove = [&](const std::string& node) {
    auto& adaptor = world.session.GetAdaptor();
    ASSERT_TRUE(world.scene().Find("Rig_" + node)) << node;
    adaptor.DiscardNode(adaptor.FindSceneNode("Rig_" + node));
  };
  remove("bullet_00002");
  EXPECT_EQ(opened(blob), 0) << "the other projectiles stay";
  EXPECT_EQ(told(), Messages{"Error: no node"});
  world.Resimulate(15, 20);
  EXPECT_EQ(told(), (Messages{"Error: Error in onNodeDelete", "Error: no node"}));

  world.onFrame = [&](int frame) {
    if (frame == 14) remove("barrel");
  };
  world.Resimulate(0, 20);
  world.onFrame = nullptr;
  EXPECT_EQ(told(), (Messages{"Error: Error in onNodeDelete", "Error: Error in onFrame",
                              "Error: Error when stopping record"}));
  EXPECT_TRUE(opened(blob) == 1 && told() == Messages{"Error: no node"})
      << "no gun without a barrel";
  rig->GetRig()->Start(0.0);
  EXPECT_EQ(told(), Messages{"Error: Error when starting to record."});
  world.core().DropAllRows();
  EXPECT_EQ(world.Told(), Messages{"Error: Error when deleting Firepower."});
}

TEST(Firepower, TheHandThatFiresFeelsEachDischarge) {
  FeltControl control;
  Gun gun;
  gun.Set("Rate of fire (rounds/s)=5");
  auto& inputs = gun.rig->GetProperties();
  for (int i = 0; i < inputs.count(); ++i)
    if (inputs.property(i)->name == "Fire") inputs.property(i)->bind(&control);
  unsigned now = 0;
  gun.core().tickCount = [&now] { return now; };
  gun.core().GetPreferences().kickForce = 50;
  std::vector<int> felt, fired;
  ASSERT_EQ(gun.core().StartRecording(), 0);
  int frame = 0;
  for (double before = 0.0; frame < 60; ++now, before = control.shake) {
    control.current = frame >= 10 && frame < 40 ? 1.0 : 0.0;
    gun.core().OnTimer(rws::core::RecordManager::kTakeTimer, now);
    frame = gun.core().FrameIndex(gun.core().GetFrameTime());
    ASSERT_TRUE(control.shake == 0.0 || control.shake == 0.5) << control.shake;
    if (control.shake > before) felt.push_back(frame);
  }
  gun.core().StopRecording();
  EXPECT_EQ(control.shake, 0.0);
  for (int number = 1; number <= gun.Count(); ++number) {
    int birth = 0;
    while (gun.Bullet(number, birth).axisRow(0).length() < 0.5) ++birth;
    fired.push_back(birth);
  }
  EXPECT_EQ(felt, fired);
  EXPECT_EQ(fired.size(), 6u) << "in six fifths of a second";
}

}  // namespace
}  // namespace orv::tests
