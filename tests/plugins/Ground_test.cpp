// The stored ground's tree, against every triangle in turn, and the shapes of the fast caster.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "plugins/common/ground/GroundShapePool.h"
#include "plugins/common/ground/MeshOctreeNode.h"
#include "plugins/common/ground/triMeshStorage.h"
#include "support/Grounds.h"

namespace orv::rws::addon {
namespace {

using util::CMesh;
using Vector = util::Vector3<double>;

CMesh Terrain(int n, const tests::Height& height) {
  return tests::GridMesh(height, tests::Rows(0, n, n), tests::Rows(0, n, n));
}
double Waves(double x, double z) {
  return std::sin(x * 0.4) + std::cos(z * 0.3);
}

struct Hit {
  double distance;
  Vector normal;
};
/// All that a line meets, in storage order, by Cramer's rule on the whole matrix.
std::vector<Hit> MeetAll(const CMesh& mesh, const Vector& p, const Vector& d) {
  std::vector<Hit> hits;
  for (std::size_t i = 0; i < mesh.faces.size(); i += 3) {
    const Vector& v0 = mesh.vertices[mesh.faces[i]];
    const Vector e1 = mesh.vertices[mesh.faces[i + 1]] - v0,
                 e2 = mesh.vertices[mesh.faces[i + 2]] - v0;
    const auto det = [](const Vector& a, const Vector& b, const Vector& c) {
      return a.dot(b.cross(c));
    };
    const double whole = det(e1, e2, -d);
    if (whole == 0.0) continue;
    const double u = det(p - v0, e2, -d) / whole, v = det(e1, p - v0, -d) / whole;
    if (u < 0.0 || v < 0.0 || u + v >= 1.0) continue;
    hits.push_back({det(e1, e2, p - v0) / whole, e1.cross(e2).normalized()});
  }
  return hits;
}

TEST(Ground, TheTreeFindsWhatEveryTriangleInTurnWouldWhereALineMeetsOne) {
  const CMesh mesh = Terrain(40, Waves);
  const MeshOctreeNode tree(mesh);
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  int met = 0, missed = 0;
  for (int i = 0; i < 4000; ++i) {
    const Vector p(unit(random) * 44 - 2, unit(random) * 8 - 4, unit(random) * 44 - 2);
    Vector d(0, i % 2 ? 1 : -1, 0);
    if (i % 4 < 2) d = Vector(unit(random) - 0.5, -0.6, unit(random) - 0.5).normalized();
    const auto all = MeetAll(mesh, p, d);
    double distance = 0.0;
    Vector normal;
    ASSERT_EQ(tree.Intersect(p, d, distance, normal), !all.empty()) << i;
    if (all.empty()) ++missed;
    if (all.size() != 1) continue;
    // Meant: hits behind the origin count as well.
    ASSERT_NEAR(distance, all[0].distance, 1e-9) << i;
    ASSERT_LT((normal - all[0].normal).length(), 1e-9);
    met += distance < 0.0;
  }
  EXPECT_GT(met, 500);
  EXPECT_GT(missed, 100);
}

TEST(Ground, ALeafTakesItsFirstTriangleInStorageOrderAndNeitherTheNearestNorTheFarSide) {
  CMesh mesh;  // three floors, one below the other but stored middle, top, bottom: one leaf
  for (const double y : {2.0, 5.0, 0.0}) {
    const int first = static_cast<int>(mesh.vertices.size());
    for (const auto& [x, z] : {std::pair{0.0, 0.0}, {0.0, 4.0}, {4.0, 0.0}})
      mesh.vertices.push_back({x, y, z});
    for (int k = 0; k < 3; ++k) mesh.faces.push_back(first + k);
  }
  const MeshOctreeNode tree(mesh);
  double distance = 0.0;
  Vector normal;
  for (const auto& [from, expected] :
       {std::pair{10.0, 8.0}, {3.0, 1.0}, {1.0, -1.0}, {-5.0, -7.0}}) {
    ASSERT_TRUE(tree.Intersect({1, from, 1}, {0, -1, 0}, distance, normal));
    EXPECT_DOUBLE_EQ(distance, expected);
    EXPECT_EQ(normal, Vector(0, 1, 0));
  }
  // u + v of exactly 1 is outside, u or v of exactly 0 inside.
  EXPECT_FALSE(tree.Intersect({2, 9, 2}, {0, -1, 0}, distance, normal));
  EXPECT_TRUE(tree.Intersect({0, 9, 2}, {0, -1, 0}, distance, normal));
  EXPECT_TRUE(tree.Intersect({2, 9, 0}, {0, -1, 0}, distance, normal));
  EXPECT_FALSE(tree.Intersect({1, 9, 1}, {1, 0, 0}, distance, normal)) << "along the floors";
}

TEST(Ground, ATreeOverTrianglesThatCannotBeDividedEnds) {
  CMesh mesh;  // a thousand triangles on one spot, and one that is damaged
  for (int i = 0; i < 1000; ++i)
    for (const Vector& v : {Vector(0, 0.001 * i, 0), Vector(0, 0, 1), Vector(1, 0, 0)}) {
      mesh.faces.push_back(static_cast<int>(mesh.vertices.size()));
      mesh.vertices.push_back(v);
    }
  for (const int index : {0, 1, 99999}) mesh.faces.push_back(index);
  mesh.vertices[5].y = std::nan("");
  const MeshOctreeNode tree(mesh);
  double distance = 0.0;
  Vector normal;
  ASSERT_TRUE(tree.Intersect({0.2, 5, 0.2}, {0, -1, 0}, distance, normal));
  EXPECT_DOUBLE_EQ(distance, 5.0);
  EXPECT_TRUE(MeshOctreeNode(CMesh()).IsEmpty());
}

TEST(Ground, TheExtentOfAShapeIsItsBoxAndNoneForAFlatOne) {
  const CMesh flat = Terrain(4, [](double, double) { return 3.0; });
  EXPECT_EQ(triMeshStorage(flat, {1, 1, 1}, SurfaceMotion::kFixed).GetExtent(), 0.0);
  const CMesh slope = Terrain(4, [](double x, double) { return x; });
  const double extent = triMeshStorage(slope, {1, 2, 3}, SurfaceMotion::kFixed).GetExtent();
  EXPECT_NEAR(extent, 4.0 * 8.0 * 12.0, 1.0);
  EXPECT_EQ(triMeshStorage(CMesh(), {1, 1, 1}, SurfaceMotion::kFixed).GetShape(), nullptr);
  GroundShapePool pool;
  const auto shape = pool.Get(slope, {1, 1, 1});
  EXPECT_EQ(pool.Get(slope, {1, 1, 1}), shape);
  EXPECT_NE(pool.Get(slope, {1, 1, 2}), shape);
  EXPECT_NE(pool.Get(flat, {1, 1, 1}), shape);
}

}  // namespace
}  // namespace orv::rws::addon
