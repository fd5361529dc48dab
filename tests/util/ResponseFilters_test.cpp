#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

#include "util/FollowFilters.h"
#include "util/ResponseFilters.h"

using namespace orv::util;
using V = Vector3<double>;
using Q = Quat<double>;

namespace {

/// A turn about a fixed oblique axis.
Q turn(double angle) {
  return Q::fromRotationVector(V(1, 2, 2) / 3.0 * angle);
}
double angleBetween(const Q& a, const Q& b) {
  return (b * a.conjugate()).toRotationVector().length();
}

/// What is left of a way of 1 after `seconds` of the filter in frames of dt.
using Filter = void (*)(double&, double, double, double, double);
double left(Filter filter, double factor, double dt, int frames) {
  double value = 1.0;
  for (int i = 0; i < frames; ++i) filter(value, 0.0, factor, 0.0, dt);
  return value;
}

}  // namespace

TEST(ResponseFilters, WhatIsLeftFollowsThePowerLawAtEveryRate) {
  for (const Filter filter :
       std::initializer_list<Filter>{lowPass, lowPassClamped, lowPassLimited}) {
    for (const double f : {0.1, 0.7, 0.999}) {
      EXPECT_NEAR(left(filter, f, 0.04, 25), left(filter, f, 0.02, 50), 1e-15);
      EXPECT_NEAR(left(filter, f, 0.04, 1), std::pow(1 - f / 2, 2), 1e-15);
      EXPECT_NEAR(left(filter, f, 0.08, 1), std::pow(1 - f * 2 / 3, 3), 1e-15);
      EXPECT_NEAR(left(filter, f, 1 / 60.0, 60), std::pow(1 - f / 2.4, 60), 1e-14);
      EXPECT_NEAR(left(filter, f, 1 / 24.0, 24), std::pow(1 - f / 1.92, 48), 1e-14);
    }
  }
}

TEST(ResponseFilters, EachFilterHasItsOwnEndsOfTheFactor) {
  EXPECT_EQ(left(lowPass, 1.0, 0.04, 1), 0.0);
  EXPECT_EQ(left(lowPass, 0.0, 0.04, 1), 0.0);
  EXPECT_GT(left(lowPass, 0.999, 0.04, 1), 0.0);
  EXPECT_EQ(left(lowPass, 0.5, -0.04, 1), 1.0) << "no way back in time";
  EXPECT_NEAR(left(lowPass, 3.0, 0.04, 1), 0.25, 1e-15);  // overshoots twice
  double far = 1e17;
  lowPassClamped(far, 0.1, 2.0, 0.0, 0.02);
  EXPECT_EQ(far, 0.1);  // a copy: a walk would lose the small number
  EXPECT_NEAR(left(lowPassClamped, 1.9, 0.04, 1), 0.0025, 1e-15);

  const double rows[][3] = {{0, 0, 11}, {2, 0, 11}, {0, 5, 1}, {2, 5, 1}, {1, 5, 1.15}};
  for (const auto& [factor, rate, expected] : rows) {
    double c = 1.0;
    ExpFollowScalar(c, 11.0, factor, rate, 0.04);
    EXPECT_NEAR(c, expected, 1e-15) << factor << " " << rate;
  }
}

TEST(ResponseFilters, QuaternionsWalkTheShortWayWhateverTheirSigns) {
  const Q start = turn(0.4), goal = turn(1.0);
  for (const double sv : {1.0, -1.0})
    for (const double st : {1.0, -1.0}) {
      Q value = sv < 0 ? -start : start;
      Q target = st < 0 ? -goal : goal;
      ExpFollowQuaternion(value, target, 1.0, 0.04);
      EXPECT_EQ(target, goal);  // put right in place
      EXPECT_NEAR(value.length(), 1.0, 1e-15);
      EXPECT_GT(value.w, 0.0);
      EXPECT_NEAR(angleBetween(value, goal) + angleBetween(start, value), 0.6, 1e-12);
      EXPECT_NEAR(angleBetween(value, goal), 0.15, 2e-3);
    }
  // Both have w at or above 0 and yet stand apart: the value is turned over.
  Q value(0.8, 0, 0, 0.6);
  const Q target(-0.999, 0, 0, std::sqrt(1 - 0.999 * 0.999));
  lowPassClamped(value, target, 0.5, 0.0, 0.02);
  EXPECT_LT(value.x, -0.8);

  // As a strength 1 snaps; as a rate it doesn't, and 2 does.
  Q byStrength, byRate;
  ExpFollowQuaternionByStrength(byStrength, goal, 1.0, 0.04);
  ExpFollowQuaternion(byRate, goal, 1.0, 0.04);
  EXPECT_LT(angleBetween(byStrength, goal), 1e-7);
  EXPECT_GT(angleBetween(byRate, goal), 0.1);
}

TEST(ResponseFilters, TheLimitedRotationTurnsByWhatTheFactorLeaves) {
  // Saturated it lands, whatever the rate; below, a larger factor turns less.
  const double rows[][3] = {{0, 0, 1},      {2, 3, 1},      {0, 3, 0.12},
                            {0.4, 0, 0.64}, {1.6, 0, 0.04}, {0.4, 3, 0.12 * 0.64}};
  for (const auto& [factor, rate, turned] : rows) {
    Q q = turn(0.4);
    ExpFollowQuaternionLimited(q, -turn(1.4), factor, rate, 0.04);
    EXPECT_NEAR(q.length(), 1.0, 1e-14);
    EXPECT_NEAR(angleBetween(q, turn(0.4)), turned, 1e-12) << factor << " " << rate;
    EXPECT_NEAR(angleBetween(q, turn(0.4 + turned)), 0.0, 1e-7) << factor << " " << rate;
  }
  Q plain;
  lowPassLimited(plain, Q(0, 0, 0, -2), 0.0, 0.0, 0.04);
  EXPECT_EQ(plain, Q(0, 0, 0, -2));  // a plain copy, neither turned over nor normalised
}

// The springs' way over time is checked with the camera that flies by them.
TEST(ResponseFilters, SpringsKeepTheirVelocityAtFactorZeroAndTurnInTheirOwnFrame) {
  V p(1, 0, 0), v(0, 1, 0);
  SpringFollowPosition(p, v, V(7, 8, 9), 0.0, 3.0, 0.0, 0.1);
  EXPECT_EQ(p, V(7, 8, 9));
  EXPECT_EQ(v, V(0, 1, 0));
  // Velocity and pull are in the rotation's own frame: its X is the world's Y here.
  const Q start = Q::fromRotationVector({0, 0, 1.5707963267948966});
  Q q = start;
  V w(0.1, 0, 0);
  SpringFollowRotation(q, w, start, 1e-12, 0.0, 0.0, 1.0);
  EXPECT_NEAR(q.rotate({0, 0, 1}).x, std::sin(0.1), 1e-4);
  w = V();
  q = start;
  SpringFollowRotation(q, w, Q::fromRotationVector({0.5, 0, 0}) * start, 1.0, 0.0, 0.0, 0.01);
  EXPECT_LT((w - V(0.005, 0, 0)).length(), 1e-6);
}
