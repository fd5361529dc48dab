#include <gtest/gtest.h>

#include <cmath>

#include "plugins/release/motionfiltercam/motionfiltercam_CMotionFilterCamObject.h"
#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"
#include "support/FakeInterface.h"
#include "util/QTransform.h"

namespace orv::rws::addon {
namespace {

using tests::FakeWorld;
using tests::Matrix;
using tests::NewWorld;
using util::QTransform;
using util::Quat;
using Vector = util::Vector3<double>;

double Wave(double t) {
  return std::sin(3.0 * t) + 0.3 * std::sin(11.0 * t);
}

Matrix Turned(const Vector& position, double aboutY) {
  return QTransform<double>{position, Quat<double>::fromRotationVector({0, aboutY, 0})}.toMatrix();
}

/// Angle about Y of a rotation about Y, in (-pi, pi].
double AngleY(const Matrix& m) {
  return std::atan2(m[8], m[0]);
}

/// Keys a wavy way on the AttachedCam.
void Shake(FakeWorld& world, int frames) {
  for (int i = 0; i <= frames; ++i) {
    const double t = i * world.core.GetFrameDuration();
    world.Node("AttachedCam").keys[t] = Turned({Wave(t), 2.0 * t, 0.0}, 0.8 * Wave(t + 1.0));
  }
}

TEST(FilterCameras, MotionFilterFollowsAnIndependentIntegrator) {
  CMotionFilterCamPlugin plugin;
  for (const double fps : {24.0, 25.0, 50.0, 59.94}) {
    for (const double limit : {0.0, 1.5}) {
      NewWorld world(plugin, fps);
      Shake(world, 100);
      world.core.Set("Rotation Response Factor=80; Translation Max Velocity=" +
                     std::to_string(limit) + "; Rotation Max Velocity=" + std::to_string(limit));
      world.Take(0, 100);
      const double dt = 1.0 / fps, h = dt / 10;
      double x = 0, v = 0, y = 0, u = 0, angle = 0, w = 0;
      for (int i = 1; i <= 100; ++i) {
        const double t = i * dt;
        x += v * dt;
        y += u * dt;
        v += ((Wave(t) - x) * 30.0 - 5.0 * v) * dt;
        u += ((2.0 * t - y) * 30.0 - 5.0 * u) * dt;
        const double speed = std::hypot(v, u);
        if (limit != 0.0 && speed > limit) v *= limit / speed, u *= limit / speed;
        for (int k = 0; k < 10; ++k) {
          angle += 2.0 * std::atan(h * w / 2);  // what a renormalised Euler step turns
          w += ((0.8 * Wave(t + 1.0) - angle) * 80.0 - 5.0 * w) * h;
          if (limit != 0.0 && std::abs(w) > limit) w = std::copysign(limit, w);
        }
        const Matrix pose = world.Node("FollowCam").World(t);
        ASSERT_NEAR(pose[12], x, 1e-9) << fps << " fps, frame " << i;
        ASSERT_NEAR(pose[13], y, 1e-9) << fps << " fps, frame " << i;
        ASSERT_NEAR(std::remainder(AngleY(pose) - angle, 2 * M_PI), 0.0, 1e-7) << i;
      }
    }
  }
}

TEST(FilterCameras, AZeroResponseOrAFixateFlagFollowsExactly) {
  CMotionFilterCamPlugin plugin;
  for (const bool fixate : {false, true}) {
    NewWorld world(plugin);
    Shake(world, 40);
    world.core.Set(fixate ? "Fixate Translations=1; Fixate Rotations=1"
                          : "Translation Response Factor=0; Rotation Response Factor=0");
    world.Take(0, 40);
    const Matrix is = world.Node("FollowCam").World(1.6);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(is[i], world.Node("AttachedCam").World(1.6)[i], 1e-12);
  }
}

TEST(FilterCameras, SteadyCamApproachesARestingTargetByTheClosedFormAtAnyRate) {
  CSteadyCamPlugin plugin;
  const std::tuple<double, double, int> cases[] = {
      {25, 0.3, 2}, {50, 0.3, 1}, {25, 1.0, 2}, {12.5, 0.3, 3}, {24, 0.3, 2}};
  for (const auto& [fps, factor, n] : cases) {
    NewWorld world(plugin, fps);
    world.Node("AttachedCam").rest = Turned({1.0, -2.0, 4.0}, 0.0);
    *world.core.Find("Translation Response Factor").number = factor;
    world.Take(0, 30);  // the first time starts with the first stage on the target
    const double k = factor * (1.0 / fps / 0.04) / n;
    for (int i = 1; i <= 30; ++i)
      ASSERT_NEAR(world.Node("FollowCam").World(i / fps)[14], 4.0 - 4.0 * std::pow(1 - k, n * i),
                  1e-12)
          << fps << " fps, factor " << factor << ", frame " << i;
  }
}

TEST(FilterCameras, SteadyCamComesFromAnExactHalfTurnAlwaysOnTheSameSide) {
  CSteadyCamPlugin plugin;
  NewWorld world(plugin);
  Matrix& rest = world.Node("FollowCam").rest;
  rest[0] = rest[10] = -1.0;
  world.Take(0, 10);
  for (int i = 1; i <= 10; ++i) EXPECT_LT(AngleY(world.Node("FollowCam").World(i * 0.04)), 0.0);
}

/// Both cameras, by the kind.
class Both : public testing::TestWithParam<CCameraPlugin*> {};
CMotionFilterCamPlugin g_motionFilter;
CSteadyCamPlugin g_steady;
INSTANTIATE_TEST_SUITE_P(FilterCameras, Both, testing::Values(&g_motionFilter, &g_steady));

TEST_P(Both, KeepTheirScaleAndTurnTheShortWayRound) {
  NewWorld world(*GetParam());
  auto& follow = world.Node("FollowCam");
  follow.rest = Turned({}, 3.0);
  follow.rest.setRowLengths({2.0, 0.5, 3.0});
  Matrix target = Turned({5.0, 0.0, 0.0}, -3.0);  // 0.28 rad away, across the flip of signs
  target.setRowLengths({7.0, 7.0, 7.0});
  world.Node("AttachedCam").rest = target;
  world.Take(0, 200);
  for (const auto& [time, pose] : follow.keys) {
    EXPECT_LT((pose.rowLengths() - Vector(2.0, 0.5, 3.0)).length(), 1e-9) << time;
    EXPECT_LT(pose[0] / 2.0, -0.7) << "turned through the front at " << time;
  }
  EXPECT_NEAR(follow.World(8.0)[12], 5.0, 1e-3);
}

TEST_P(Both, GoOnWithoutAnAttachedCam) {
  NewWorld world(*GetParam());
  world.Node("FollowCam").rest = Turned({4.0, 0.0, 0.0}, 0.0);
  world.core.nodes.erase("AttachedCam");
  auto opened = world.Reopen({});
  EXPECT_EQ(opened->restored, 0);
  EXPECT_EQ(opened->Node("FollowCam").rest[12], 4.0) << "a loaded node keeps its place";
  opened->Take(0, 300);
  EXPECT_NEAR(opened->Node("FollowCam").World(12.0)[12], 0.0, 1e-3);
}

TEST_P(Both, ACutBeyondTheThresholdCarriesTheCameraAlongWithItsLagAndSwing) {
  const Matrix cut = Turned({300.0, -20.0, 7.0}, 2.0);
  std::map<std::string, std::map<double, Matrix>> ways;
  for (const std::string way : {"rests", "cut", "flies", "below"}) {
    NewWorld world(*GetParam());
    Shake(world, 30);  // and rests from there on
    auto& target = world.Node("AttachedCam").keys;
    if (way != "rests") target[1.6] = cut * target[1.2];
    // Of itself it is off.
    if (way == "cut") world.core.Set("Jump Threshold=300");
    if (way == "below") world.core.Set("Jump Threshold=310");
    world.Take(0, 80);
    ways[way] = world.Node("FollowCam").keys;
  }
  EXPECT_EQ(ways["below"], ways["flies"]);
  for (int i = 40; i <= 80; ++i)  // the cut's frame has no motion
    for (int k = 0; k < 16; ++k)
      ASSERT_NEAR(ways["cut"][i * 0.04][k], (cut * ways["rests"][(i - 1) * 0.04])[k], 1e-9) << i;
}

TEST(FilterCameras, AFilterThatDivergesIsToldOnceATakeWithWhatItIsStableBelow) {
  CMotionFilterCamPlugin plugin;
  for (const double fps : {12.0, 25.0, 59.94}) {
    for (const double smoothing : {1.0, 20.0}) {
      for (const std::string half : {"Translation", "Rotation"}) {
        const bool turns = half == "Rotation";
        const double rate = turns ? 10 * fps : fps, limit = 2 * rate * (2 * rate - smoothing);
        for (const double part : {0.97, 1.03}) {
          NewWorld world(plugin, fps);
          world.Node("AttachedCam").rest = Turned({0.01, 0.0, 0.0}, 0.01);
          *world.core.Find(half + " Response Factor").number = part * limit;
          *world.core.Find(half + " Smoothing Factor").number = smoothing;
          world.Take(0, 400);
          const Matrix pose = world.Node("FollowCam").World(400 / fps);
          const double off = std::abs(turns ? AngleY(pose) - 0.01 : pose[12] - 0.01);
          EXPECT_EQ(off > 0.05, part > 1) << half << fps << " frames per second, " << smoothing;
          ASSERT_EQ(world.core.messages.size(), part > 1 ? 1u : 0u);
          if (part < 1) continue;
          const std::string told = world.core.messages[0];
          EXPECT_EQ(told.rfind(half + " Response Factor ", 0), 0u) << told;
          EXPECT_NEAR(std::stod(told.substr(told.find("below ") + 6)), limit, 0.01);
        }
      }
    }
  }
  // Where the smoothing is what is too high. A scene can hold what comes of it, however long.
  NewWorld world(plugin);
  Shake(world, 100);
  world.core.Set("Translation Smoothing Factor=900; Rotation Smoothing Factor=900");
  world.Take(0, 2000);
  ASSERT_EQ(world.core.messages.size(), 2u);
  EXPECT_NE(world.core.messages[0].find("stable below 49.4"), std::string::npos);
  for (const auto& [time, pose] : world.Node("FollowCam").keys)
    ASSERT_LT(pose.translation().length(), 1e12) << time;
}

TEST(FilterCameras, ReInitializeStopsTheFlightAndKeepsTheSpinAlsoInAReopenedScene) {
  CMotionFilterCamPlugin plugin;
  NewWorld world(plugin);
  Shake(world, 60);
  world.Take(0, 20);
  auto opened = world.Reopen(world.Save());
  for (FakeWorld* each : {static_cast<FakeWorld*>(&world), opened.get()}) {
    each->core.Find("Re-Initialize")
        .callback->OnCallback("REALREDORe-Initialize");  // never re-initialises
    each->core.Press("Re-Initialize");
    each->Take(20, 21);
    const Matrix before = each->Node("FollowCam").World(0.8);
    const Matrix after = each->Node("FollowCam").World(0.84);
    EXPECT_EQ(after[12], before[12]) << "no linear velocity is left";
    EXPECT_GT(std::abs(AngleY(after) - AngleY(before)), 0.01) << "the spin goes on";
  }
  EXPECT_EQ(world.Node("FollowCam").keys, opened->Node("FollowCam").keys);
}

}  // namespace
}  // namespace orv::rws::addon
