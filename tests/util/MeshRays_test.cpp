#include "util/MeshRays.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <random>

#include "util/CMesh.h"

namespace orv::tests {
namespace {

using util::CMesh;
using util::MeshRays;
using Vec = util::Vector3<double>;

/// Distance of the plane's hit when it lies inside all three edges; an independent formula.
std::optional<double> HitByBarycentrics(const Vec& a, const Vec& b, const Vec& c, const Vec& origin,
                                        const Vec& direction) {
  const Vec e1 = b - a, e2 = c - a, p = direction.cross(e2);
  const double determinant = e1.dot(p);
  if (determinant == 0.0 || !std::isfinite(determinant)) return {};
  const Vec s = origin - a, q = s.cross(e1);
  const double u = s.dot(p) / determinant, v = direction.dot(q) / determinant;
  const double t = e2.dot(q) / determinant;
  if (u < 0.0 || v < 0.0 || u + v > 1.0 || t < 0.0) return {};
  return t;
}

std::optional<double> BruteForce(const CMesh& mesh, const Vec& origin, const Vec& direction,
                                 double maxT) {
  std::optional<double> best;
  for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
    const auto t = HitByBarycentrics(mesh.vertices[mesh.faces[i]], mesh.vertices[mesh.faces[i + 1]],
                                     mesh.vertices[mesh.faces[i + 2]], origin, direction);
    if (t && *t <= maxT && (!best || *t < *best)) best = t;
  }
  return best;
}

/// Hills over a grid of `n` by `n` quads, one metre each.
CMesh Hills(int n) {
  CMesh mesh;
  for (int z = 0; z <= n; ++z)
    for (int x = 0; x <= n; ++x)
      mesh.vertices.push_back({double(x), std::sin(0.7 * x) * std::cos(0.4 * z), double(z)});
  for (int z = 0; z < n; ++z)
    for (int x = 0; x < n; ++x) {
      const int a = z * (n + 1) + x, b = a + 1, c = a + n + 1, d = c + 1;
      mesh.faces.insert(mesh.faces.end(), {a, c, b, b, c, d});
    }
  return mesh;
}

MeshRays RaysOver(CMesh mesh) {
  return MeshRays(std::make_shared<const CMesh>(std::move(mesh)));
}

TEST(MeshRays, AgreesWithEveryTriangleTriedInTurn) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  const auto vec = [&](double size) {
    return Vec{unit(random), unit(random), unit(random)} * size;
  };
  int hits = 0;
  std::uint64_t hash = 0;
  for (const int triangles : {1, 3, 40, 700, 4000}) {
    CMesh soup;
    for (int i = 0; i < triangles; ++i) {
      const Vec centre = vec(10.0);
      const double size = i % 7 == 0 ? 6.0 : 1.0;
      for (int k = 0; k < 3; ++k) {
        soup.faces.push_back(static_cast<int>(soup.vertices.size()));
        soup.vertices.push_back(centre + vec(size));
      }
    }
    const MeshRays rays = RaysOver(soup);
    for (int i = 0; i < 3000; ++i) {
      // The second thousand stays near one place, in which rays begin lower down.
      const Vec origin = i / 1000 == 1 ? vec(1.0) : vec(12.0);
      Vec direction = vec(3.0);
      if (i % 5 == 0) direction[i % 3] = 0.0;
      if (i % 35 == 0) direction[(i + 1) % 3] = 0.0;
      const double maxT = i % 2 ? 4.0 : std::numeric_limits<double>::infinity();
      const auto expected = BruteForce(soup, origin, direction, maxT);
      MeshRays::Hit hit;
      ASSERT_EQ(rays.intersect(origin, direction, maxT, hit), expected.has_value()) << i;
      if (!expected) continue;
      ++hits;
      ASSERT_NEAR(hit.t, *expected, 1e-9 * std::max(1.0, *expected));
      std::uint64_t bits;
      std::memcpy(&bits, &hit.t, sizeof bits);
      hash = (hash ^ bits ^ static_cast<std::uint64_t>(hit.triangle)) * 1099511628211u;
      const Vec& a = soup.vertices[soup.faces[3 * hit.triangle]];
      const Vec normal = hit.edge1.cross(hit.edge2).normalized();
      EXPECT_NEAR(normal.dot(origin + direction * hit.t - a), 0.0, 1e-7);
    }
  }
  EXPECT_GT(hits, 1000);
  EXPECT_EQ(hash, 9076270509425987295u) << "also with ORV_PLAIN_SIMD";
}

