#include "rigs/HostScene.h"

namespace orv::tests {
namespace {

using Vector = HostScene::Vector;
using Matrix = HostScene::Matrix;
using Quat = HostScene::Quat;
using rws::adaptor::Trs;

constexpr char kMotionFilter[] = "MotionFilterCam", kSteady[] = "SteadyCam";

double Wave(double t) {
  return std::sin(3.0 * t) + 0.3 * std::sin(11.0 * t);
}

Trs Turned(const Vector& position, double aboutY) {
  return {position, Quat::fromRotationVector({0, aboutY, 0}), {1, 1, 1}};
}

/// Angle about Y of a rotation about Y, in (-pi, pi].
double AngleY(const Matrix& m) {
  return std::atan2(m[8], m[0]);
}

Trs Shaken(double t) {
  return Turned({Wave(t), 2.0 * t, 0.0}, 0.8 * Wave(t + 1.0));
}

struct Cam : HostScene {
  explicit Cam(const std::string& kind, double fps = 25.0)
      : HostScene(kind, "Rig", fps, rws::addon::AllRigs()) {
    scene().SetRange(0.0, 100.0);
  }
  /// Keys a wavy way on the AttachedCam.
  void Shake(int frames) { Animate(Find("AttachedCam"), Frame(1), frames, Shaken); }
};

TEST(FilterCameras, MotionFilterFollowsAnIndependentIntegrator) {
  for (const double fps : {24.0, 25.0, 50.0, 59.94}) {
    for (const double limit : {0.0, 1.5}) {
      Cam world(kMotionFilter, fps);
      world.Shake(100);
      world.Set("Rotation Response Factor=80; Translation Max Velocity=" + std::to_string(limit) +
                "; Rotation Max Velocity=" + std::to_string(limit));
      world.Resimulate(0, 100);
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
        const Matrix pose = world.World("FollowCam", i);
        ASSERT_NEAR(pose[12], x, 1e-9) << fps << " fps, frame " << i;
        ASSERT_NEAR(pose[13], y, 1e-9) << fps << " fps, frame " << i;
        ASSERT_NEAR(std::remainder(AngleY(pose) - angle, 2 * M_PI), 0.0, 1e-7) << i;
      }
    }
  }
}

TEST(FilterCameras, AZeroResponseOrAFixateFlagFollowsExactly) {
  for (const bool fixate : {false, true}) {
    Cam world(kMotionFilter);
    world.Shake(40);
    world.Set(fixate ? "Fixate Translations=1; Fixate Rotations=1"
                     : "Translation Response Factor=0; Rotation Response Factor=0");
    world.Resimulate(0, 40);
    const Matrix is = world.World("FollowCam", 40), want = world.World("AttachedCam", 40);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(is[i], want[i], 1e-12);
  }
}

TEST(FilterCameras, SteadyCamApproachesARestingTargetByTheClosedFormAtAnyRate) {
  const std::tuple<double, double, int> cases[] = {
      {25, 0.3, 2}, {50, 0.3, 1}, {25, 1.0, 2}, {12.5, 0.3, 3}, {24, 0.3, 2}};
  for (const auto& [fps, factor, n] : cases) {
    Cam world(kSteady, fps);
    world.Find("AttachedCam").SetPose(Turned({1.0, -2.0, 4.0}, 0.0));
    world.Edit("Translation Response Factor", factor);
    world.Resimulate(0, 30);  // the first time starts with the first stage on the target
    const double k = factor * (1.0 / fps / 0.04) / n;
    for (int i = 1; i <= 30; ++i)
      ASSERT_NEAR(world.At("FollowCam", i).z, 4.0 - 4.0 * std::pow(1 - k, n * i), 1e-12)
          << fps << " fps, factor " << factor << ", frame " << i;
  }
}

TEST(FilterCameras, SteadyCamComesFromAnExactHalfTurnAlwaysOnTheSameSide) {
  Cam world(kSteady);
  world.Find("FollowCam").SetPose({{}, {0, 1, 0, 0}, {1, 1, 1}});
  world.Resimulate(0, 10);
  for (int i = 1; i <= 10; ++i) EXPECT_LT(AngleY(world.World("FollowCam", i)), 0.0);
}

/// Both cameras, by the kind.
class Both : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(FilterCameras, Both, testing::Values(kMotionFilter, kSteady));

TEST_P(Both, KeepTheirScaleAndTurnTheShortWayRound) {
  Cam world(GetParam());
  world.Find("FollowCam").SetPose({{}, Turned({}, 3.0).rotation, {2.0, 0.5, 3.0}});
  // 0.28 rad away, across the flip of signs.
  world.Find("AttachedCam").SetPose({{5, 0, 0}, Turned({}, -3.0).rotation, {7, 7, 7}});
  world.Resimulate(0, 200);
  for (int i = 0; i <= 200; ++i) {
    const Matrix pose = world.World("FollowCam", i);
    EXPECT_LT((pose.rowLengths() - Vector(2.0, 0.5, 3.0)).length(), 1e-9) << i;
    EXPECT_LT(pose[0] / 2.0, -0.7) << "turned through the front at " << i;
  }
  EXPECT_NEAR(world.At("FollowCam", 200).x, 5.0, 1e-3);
}

TEST_P(Both, GoOnWithoutAnAttachedCam) {
  Cam world(GetParam());
  world.Find("FollowCam").SetPose(Turned({4.0, 0.0, 0.0}, 0.0));
  auto& adaptor = world.session.GetAdaptor();
  adaptor.DiscardNode(adaptor.FindSceneNode("Rig_AttachedCam"));
  world.Reopen();
  EXPECT_EQ(world.At("FollowCam", 0).x, 4.0) << "a loaded node keeps its place";
  world.Resimulate(0, 300);
  EXPECT_NEAR(world.At("FollowCam", 300).x, 0.0, 1e-3);
}

TEST_P(Both, ACutBeyondTheThresholdCarriesTheCameraAlongWithItsLagAndSwing) {
  const Matrix cut = Compose(Turned({300.0, -20.0, 7.0}, 2.0));
  std::map<std::string, std::vector<Matrix>> ways;
  for (const std::string way : {"rests", "cut", "flies", "below"}) {
    Cam world(GetParam());
    Cam::Animate(world.Find("AttachedCam"), world.Frame(1), 80, [&](double t) {
      const Trs at = Shaken(std::min(t, 1.2));
      return way == "rests" || t < 1.59 ? at : rws::adaptor::Decompose(cut * Compose(at));
    });
    // Of itself it is off.
    if (way == "cut") world.Set("Jump Threshold=300");
    if (way == "below") world.Set("Jump Threshold=310");
    world.Resimulate(0, 80);
    ways[way] = world.PosesOf(0, 80).at("FollowCam");
  }
  EXPECT_EQ(ways["below"], ways["flies"]);
  for (std::size_t i = 40; i <= 80; ++i)  // the cut's frame has no motion
    for (int k = 0; k < 16; ++k)
      ASSERT_NEAR(ways["cut"][i][k], (cut * ways["rests"][i - 1])[k], 1e-9) << i;
}

TEST(FilterCameras, AFilterThatDivergesIsToldOnceATakeWithWhatItIsStableBelow) {
  for (const double fps : {12.0, 25.0, 59.94}) {
    for (const double smoothing : {1.0, 20.0}) {
      for (const std::string half : {"Translation", "Rotation"}) {
        const bool turns = half == "Rotation";
        const double rate = turns ? 10 * fps : fps, limit = 2 * rate * (2 * rate - smoothing);
        for (const double part : {0.97, 1.03}) {
          Cam world(kMotionFilter, fps);
          world.Find("AttachedCam").SetPose(Turned({0.01, 0.0, 0.0}, 0.01));
          world.Edit(half + " Response Factor", part * limit);
          world.Edit(half + " Smoothing Factor", smoothing);
          world.Resimulate(0, 400);
          const Matrix pose = world.World("FollowCam", 400);
          const double off = std::abs(turns ? AngleY(pose) - 0.01 : pose[12] - 0.01);
          EXPECT_EQ(off > 0.05, part > 1) << half << fps << " frames per second, " << smoothing;
          ASSERT_EQ(world.messages.size(), part > 1 ? 1u : 0u);
          if (part < 1) continue;
          const std::string told = world.messages[0];
          EXPECT_NE(told.find(": " + half + " Response Factor "), std::string::npos) << told;
          EXPECT_NEAR(std::stod(told.substr(told.find("below ") + 6)), limit, 0.01);
        }
      }
    }
  }
  // Where the smoothing is what is too high. A scene can hold what comes of it, however long.
  Cam world(kMotionFilter);
  world.Shake(100);
  world.Set("Translation Smoothing Factor=900; Rotation Smoothing Factor=900");
  world.Resimulate(0, 2000);
  ASSERT_EQ(world.messages.size(), 2u);
  EXPECT_NE(world.messages[0].find("stable below 49.4"), std::string::npos);
  for (int i = 0; i <= 2000; ++i) ASSERT_LT(world.At("FollowCam", i).length(), 1e12) << i;
}

TEST(FilterCameras, ReInitializeStopsTheFlightAndKeepsTheSpinAlsoInAReopenedScene) {
  std::vector<HostScene::Poses> poses;
  for (const bool reopened : {false, true}) {
    Cam world(kMotionFilter);
    world.Shake(60);
    world.Resimulate(0, 20);
    if (reopened) world.Reopen();
    world.Press("Re-Initialize");
    world.Resimulate(20, 21);
    const Matrix before = world.World("FollowCam", 20), after = world.World("FollowCam", 21);
    EXPECT_EQ(after[12], before[12]) << "no linear velocity is left";
    EXPECT_GT(std::abs(AngleY(after) - AngleY(before)), 0.01) << "the spin goes on";
    poses.push_back(world.PosesOf(0, 21));
  }
  EXPECT_EQ(poses[0], poses[1]);
}

}  // namespace
}  // namespace orv::tests
