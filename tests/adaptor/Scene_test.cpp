#include "adaptor/headless/Scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace orv::rws::adaptor;
using namespace orv::rws::adaptor::headless;
using orv::util::Matrix;
using orv::util::Quat;
using orv::util::Vector3;

constexpr double kFrame = 0.04;
constexpr double kAllTime = std::numeric_limits<double>::infinity();

Channel channelOf(ChannelPath path, Interpolation mode, std::vector<double> times,
                  std::vector<double> values) {
  Channel channel(path, mode);
  EXPECT_TRUE(channel.SetKeys(std::move(times), std::move(values)));
  return channel;
}

Vector3<double> at(const Channel& channel, double time) {
  double v[4];
  channel.Evaluate(time, v);
  return {v[0], v[1], v[2]};
}

Trs randomPose(std::mt19937& random, bool uniform) {
  std::uniform_real_distribution<double> spread(-2.0, 2.0);
  std::uniform_real_distribution<double> size(0.5, 2.0);
  Trs pose;
  pose.translation = {spread(random), spread(random), spread(random)};
  pose.rotation = Quat<double>(spread(random), spread(random), spread(random), spread(random));
  pose.rotation.normalize();
  const double s = size(random);
  pose.scale = uniform ? Vector3<double>(s, s, s) : Vector3<double>(s, size(random), size(random));
  return pose;
}

void expectNear(const Matrix<double>& a, const Matrix<double>& b, double tolerance) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "element " << i;
}

/// Column-major product as glTF writes it down, independent of Matrix's own.
Matrix<double> product(const Matrix<double>& a, const Matrix<double>& b) {
  Matrix<double> r;
  for (int row = 0; row < 4; ++row)
    for (int col = 0; col < 4; ++col) {
      long double sum = 0.0L;
      for (int k = 0; k < 4; ++k) sum += static_cast<long double>(a[4 * k + row]) * b[4 * col + k];
      r[4 * col + row] = static_cast<double>(sum);
    }
  return r;
}

TEST(Scene, LinearKeysGoStraightAndRotationsTurnEvenlyTheShortWay) {
  const Channel line = channelOf(ChannelPath::kTranslation, Interpolation::kLinear, {1.0, 3.0},
                                 {0.1, 0.2, 0.3, 4.0, -2.0, 0.0});
  EXPECT_EQ(at(line, 0.0), Vector3<double>(0.1, 0.2, 0.3)) << "held before the first key";
  EXPECT_EQ(at(line, 1.0), Vector3<double>(0.1, 0.2, 0.3)) << "exact on a key";
  EXPECT_EQ(at(line, 9.0), Vector3<double>(4.0, -2.0, 0.0)) << "held behind the last key";
  EXPECT_NEAR(at(line, 1.5).x, 0.1 + 3.9 / 4.0, 1e-15);

  // From 0 to 120 degrees about Y, the second key with its sign turned round.
  const double half = M_PI / 3.0;
  const Channel turn = channelOf(ChannelPath::kRotation, Interpolation::kLinear, {0.0, 2.0},
                                 {0, 0, 0, 1, 0, -std::sin(half), 0, -std::cos(half)});
  for (double t = 0.0; t < 2.0; t += 0.125) {
    double q[4];
    turn.Evaluate(t, q);
    EXPECT_NEAR(q[1], std::sin(half * t / 2.0), 1e-15);
    EXPECT_NEAR(q[3], std::cos(half * t / 2.0), 1e-15);
  }
  double q[4];
  turn.Evaluate(2.0, q);
  EXPECT_EQ(q[3], -std::cos(half)) << "the key's own numbers, sign included";
}

