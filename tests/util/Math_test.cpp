#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "util/Angles.h"
#include "util/Matrix.h"
#include "util/QTransform.h"
#include "util/Quat.h"

using V = orv::util::Vector3<double>;
using Q = orv::util::Quat<double>;
using M = orv::util::Matrix<double>;

namespace {

using orv::util::kPi;

std::mt19937_64 g_random(11);

double any(double from = -1.0, double to = 1.0) {
  return std::uniform_real_distribution<double>(from, to)(g_random);
}
V anyVector() {
  return {any(), any(), any()};
}
Q anyRotation() {
  return Q(any(), any(), any(), any()).normalized();
}

double distance(const V& a, const V& b) {
  return (a - b).length();
}
double distance(const M& a, const M& b) {
  double worst = 0.0;
  for (int i = 0; i < 16; ++i) worst = std::max(worst, std::abs(a[i] - b[i]));
  return worst;
}

}  // namespace

TEST(Math, RotationsAreRightHandedAndAgreeBetweenTheTypes) {
  EXPECT_LT(distance(M::rotationAxisAngle(90, 0, 0, 1).transformPoint({1, 0, 0}), V(0, 1, 0)),
            1e-15);
  for (int i = 0; i < 200; ++i) {
    const V axis = anyVector().normalized();
    const double angle = any(0.0, 3.1);
    const M byMatrix = M::rotationAxisAngle(angle * 180 / kPi, axis.x, axis.y, axis.z);
    Q q = Q::fromRotationVector(axis * angle);
    EXPECT_LT(distance(q.toMatrix(), byMatrix), 1e-14);
    EXPECT_LT(distance(q.toRotationVector(), axis * angle), 1e-12);
    const V p = anyVector();
    EXPECT_LT(distance(q.rotate(p), byMatrix.transformPoint(p)), 1e-14);
  }
}

TEST(Math, ProductsComposeInOppositeOrdersInMatrixAndQuat) {
  for (int i = 0; i < 100; ++i) {
    const Q a = anyRotation(), b = anyRotation();
    const V p = anyVector();
    EXPECT_LT(distance((a * b).rotate(p), b.rotate(a.rotate(p))), 1e-14);
    const M m = orv::util::QTransform<double>{anyVector(), a}.toMatrix();
    const M n = orv::util::QTransform<double>{anyVector(), b}.toMatrix();
    EXPECT_LT(distance((m * n).transformPoint(p), m.transformPoint(n.transformPoint(p))), 1e-14);
  }
}

TEST(Math, FromMatrixGivesTheRotationBackInEveryBranchWhateverTheScale) {
  // Half turns and near half turns about each axis reach the x, y and z branches.
  const V axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, -1}, {-2, 1, 1}, {1, 1, 3}};
  for (const V& axis : axes)
    for (const double angle : {0.0, 0.3, 1.7, 2.8, 3.1, 3.14159, kPi}) {
      const V u = axis.normalized();
      const M m = M::rotationAxisAngle(angle * 180 / kPi, u.x, u.y, u.z);
      M scaled = m;
      scaled.setRowLengths({0.01, 3.0, 200.0});
      EXPECT_LT(distance(scaled.rowLengths(), V(0.01, 3.0, 200.0)), 1e-12);
      const Q q = Q::fromMatrix(m), r = Q::fromMatrix(scaled);
      EXPECT_GE(q.w, 0.0);
      EXPECT_LT(distance(q.toMatrix(), m), 1e-14);
      EXPECT_LT(distance(r.toMatrix(), m), 1e-14);
    }
}

TEST(Math, LengthsHoldOverAllThatADoubleHolds) {
  for (int e = -1074; e <= 1020; ++e) {
    const double s = std::ldexp(1.0, e);
    EXPECT_EQ(V(3 * s, -4 * s, 12 * s).length(), 13 * s) << e;
    EXPECT_EQ(Q(s, -2 * s, 2 * s, 4 * s).length(), 5 * s) << e;
    EXPECT_LT(distance(V(3 * s, -4 * s, 12 * s).normalized(), V(3, -4, 12) / 13.0), 1e-15) << e;
    EXPECT_EQ(Q(s, -2 * s, 2 * s, 4 * s).normalized(), Q(0.2, -0.4, 0.4, 0.8)) << e;
  }
  const double most = std::numeric_limits<double>::max();
  EXPECT_EQ(V(most, 0, 5e-324).length(), most);
  EXPECT_NEAR(V(most, most, most).normalized().x, std::sqrt(1 / 3.0), 1e-15);
  EXPECT_TRUE(std::isinf(V(most, most, most).length()) && std::isnan(V(most, 0, NAN).length()));
}

TEST(Math, DegenerateValuesHaveTheirOwnRules) {
  EXPECT_EQ(V(-0.0, 0, 0).normalized(), V(0, 1, 0));
  EXPECT_EQ(Q(0, 0, 0, 0).normalized(), Q());
  EXPECT_EQ(Q::fromRotationVector({}), Q());
  // Components that sum to exactly 0 leave the axis at its length.
  const double h = std::sqrt(2.0) / 2;
  EXPECT_EQ(Q::fromRotationVector({1, -1, 0}), Q(std::sin(h), -std::sin(h), 0, std::cos(h)));
  EXPECT_NEAR(Q::fromRotationVector({1, -1, 0.001}).length(), 1.0, 1e-15);

  Q flipped(0.6, 0, 0, -0.8);
  EXPECT_NEAR(flipped.toRotationVector().x, -2 * std::acos(0.8), 1e-15);
  EXPECT_EQ(flipped, Q(-0.6, 0, 0, 0.8));
  EXPECT_EQ(Q(0, 0, 0, 1.0000001).toRotationVector(), V());

  M projective;
  projective[3] = 1.0;  // the divisor is x + 1
  EXPECT_EQ(projective.transformPoint({1, 2, 3}), V(0.5, 1, 1.5));
  EXPECT_EQ(projective.transformPoint({-1, 2, 3}), V(-1, 2, 3));
}

TEST(Math, InversesUndoTheirPartOfATransform) {
  for (int i = 0; i < 100; ++i) {
    M m;
    for (int r = 0; r < 3; ++r) m.setAxisRow(r, anyVector() + V(r == 0, r == 1, r == 2) * 3.0);
    m.setTranslation(anyVector());
    EXPECT_LT(distance(m.affineInverse() * m, M()), 1e-14);
    EXPECT_EQ(m.inverse3x3().translation(), V());
  }
  M flat;
  flat[5] = 0.0;
  flat.setTranslation({1, 2, 3});
  for (const M& inverse : {flat.inverse3x3(), flat.affineInverse()})
    for (int i = 0; i < 16; ++i) EXPECT_EQ(inverse[i], 0.0);
}
