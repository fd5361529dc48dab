#include "adaptor/common/Space.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "adaptor/common/Euler.h"
#include "adaptor/common/HostChannels.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor;
using Vec = util::Vector3<double>;
using Turn = util::Quat<double>;
using Pose = util::Matrix<double>;

constexpr int kPoses = 200000;
constexpr double kDegrees = 180.0 / M_PI;
constexpr const char* kOrders[] = {"XYZ", "YZX", "ZXY", "XZY", "YXZ", "ZYX"};
const Space kCentimetresZ{UpAxis::kZ, 100.0};

std::mt19937_64& random() {
  static std::mt19937_64 engine(20190112);
  return engine;
}

double uniform(double from, double to) {
  return std::uniform_real_distribution<double>(from, to)(random());
}

Vec vec(double size) {
  return {uniform(-size, size), uniform(-size, size), uniform(-size, size)};
}

Turn turn() {
  std::normal_distribution<double> normal;
  return Turn(normal(random()), normal(random()), normal(random()), normal(random())).normalized();
}

/// Uneven scale, every second time mirrored along some axis.
Vec unevenScale() {
  Vec scale(uniform(0.1, 3.0), uniform(0.1, 3.0), uniform(0.1, 3.0));
  const int mirrored = static_cast<int>(uniform(0.0, 6.0));
  if (mirrored < 3) scale[mirrored] = -scale[mirrored];
  return scale;
}

Pose shift(const Vec& by) {
  Pose m;
  m.setTranslation(by);
  return m;
}

Pose scaling(const Vec& by) {
  Pose m;
  m[0] = by.x, m[5] = by.y, m[10] = by.z;
  return m;
}

/// By whole matrices, as all that is expected here.
Pose matrixOf(const Trs& p) {
  return shift(p.translation) * p.rotation.toMatrix() * scaling(p.scale);
}

Pose aboutAxes(const Vec& angles, const char* order) {
  Pose m;
  for (int i = 0; i < 3; ++i) {
    const int axis = order[i] - 'X';
    m = Pose::rotationAxisAngle(angles[axis] * kDegrees, axis == 0, axis == 1, axis == 2) * m;
  }
  return m;
}

double apart(const Pose& a, const Pose& b) {
  double most = 0.0;
  for (int i = 0; i < 16; ++i) most = std::max(most, std::abs(a[i] - b[i]));
  return most;
}

