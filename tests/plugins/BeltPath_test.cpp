#include "plugins/release/crawlertracks/BeltPath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace orv::rws::addon {
namespace {

using Circles = std::vector<BeltCircle>;

/// Length of a tight band round discs: round the convex hull of many points on their rims.
double HullLength(const Circles& circles) {
  std::vector<std::array<double, 2>> points, hull;
  for (const BeltCircle& c : circles)
    for (int i = 0; i < 20000; ++i) {
      const double angle = i * M_PI / 10000.0;
      points.push_back(
          {c.centre.z + c.radius * std::cos(angle), c.centre.y + c.radius * std::sin(angle)});
    }
  std::sort(points.begin(), points.end());
  for (int pass = 0; pass < 2; ++pass) {
    const std::size_t base = hull.size();
    for (const auto& p : points) {
      while (hull.size() >= base + 2) {
        const auto &a = hull[hull.size() - 2], &b = hull.back();
        if ((b[0] - a[0]) * (p[1] - a[1]) > (b[1] - a[1]) * (p[0] - a[0])) break;
        hull.pop_back();
      }
      hull.push_back(p);
    }
    hull.pop_back();
    std::reverse(points.begin(), points.end());
  }
  double length = 0.0;
  for (std::size_t i = 0; i < hull.size(); ++i) {
    const auto &a = hull[i], &b = hull[(i + 1) % hull.size()];
    length += std::hypot(b[0] - a[0], b[1] - a[1]);
  }
  return length;
}

/// The line is laid, closed and smooth, its steps touch, and its length is `wanted`.
void ExpectLine(const char* name, const Circles& circles, double wanted) {
  SCOPED_TRACE(name);
  std::string problem;
  const auto path = BeltPath::Lay(circles, problem);
  ASSERT_TRUE(path) << problem;
  EXPECT_NEAR(path->GetLength(), wanted, 1e-6 * wanted);
  constexpr int kParts = 5000;
  const double part = path->GetLength() / kParts, side = path->IsLeftTurning() ? 1.0 : -1.0;
  const auto chord = [](const BeltPath::Place& a, const BeltPath::Place& b) {
    return std::hypot(b.point.z - a.point.z, b.point.y - a.point.y);
  };
  for (int i = 0; i < kParts; ++i) {
    const auto a = path->At(i * part), b = path->At((i + 1) * part);
    // At its own speed everywhere, also over the seam, and the outside on the right or the left.
    ASSERT_NEAR(chord(a, b), part, 1e-3 * part) << i;
    ASSERT_NEAR(std::hypot(a.outward.z, a.outward.y), 1.0, 1e-12) << i;
    const double out =
        a.outward.z * (b.point.y - a.point.y) - a.outward.y * (b.point.z - a.point.z);
    ASSERT_NEAR(side * out, part, 0.02 * part) << i;
    for (const BeltCircle& c : circles) {
      const double off = std::hypot(a.point.z - c.centre.z, a.point.y - c.centre.y);
      ASSERT_GT(off, std::abs(c.radius) - 1e-9) << "through a wheel, at " << i;
    }
  }
  EXPECT_LT(chord(path->At(0.0), path->At(path->GetLength())), 1e-9);
  EXPECT_LT(chord(path->At(-part), path->At(path->GetLength() - part)), 1e-9);
  const double pitch = path->GetPitch(40) * 40;
  EXPECT_TRUE(pitch > path->GetLength() && pitch < path->GetLength() * 1.05) << pitch;
}

TEST(BeltPath, IsTheTightBandRoundItsWheelsEitherWayRound) {
  ExpectLine("one", {{{3, 1}, 0.5}}, M_PI);
  const BeltCircle big{{0, 0}, 1.0}, even{{-4, 1}, 1.0}, small{{-4, 1}, 0.3};
  ExpectLine("equal", {big, even}, 2 * M_PI + 2 * std::sqrt(17.0));
  ExpectLine("unequal", {big, small}, HullLength({big, small}));
  Circles tank{{{0, 0.5}, 0.4}, {{-1, 0}, 0.5}, {{-2.5, 0}, 0.5}, {{-4, 0.7}, 0.3}};
  ExpectLine("four", tank, HullLength(tank));
  std::reverse(tank.begin() + 1, tank.end());
  ExpectLine("the other way", tank, HullLength(tank));
  for (BeltCircle& c : tank) c.centre.z = -c.centre.z;
  ExpectLine("seen from behind", tank, HullLength(tank));
  const Circles row{{{0, 0}, 0.5}, {{-1.2, 0}, 0.5}, {{-2.4, 0}, 0.5}, {{-3.6, 0}, 0.5}};
  ExpectLine("in one line", row, M_PI + 7.2);
}

TEST(BeltPath, AnOuterWheelPressesInAndAnInnerOneThatIsNotReachedIsLeftOut) {
  // Wheels of 1 m at (+-4, 0), one of 0.5 m pressing on the middle of the upper run. Each half of
  // that is a crossing tangent; it leaves a right triangle, and falls by `tilt` to the middle.
  const double y = 0.8, apart = std::hypot(4.0, y), run = std::sqrt(apart * apart - 1.5 * 1.5);
  const double tilt = M_PI / 2 - std::acos(1.5 / apart) - std::atan2(y, 4.0);
  const Circles pressed{{{-4, 0}, 1.0}, {{4, 0}, 1.0}, {{0, y}, -0.5}};
  ExpectLine("pressed", pressed, 8.0 + 2 * run + 2 * (M_PI + tilt) + 2 * tilt * 0.5);
  const Circles inside{{{-4, 0}, 1.0}, {{4, 0}, 1.0}, {{0, 0.2}, 0.5}};
  ExpectLine("left out", inside, 16.0 + 2 * M_PI);
}

TEST(BeltPath, WhatCannotBeLaidIsToldWithItsReason) {
  const auto problem = [](const Circles& circles) {
    std::string text;
    EXPECT_FALSE(BeltPath::Lay(circles, text));
    return text;
  };
  EXPECT_NE(problem({}).find("inner wheel first"), std::string::npos);
  EXPECT_NE(problem({{{0, 0}, -0.5}, {{2, 0}, 0.5}}).find("inner wheel first"), std::string::npos);
  EXPECT_NE(problem({{{0, 0}, 1.0}, {{0.3, 0}, 0.5}}).find("too close"), std::string::npos);
  EXPECT_NE(problem({{{0, 0}, 1.0}, {{1.2, 0}, -0.5}}).find("too close"), std::string::npos);
  const Circles crossing{{{0, 0}, 0.3}, {{4, 4}, 0.3}, {{4, 0}, 0.3}, {{0, 4}, 0.3}};
  EXPECT_NE(problem(crossing).find("order"), std::string::npos);
}

}  // namespace
}  // namespace orv::rws::addon