TEST(Scene, StepsHoldAndSplinesFollowTheirCubic) {
  const Channel steps = channelOf(ChannelPath::kScale, Interpolation::kStep, {0.0, 1.0, 2.0},
                                  {1, 1, 1, 2, 2, 2, 3, 3, 3});
  EXPECT_EQ(at(steps, 0.999).x, 1.0);
  EXPECT_EQ(at(steps, 1.0).x, 2.0);
  // A cubic is reproduced exactly when values and slopes are its own: p(t) = t^3 - 2t + 5.
  const auto p = [](double t) { return t * t * t - 2.0 * t + 5.0; };
  const auto slope = [](double t) { return 3.0 * t * t - 2.0; };
  std::vector<double> times{-1.0, 0.5, 0.75, 3.0};
  std::vector<double> values;
  for (const double t : times)
    for (const double v : {slope(t), p(t), slope(t)}) values.insert(values.end(), {v, v, v});
  const Channel spline =
      channelOf(ChannelPath::kTranslation, Interpolation::kCubicSpline, times, values);
  for (double t = -1.0; t <= 3.0; t += 0.07) EXPECT_NEAR(at(spline, t).y, p(t), 1e-12) << t;
  EXPECT_EQ(at(spline, 0.75).z, p(0.75));
}

TEST(Scene, EvaluationInAnyOrderGivesWhatAFreshCopyGives) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> time(-1.0, 101.0);
  std::vector<double> times;
  std::vector<double> values;
  for (int i = 0; i <= 100; ++i) {
    times.push_back(i);
    values.insert(values.end(), {std::sin(i), std::cos(i), 1.0 * i});
  }
  const Channel channel =
      channelOf(ChannelPath::kTranslation, Interpolation::kLinear, times, values);
  for (int i = 0; i < 2000; ++i) {
    const double t = i % 3 == 0 ? i / 20.0 : time(random);
    const Channel fresh =
        channelOf(ChannelPath::kTranslation, Interpolation::kLinear, times, values);
    EXPECT_EQ(at(channel, t), at(fresh, t));
    EXPECT_NEAR(at(channel, t).z, std::clamp(t, 0.0, 100.0), 1e-12);
  }
}

TEST(Scene, ATakeReplacesKeysFromItsStartAndBakesWhatItCannotBlend) {
  const std::vector<double> takeTimes{0.4, 0.44, 0.48};
  const std::vector<double> takeValues{7, 7, 7, 8, 8, 8, 9, 9, 9};
  Channel open = channelOf(ChannelPath::kTranslation, Interpolation::kLinear, {0.0, 0.400001, 5.0},
                           {1, 1, 1, 2, 2, 2, 3, 3, 3});
  Channel bounded = open;
  ASSERT_TRUE(open.ReplaceKeys(0.4, kAllTime, takeTimes, takeValues, kFrame));
  EXPECT_EQ(open.GetTimes(), (std::vector<double>{0.0, 0.4, 0.44, 0.48}));
  ASSERT_TRUE(bounded.ReplaceKeys(0.4, 0.48, takeTimes, takeValues, kFrame));
  EXPECT_EQ(bounded.GetTimes(), (std::vector<double>{0.0, 0.4, 0.44, 0.48, 5.0}));
  EXPECT_EQ(at(bounded, 5.0).x, 3.0);

  Channel steps = channelOf(ChannelPath::kTranslation, Interpolation::kStep, {0.1, 0.2, 0.6},
                            {1, 1, 1, 2, 2, 2, 3, 3, 3});
  const Channel before = steps;
  ASSERT_TRUE(steps.ReplaceKeys(0.4, 0.48, takeTimes, takeValues, kFrame));
  EXPECT_EQ(steps.GetMode(), Interpolation::kLinear);
  for (int frame = 3; frame < 10; ++frame)
    EXPECT_EQ(at(steps, frame * kFrame), at(before, frame * kFrame)) << frame;
  EXPECT_EQ(at(steps, 0.1).x, 1.0) << "the first key stays where it was, off the frames";
  EXPECT_EQ(at(steps, 0.44).x, 8.0);
  EXPECT_EQ(at(steps, 14 * kFrame), at(before, 14 * kFrame));

  Channel kept = before;
  EXPECT_FALSE(kept.ReplaceKeys(0.4, 0.48, {0.44, 0.44}, {1, 1, 1, 2, 2, 2}, kFrame));
  EXPECT_FALSE(kept.ReplaceKeys(0.4, 0.48, {0.44}, {1, 1, NAN}, kFrame));
  EXPECT_FALSE(kept.ReplaceKeys(0.4, 0.48, takeTimes, takeValues, 1e-12)) << "too many frames";
  EXPECT_EQ(kept, before);
}