template <class T>
bool sameBits(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

// --- Euler ---

TEST(Space, AnglesOfEveryOrderGiveTheirRotationBackNearTheFrameBefore) {
  for (int i = 0; i < kPoses; ++i) {
    const int o = i % kRotationOrders;
    const auto order = static_cast<RotationOrder>(o);
    Vec told = vec(7.0);
    // Every fourth one in gimbal lock or close to it.
    const int round = i / kRotationOrders, middle = kOrders[o][1] - 'X';
    if (round % 4 == 0) {
      told[middle] = (round % 8 ? 0.5 : -1.5) * M_PI;
      if (round % 3 != 0) told[middle] += std::pow(10.0, uniform(-17, -3));
    }
    const Pose expected = aboutAxes(told, kOrders[o]);
    const Turn q = FromEuler(told, order);
    ASSERT_LT(apart(q.toMatrix(), expected), 1e-13);
    const Vec previous = vec(20.0), plain = ToEuler(q, order);
    const Vec near = ToEulerNear(q, order, previous);
    ASSERT_LT(apart(aboutAxes(plain, kOrders[o]), expected), 3e-12) << o;
    ASSERT_LT(apart(aboutAxes(near, kOrders[o]), expected), 3e-12) << o;
    // Nothing is nearer: neither whole turns of the solution given nor of the other one.
    Vec other = near + Vec(M_PI, M_PI, M_PI);
    other[middle] = M_PI - near[middle];
    double distance = 0.0, ofOther = 0.0;
    for (int k = 0; k < 3; ++k) {
      distance += std::pow(near[k] - previous[k], 2);
      ofOther += std::pow(std::remainder(other[k] - previous[k], 2.0 * M_PI), 2);
      ASSERT_LE(std::abs(near[k] - previous[k]), M_PI + 1e-12);
    }
    ASSERT_LE(distance, ofOther + 1e-9);
  }
}

TEST(Space, SmoothCurvesOfAnglesComeBackAsTheyWere) {
  for (int o = 0; o < kRotationOrders; ++o) {
    Vec previous;
    for (int frame = 0; frame < 2000; ++frame) {
      // Outer angles over several turns, the middle one round and back, through lock after lock.
      const double t = frame * 0.01;
      const Vec drawn(3.0 * t, 9.0 * std::sin(0.5 * t), -2.0 * t + std::sin(t));
      Vec told;
      for (int k = 0; k < 3; ++k) told[kOrders[o][k] - 'X'] = drawn[k];
      const auto order = static_cast<RotationOrder>(o);
      previous = ToEulerNear(FromEuler(told, order), order, previous);
      ASSERT_LT((previous - told).length(), 1e-9) << kOrders[o] << " at frame " << frame;
    }
    const Vec none;
    EXPECT_TRUE(sameBits(none, ToEuler(Turn(), static_cast<RotationOrder>(o))));
  }
}

TEST(Space, ChannelsRoundPivotsShowThePose) {
  for (int i = 0; i < kPoses; ++i) {
    const int o = i % kRotationOrders;
    ChannelFrame frame;
    frame.order = static_cast<RotationOrder>(o);
    const Trs pose{vec(1e3), turn(), unevenScale()};
    const Vec previous = vec(10.0);
    const HostChannels bare = ChannelsOf(pose, frame, previous);
    ASSERT_TRUE(sameBits(bare.translation, pose.translation) && sameBits(bare.scale, pose.scale));
    frame = {frame.order, vec(10.0), vec(10.0), vec(10.0), vec(10.0), turn(), turn()};
    const HostChannels c = ChannelsOf(pose, frame, previous);
    const Pose scaled = shift(frame.scaleShift) * shift(frame.scalePivot) * scaling(c.scale) *
                        shift(-frame.scalePivot);
    const Pose turned = shift(frame.rotateShift) * shift(frame.rotatePivot) *
                        frame.orient.toMatrix() * aboutAxes(c.angles, kOrders[o]) *
                        frame.rotateAxis.toMatrix() * shift(-frame.rotatePivot);
    const Pose shown = shift(c.translation) * turned * scaled;
    ASSERT_LT(apart(shown, matrixOf(pose)), 1e-11);
    ASSERT_LT(apart(shown, rws::adaptor::MatrixOf(c, frame)), 1e-11);
  }
}

// --- space ---

TEST(Space, AxesAndUnitsOfAnotherHost) {
  const Vec p(1.0, 2.0, 3.0);
  EXPECT_EQ(Vec(100.0, -300.0, 200.0), kCentimetresZ.PointToHost(p));
  EXPECT_EQ(Vec(1.0, -3.0, 2.0), kCentimetresZ.DirectionToHost(p));
  EXPECT_EQ(Vec(100.0, 200.0, 300.0), (Space{UpAxis::kY, 100.0}.PointToHost(p)));
  Pose expected;
  expected[0] = expected[6] = 100.0;
  expected[9] = -100.0;
  expected[5] = expected[10] = 0.0;
  EXPECT_EQ(expected, kCentimetresZ.WorldToHost(Pose()));
  // A node that stands as its parent is turned up by a quarter; a turn about the rigs' up axis is
  // one about the host's.
  const Turn up = kCentimetresZ.OrientationToHost(Turn());
  EXPECT_LT((up.rotate({0, 1, 0}) - Vec(0, 0, 1)).length(), 1e-15);
  EXPECT_EQ(Turn(0, 0, 0.6, 0.8), kCentimetresZ.TurnToHost({0, 0.6, 0, 0.8}));
}

TEST(Space, PosesOfAnotherHostAndBack) {
  // The rigs' own space; then a metre as power of two of the unit, with which nothing rounds; then
  // centimetres and feet.
  const Space spaces[] = {{},
                          {UpAxis::kZ, 1.0},
                          {UpAxis::kZ, 0.25},
                          {UpAxis::kY, 1024.0},
                          {UpAxis::kY, 100.0},
                          {UpAxis::kZ, 100.0},
                          {UpAxis::kZ, 1 / 0.3048}};
  for (int i = 0; i < kPoses; ++i) {
    const Space& space = spaces[i % 7];
    const double rounding = i % 7 < 4 ? 1e-300 : 1e-12;
    Trs parent{vec(1e3), turn(), unevenScale()};
    if (i % 5 == 0) parent.translation[i % 3] = i % 2 ? -0.0 : 4e-320;
    if (i % 11 == 0) parent.rotation = {-0.0, 0.0, -0.0, 1.0};
    const Trs child{vec(10.0), turn(), unevenScale()};
    const Pose world = matrixOf(parent), there = space.WorldToHost(world);
    const Trs top = space.TopLevelToHost(parent), back = space.TopLevelToRig(top);
    if (i % 7 == 0) {
      ASSERT_TRUE(sameBits(parent, top) && sameBits(parent, back) && sameBits(world, there) &&
                  sameBits(world, space.WorldToRig(there)));
    }
    ASSERT_LT(apart(matrixOf(top), there), 1e-9 * space.metre);
    ASSERT_LT((back.translation - parent.translation).length(), rounding);
    ASSERT_LT((back.scale - parent.scale).length(), rounding);
    ASSERT_LT(apart(back.rotation.toMatrix(), parent.rotation.toMatrix()), 1e-14);
    ASSERT_LT(apart(space.WorldToRig(there), world), rounding);
    ASSERT_TRUE(sameBits(child.rotation, space.TurnToRig(space.TurnToHost(child.rotation))));
    ASSERT_TRUE(sameBits(child.scale, space.DirectionToRig(space.DirectionToHost(child.scale))));

    // Below the top level nothing is converted: the child's own matrix hangs on either parent.
    const Pose local = matrixOf(child), hung = there * local, inRig = world * local;
    ASSERT_LT(apart(hung, space.WorldToHost(inRig)), 1e3 * rounding * space.metre);
    const Vec p = vec(10.0), q = space.PointToRig(hung.transformPoint(p));
    ASSERT_LT((q - inRig.transformPoint(p)).length(), 1e-9);

    // A turn of the world, done on either side.
    const Turn by = turn();
    ASSERT_LT(apart(space.OrientationToHost(parent.rotation * by).toMatrix(),
                    (top.rotation * space.TurnToHost(by)).toMatrix()),
              1e-14);
  }
}

}  // namespace
}  // namespace orv::tests
