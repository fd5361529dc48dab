#include "plugins/release/splinespeedcontroller/CCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace orv::rws::addon {
namespace {

using Vector = util::Vector3<double>;

CCurve Through(const std::vector<Vector>& points, bool closed, bool straight = true,
               double tension = 1.0) {
  CCurve curve;
  curve.SetClosed(closed);
  curve.SetEndStraight(straight);
  for (const Vector& point : points) curve.AddPoint(point, tension, tension);
  return curve;
}

std::vector<Vector> Walk(std::mt19937& random, int count) {
  std::uniform_real_distribution<double> turn(-1.0, 1.0), step(0.3, 9.0);
  std::vector<Vector> points{{1, 2, 3}};
  for (int i = 1; i < count; ++i)
    points.push_back(points.back() +
                     Vector(turn(random), turn(random), turn(random)).normalized() * step(random));
  return points;
}

/// The Bezier form of the same segment, to check the curve against.
Vector Bezier(const Vector& p1, const Vector& p2, const Vector& m1, const Vector& m2, double t) {
  const Vector b1 = p1 + m1 / 3, b2 = p2 - m2 / 3;
  const double s = 1 - t;
  return p1 * (s * s * s) + b1 * (3 * s * s * t) + b2 * (3 * s * t * t) + p2 * (t * t * t);
}

TEST(CCurve, PassesThroughItsPointsByArcLengthWithUnitTangents) {
  std::mt19937 random(7);
  for (int round = 0; round < 20; ++round) {
    const auto points = Walk(random, 3 + round);
    const bool closed = round % 2 == 0;
    CCurve curve = Through(points, closed, round % 3 == 0, round % 5 == 4 ? -1.5 : 1.0);
    for (std::size_t i = 0; i < points.size(); ++i) {
      EXPECT_LT((curve.Position(curve.WaypointPosition(i)) - points[i]).length(), 1e-9);
      EXPECT_NEAR(curve.Closest(points[i]) - curve.WaypointPosition(i), 0.0, 1e-6);
    }
    EXPECT_EQ(curve.WaypointPosition(points.size()), 1.0);
    double before = -1.0, way = 0.0;
    Vector last = curve.Position(0.0);
    for (int i = 0; i <= 20000; ++i) {
      const double chord = curve.ChordAt(i == 20000 && closed ? 1.0 - 1e-12 : i / 20000.0);
      EXPECT_GT(chord, before);
      before = chord;
      Vector at, tangent, curvature;
      curve.EvaluateChord(chord, at);
      way += (at - last).length();
      last = at;
      if (i % 100 != 0) continue;
      EXPECT_NEAR(way / curve.Length(), i / 20000.0, 1e-3);
      curve.PositionAndTangent(i / 20000.0, at, tangent);
      EXPECT_NEAR(tangent.length(), 1.0, 1e-12);
      curve.PositionTangentAndCurvature(i / 20000.0, at, tangent, curvature);
      EXPECT_NEAR(tangent.length(), 1.0, 1e-12);
    }
    EXPECT_NEAR(way / curve.Length(), 1.0, 1e-3);
  }
}

TEST(CCurve, ItsSegmentsAreCubicsWhoseTangentsScaleWithSegmentAndTension) {
  std::mt19937 random(3);
  const auto points = Walk(random, 6);
  CCurve curve;
  for (std::size_t i = 0; i < points.size(); ++i)
    curve.AddPoint(points[i], 0.5 + 0.3 * static_cast<double>(i), 2.0 - static_cast<double>(i));
  double sum = 0.0;
  for (int i = 0; i < 5; ++i) sum += (points[i + 1] - points[i]).length();
  double begin = 0.0;
  for (int i = 0; i < 5; ++i) {
    // Without straight ends the missing neighbour lies straight "up", which is meant.
    const Vector up(0, 1, 0), way = points[i + 1] - points[i];
    const Vector d0 = i > 0 ? (points[i] - points[i - 1]).normalized() : up;
    const Vector d2 = i < 4 ? (points[i + 2] - points[i + 1]).normalized() : up;
    const Vector m1 = (d0 + way.normalized()) * 0.5 * (2.0 - i) * way.length();
    const Vector m2 = (way.normalized() + d2) * 0.5 * (0.5 + 0.3 * (i + 1)) * way.length();
    for (const double t : {0.0001, 0.3, 0.77, 0.9999}) {
      Vector at;
      ASSERT_TRUE(curve.EvaluateChord((begin + t * way.length()) / sum, at));
      EXPECT_LT((at - Bezier(points[i], points[i + 1], m1, m2, t)).length(), 1e-9);
    }
    begin += way.length();
  }
}

TEST(CCurve, ItsEndCasesAreThoseTold) {
  Vector at, tangent, curvature;
  CCurve none = Through({}, true);
  none.PositionTangentAndCurvature(0.4, at, tangent, curvature);
  EXPECT_TRUE(at == Vector() && tangent == Vector(0, 1, 0) && curvature == Vector());
  EXPECT_TRUE(none.Length() == 0.0 && none.WaypointPosition(3) == 0.0);
  EXPECT_EQ(Through({{4, 5, 6}}, false).Position(0.7), Vector(4, 5, 6));

  CCurve line = Through({{0, 0, 0}, {0, 0, -8}}, false);
  EXPECT_NEAR(line.Length(), 8.0, 1e-12);
  EXPECT_LT((line.Position(0.25) - Vector(0, 0, -2)).length(), 1e-9);
  EXPECT_EQ(line.Position(-3.0), line.Position(0.0));
  EXPECT_EQ(line.Position(3.0), line.Position(1.0));
  line.PositionAndTangent(1.0, at, tangent);
  EXPECT_LT((tangent - Vector(0, 0, -1)).length(), 1e-9);
  EXPECT_GT(Through({{0, 0, 0}, {0, 0, -8}}, false, false).Position(0.1).y, 0.1) << "ends go up";

  CCurve ring = Through({{0, 0, 0}, {4, 0, 1}, {3, 1, 5}}, true);
  EXPECT_EQ(ring.Position(1.0), ring.Position(0.0));
  EXPECT_EQ(ring.Position(1.25), ring.Position(0.25));
  EXPECT_LT((ring.Position(-0.75) - ring.Position(0.25)).length(), 1e-12);
  EXPECT_EQ(ring.Sample(200).size(), 200u);
  // A circle's curvature points to its centre.
  std::vector<Vector> points;
  for (int i = 0; i < 8; ++i) points.push_back({std::cos(i * M_PI / 4), 0, std::sin(i * M_PI / 4)});
  CCurve circle = Through(points, true);
  double turned = 0.0;
  for (int i = 0; i < 1000; ++i) {
    circle.PositionTangentAndCurvature(i / 1000.0 + 0.0005, at, tangent, curvature);
    EXPECT_GT(-curvature.normalized().dot(at.normalized()), 0.95) << i;
    turned += curvature.length() / 1000.0;
  }
  EXPECT_NEAR(turned, M_PI, 0.01) << "half of the whole turn";
}

TEST(CCurve, SegmentsOfUnevenLengthAllHaveSamplesAndNoCurveHasTooMany) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> chord(1.0, 50.0);
  for (const int count : {3, 10, 50, 400}) {
    for (const int shortAt : {0, 1, count - 1}) {
      std::vector<double> chords(static_cast<std::size_t>(count));
      for (double& one : chords) one = chord(random);
      chords[static_cast<std::size_t>(shortAt)] = 1.0;
      chords[static_cast<std::size_t>(shortAt == 0 ? 1 : 0)] = 50.0;
      std::vector<Vector> points{{}};
      double sum = 0.0;
      for (const double one : chords) points.push_back({sum += one, 0, 0});
      CCurve curve = Through(points, false);
      ASSERT_EQ(curve.State(), CurveState::kSampled) << count;
      EXPECT_GE(curve.SampleCount() / sum, 16.0) << count << " points, short at " << shortAt;
    }
  }
  // The longest chord times the density over the first one, or 64 to a segment where that is more,
  // and beside those one for each end and control point.
  EXPECT_EQ(Through({{0, 0, 0}, {2, 0, 0}, {5, 0, 0}, {9.001, 0, 0}}, false).SampleCount(), 2004u);
  CCurve even;
  for (int i = 0; i <= 20; ++i) even.AddPoint({1.0 * i, 0, 0}, 1.0, 1.0);
  EXPECT_EQ(even.SampleCount(), 20u * 64 + 1 + 20);
  // The first chord decides: next to nothing there is too much, while a later one has to be nearer
  // to nothing still.
  EXPECT_EQ(Through({{0, 0, 0}, {1e-3, 0, 0}, {9, 0, 0}}, false).State(),
            CurveState::kTooManySamples);
  EXPECT_EQ(Through({{0, 0, 0}, {9, 0, 0}, {9.001, 0, 0}}, false).State(), CurveState::kSampled);
  const std::vector<std::vector<Vector>> refused = {{{0, 0, 0}, {0, 0, 0}, {9, 0, 0}},
                                                    {{0, 0, 0}, {9, 0, 0}, {9, 1e-9, 0}},
                                                    {{3, 3, 3}, {3, 3, 3}},
                                                    {{0, 0, 0}, {NAN, 0, 0}, {9, 0, 0}},
                                                    {{0, 0, 0}, {9, 0, 0}, {INFINITY, 0, 0}}};
  for (const auto& points : refused) {
    CCurve curve = Through(points, false);
    EXPECT_EQ(curve.State(), CurveState::kTooManySamples);
    EXPECT_EQ(curve.SampleCount(), 0u);
    EXPECT_EQ(curve.Position(0.5), points[0]);
  }
  // A point between two samples does not go missing.
  CCurve tiny = Through({{0, 0, 0}, {500, 0, 0}, {500.00001, 0, 0}, {500.00001, 0, 900}}, false);
  ASSERT_EQ(tiny.State(), CurveState::kSampled);
  EXPECT_NEAR(tiny.Position(tiny.WaypointPosition(2)).x, 500.00001, 1e-9);
}

}  // namespace
}  // namespace orv::rws::addon