TEST(Scene, ChannelsThatHoldOneListOfTimesChangeOnTheirOwn) {
  Scene scene;
  SceneNode& node = scene.AddNode("node");
  const std::vector<double> times{0.0, 0.04, 0.08};
  const std::vector<double> values(9, 1.0);
  for (const auto path : {ChannelPath::kTranslation, ChannelPath::kScale})
    node.ReplaceKeys(path, 0.0, kAllTime, times, values, kFrame);
  const Channel& scale = *node.GetChannel(ChannelPath::kScale);
  EXPECT_EQ(&node.GetChannel(ChannelPath::kTranslation)->GetTimes(), &scale.GetTimes());
  const NodeAnimation before = node.GetAnimation();
  Channel changed = scale;
  EXPECT_TRUE(changed.SetKey(0.02, values.data(), kFrame));
  node.ReplaceKeys(ChannelPath::kTranslation, 0.06, kAllTime, {0.07}, {2, 2, 2}, kFrame);
  EXPECT_EQ(node.GetChannel(ChannelPath::kTranslation)->GetTimes(),
            (std::vector<double>{0.0, 0.04, 0.07}));
  EXPECT_EQ(changed.GetKeyCount(), 4u);
  EXPECT_EQ(scale.GetTimes(), times);
  EXPECT_EQ(before.channels[0]->GetTimes(), times);
}

TEST(Scene, PosesSurviveTheirMatricesMirroredOnesToo) {
  std::mt19937 random(11);
  for (int i = 0; i < 200; ++i) {
    Trs pose = randomPose(random, false);
    if (i % 2 == 1) pose.scale.z = -pose.scale.z;
    const Matrix<double> matrix = Compose(pose);
    const Trs again = Decompose(matrix);
    expectNear(Compose(again), matrix, 1e-12);
    EXPECT_EQ(again.scale.x < 0.0, i % 2 == 1);
  }
  Trs flat;
  flat.scale = {2.0, 0.0, 3.0};
  expectNear(Compose(Decompose(Compose(flat))), Compose(flat), 1e-15);
}