/// Short rays follow each other round a wheel, some flat over the ground or through a corner, and
/// now and then a long one from above: to the bit they hit what the triangles alone tell.
TEST(MeshRays, RaysRoundAWheelHitWhatEachTriangleTellsAlone) {
  std::mt19937 random(11);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  constexpr int kQuads = 5;
  int hits = 0, places = 0;
  for (const double far : {0.0, 3000.0})
    for (const double height : {1.0, 1e-9, 0.0}) {
      CMesh mesh = Hills(kQuads);
      for (Vec& vertex : mesh.vertices) vertex = Vec(vertex.x + far, vertex.y * height, vertex.z);
      mesh.vertices.push_back(mesh.vertices[14] + Vec(2.0, 1e-12, 1e-7));  // a sliver
      mesh.faces.insert(mesh.faces.end(), {14, 15, static_cast<int>(mesh.vertices.size()) - 1});
      const MeshRays rays = RaysOver(mesh);
      for (; places % 40 < 39; ++places) {
        const Vec& corner = mesh.vertices[static_cast<std::size_t>(places % 40) * 36 / 40];
        const bool isExact = places % 4 == 0;
        Vec centre = corner + Vec(unit(random), unit(random), unit(random)) * 0.4;
        if (isExact) centre = corner + Vec(0.0, 0.25, 0.0);
        for (int i = 0; i < 24; ++i) {
          const double angle = 0.2618 * i, length = 0.1 + 0.3 * std::abs(unit(random));
          Vec way = Vec(std::sin(angle), -std::cos(angle), i % 3 ? 0.0 : 0.1) * length;
          if (i % 8 == 1) way = Vec(length, (i - 9) * 1e-13, length * unit(random));
          if (isExact && i % 6 == 0) way = corner - centre;
          const Vec from = i % 8 == 1 ? Vec(centre.x, corner.y, centre.z) : centre;
          const double most = i % 12 == 5 ? 900.0 : 1.0;
          double least = most;
          int expected = -1;
          MeshRays::Hit hit;
          for (std::size_t face = 0; face < mesh.faces.size(); face += 3) {
            CMesh one;
            one.vertices = mesh.vertices;
            one.faces.assign(mesh.faces.begin() + face, mesh.faces.begin() + face + 3);
            if (!RaysOver(one).intersect(from, way, least, hit)) continue;
            if (expected >= 0 && hit.t == least) continue;
            least = hit.t;
            expected = static_cast<int>(face / 3);
          }
          const bool isHit = rays.intersect(from, way, most, hit);
          ASSERT_EQ(isHit, expected >= 0) << places << " " << i;
          if (!isHit) continue;
          ++hits;
          ASSERT_EQ(hit.triangle, expected) << places << " " << i;
          ASSERT_EQ(hit.t, least);
        }
      }
      ++places;
    }
  EXPECT_GT(hits, 1000);
}

TEST(MeshRays, LetsNothingThroughWhereTrianglesMeet) {
  const int n = 20;
  const MeshRays rays = RaysOver(Hills(n));
  EXPECT_EQ(rays.triangleCount(), 2 * n * n);
  std::mt19937 random(3);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  MeshRays::Hit hit;
  // Straight and slanted rays exactly at inner vertices and along edges.
  for (int x = 1; x < n; ++x)
    for (int z = 1; z < n; ++z) {
      const Vec vertex{double(x), std::sin(0.7 * x) * std::cos(0.4 * z), double(z)};
      ASSERT_TRUE(rays.intersect({vertex.x, 9.0, vertex.z}, {0, -1, 0}, 20.0, hit));
      EXPECT_NEAR(hit.t, 9.0 - vertex.y, 1e-9);
      ASSERT_TRUE(rays.intersect({vertex.x + 0.5, 9.0, vertex.z}, {0, -3, 0}, 20.0, hit));
      const Vec slant{unit(random) * 0.02, -1.0, unit(random) * 0.02};
      ASSERT_TRUE(rays.intersect(vertex - slant * 5.0, slant, 20.0, hit)) << x << " " << z;
    }
  // A ray through a shared edge tells the lower of the two triangles.
  CMesh quad;
  quad.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};
  quad.faces = {0, 2, 1, 0, 3, 2};
  ASSERT_TRUE(RaysOver(quad).intersect({0.5, 1, 0.5}, {0, -1, 0}, 2.0, hit));
  EXPECT_EQ(hit.triangle, 0);
}

TEST(MeshRays, SkipsTrianglesThatAreNone) {
  CMesh mesh = Hills(2);
  const std::size_t good = mesh.faces.size() / 3;
  mesh.vertices.push_back({std::nan(""), 0, 0});
  mesh.vertices.push_back({0, std::numeric_limits<double>::infinity(), 0});
  const int bad = static_cast<int>(mesh.vertices.size());
  mesh.faces.insert(mesh.faces.end(), {0, 1, bad - 1, 0, 1, bad - 2, 0, 0, 1, 0, 1, bad, -1, 0, 1});
  const MeshRays rays = RaysOver(mesh);
  EXPECT_EQ(rays.triangleCount(), static_cast<int>(good));
  MeshRays::Hit hit;
  EXPECT_TRUE(rays.intersect({0.3, 5, 0.3}, {0, -1, 0}, 9.0, hit));
  EXPECT_FALSE(rays.intersect({0.3, 5, std::nan("")}, {0, -1, 0}, 9.0, hit));
  EXPECT_FALSE(rays.intersect({0.3, 5, 0.3}, {0, 0, 0}, 9.0, hit));
  EXPECT_FALSE(rays.intersect({0.3, 5, 0.3}, {0, -1, 0}, -1.0, hit));
  EXPECT_FALSE(RaysOver(CMesh()).intersect({0, 5, 0}, {0, -1, 0}, 9.0, hit));
  // Many triangles in one place can't be told apart by their centres.
  CMesh pile = Hills(1);
  for (int i = 0; i < 200; ++i) pile.faces.insert(pile.faces.end(), {0, 2, 1});
  ASSERT_TRUE(RaysOver(pile).intersect({0.1, 5, 0.1}, {0, -1, 0}, 9.0, hit));
  EXPECT_EQ(hit.triangle, 0);
}

}  // namespace
}  // namespace orv::tests