TEST(Scene, WorldMatricesMultiplyUpAndReparentingKeepsThemAtEveryKey) {
  std::mt19937 random(3);
  Scene scene;
  SceneNode& a = scene.AddNode("a");
  SceneNode& b = scene.AddNode("b", &a);
  SceneNode& c = scene.AddNode("c", &b);
  SceneNode& other = scene.AddNode("other");
  for (SceneNode* node : {&a, &b, &other}) node->SetPose(randomPose(random, true));
  c.SetPose(randomPose(random, false));
  b.SetChannel(
      channelOf(ChannelPath::kTranslation, Interpolation::kLinear, {0.0, 2.0}, {0, 0, 0, 5, 1, 2}));
  c.SetChannel(channelOf(ChannelPath::kTranslation, Interpolation::kLinear, {0.0, 1.0, 2.0},
                         {0, 0, 0, 1, 1, 1, 3, 0, 0}));
  for (const double t : {0.0, 0.3, 1.7, 5.0})
    expectNear(
        c.WorldMatrix(t),
        product(product(Compose(a.LocalTrs(t)), Compose(b.LocalTrs(t))), Compose(c.LocalTrs(t))),
        1e-12);

  std::vector<Matrix<double>> before;
  for (const double t : {0.0, 1.0, 2.0}) before.push_back(c.WorldMatrix(t));
  const NodeAnimation undo = c.GetAnimation();
  ASSERT_TRUE(scene.Reparent(c, &other, 0.0));
  for (int i = 0; i < 3; ++i) expectNear(c.WorldMatrix(i), before[static_cast<size_t>(i)], 1e-11);
  EXPECT_EQ(c.GetParent(), &other);
  EXPECT_EQ(c.GetChannel(ChannelPath::kScale), nullptr) << "what need not move gets no keys";
  ASSERT_TRUE(scene.Move(c, &b, 0));
  c.SetAnimation(undo);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(c.WorldMatrix(i), before[static_cast<size_t>(i)]);

  EXPECT_FALSE(scene.Reparent(a, &c, 0.0)) << "below itself";
  Trs flat;
  flat.scale = {1.0, 0.0, 1.0};
  other.SetPose(flat);
  EXPECT_FALSE(scene.Reparent(c, &other, 0.0)) << "no pose under it could keep the world's";
  EXPECT_EQ(c.GetParent(), &b);

  // On a rig's node a user's node remembers where it hung; on a user's own it does not.
  other.SetPose({});
  other.SetTag("rig/other");
  ASSERT_TRUE(scene.Reparent(c, &other, 0.0));
  EXPECT_EQ(c.GetHome(), "b");
  SceneNode& hub = scene.AddNode("hub", &other);
  hub.SetHub(true);
  ASSERT_TRUE(scene.Reparent(c, &hub, 0.0));
  EXPECT_EQ(c.GetHome(), "b") << "it was on the rig before";
  ASSERT_TRUE(scene.Reparent(c, nullptr, 0.0));
  EXPECT_FALSE(c.GetHome());
  ASSERT_TRUE(scene.Reparent(c, &other, 0.0));
  EXPECT_EQ(c.GetHome(), "") << "the world";
}

TEST(Scene, NamesStayUniqueThroughAddingRenamingDetachingAndAttaching) {
  Scene scene;
  SceneNode& car = scene.AddNode("Car");
  SceneNode& second = scene.AddNode("Car");
  SceneNode& wheel = scene.AddNode("Wheel", &car);
  EXPECT_EQ(second.GetName(), "Car_2");
  EXPECT_EQ(scene.Rename(wheel, "Car"), "Car_3");
  EXPECT_EQ(scene.Rename(wheel, "Car_3"), "Car_3");
  EXPECT_EQ(scene.Find("Wheel"), nullptr);

  std::unique_ptr<SceneNode> gone = scene.Detach(car);
  EXPECT_EQ(gone.get(), &car);
  EXPECT_EQ(scene.Find("Car_3"), nullptr) << "what is below goes too";
  SceneNode& thief = scene.AddNode("Car");
  EXPECT_EQ(&scene.Attach(std::move(gone), nullptr, 0), &car);
  EXPECT_EQ(car.GetName(), "Car_4");
  EXPECT_EQ(scene.GetRoots()[0].get(), &car);
  EXPECT_EQ(scene.GetNodes(), (std::vector<SceneNode*>{&car, &wheel, &second, &thief}));
  wheel.SetTag("tag");
  EXPECT_EQ(scene.FindTagged("tag"), &wheel);
  EXPECT_EQ(scene.FindTagged(""), nullptr);
  car.SetTag("tag");
  EXPECT_EQ(scene.FindTagged("tag"), &car) << "it stands before its child";
  car.SetTag("");
  gone = scene.Detach(car);
  EXPECT_EQ(scene.FindTagged("tag"), nullptr);
}

TEST(Scene, RateAndRangeRefuseWhatIsNone) {
  Scene scene;
  for (const double bad : {0.0, -25.0, double(NAN), kAllTime})
    EXPECT_FALSE(scene.SetFrameRate(bad));
  EXPECT_FALSE(scene.SetRange(2.0, 1.0));
  EXPECT_FALSE(scene.SetRange(0.0, NAN));
  EXPECT_EQ(scene.GetFrameRate(), 25.0);
  EXPECT_EQ(scene.GetRangeEnd(), 10.0);
}

}  // namespace
