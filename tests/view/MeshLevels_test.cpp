// Levels of meshes against the meshes, and which of them a picture takes.
#include "app/studio/view/packet/MeshLevels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "app/studio/view/packet/LevelChoice.h"
#include "app/studio/view/packet/ViewCamera.h"
#include "util/CMesh.h"
#include "util/MeshRays.h"

namespace orv::tests {

namespace {

using namespace app::view;
using Indices = std::vector<std::uint32_t>;

/// A square of 40 m with waves so high, on the plane of X and Z.
MeshData Sheet(int side, double wave) {
  util::CMesh mesh;
  for (int z = 0; z <= side; ++z)
    for (int x = 0; x <= side; ++x)
      mesh.vertices.emplace_back(40.0 * x / side, wave * std::sin(0.1 * x) * std::cos(0.13 * z),
                                 40.0 * z / side);
  for (std::int32_t z = 0; z < side; ++z)
    for (std::int32_t x = 0; x < side; ++x) {
      const std::int32_t a = z * (side + 1) + x, c = a + side + 1;
      mesh.faces.insert(mesh.faces.end(), {a, c, a + 1, a + 1, c, c + 1});
    }
  return MakeMeshData(mesh);
}

std::shared_ptr<const MeshLevels> MakeLevels(const std::shared_ptr<const MeshData>& mesh) {
  LevelMaker maker(mesh);
  while (maker.Work()) {
  }
  return maker.Take();
}

Indices Cut(const MeshLevels& levels, const MeshLevels::Range& range) {
  const auto begin = levels.indices.begin() + range.first;
  return {begin, begin + range.count};
}

std::multiset<std::array<std::uint32_t, 3>> Triangles(const Indices& indices) {
  std::multiset<std::array<std::uint32_t, 3>> triangles;
  for (std::size_t i = 0; i < indices.size(); i += 3) {
    std::array<std::uint32_t, 3> corners{indices[i], indices[i + 1], indices[i + 2]};
    std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()), corners.end());
    triangles.insert(corners);
  }
  return triangles;
}

/// Edges with a triangle on one side alone.
std::set<std::pair<std::uint32_t, std::uint32_t>> Border(const Indices& indices) {
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
  for (std::size_t i = 0; i < indices.size(); ++i)
    ++edges[std::minmax(indices[i], indices[i % 3 == 2 ? i - 2 : i + 1])];
  std::set<std::pair<std::uint32_t, std::uint32_t>> border;
  for (const auto& [edge, count] : edges)
    if (count == 1) border.insert(edge);
  return border;
}

/// How far the mesh's vertices, but for those of its edges, lie above or below a level.
double HeightError(const MeshData& mesh, const Indices& indices) {
  auto surface = std::make_shared<util::CMesh>();
  for (const auto& p : mesh.positions) surface->vertices.emplace_back(p[0], p[1], p[2]);
  surface->faces.assign(indices.begin(), indices.end());
  const util::MeshRays rays(surface);
  double most = 0.0;
  for (const auto& p : mesh.positions) {
    if (std::min(p[0], p[2]) < 0.1f || std::max(p[0], p[2]) > 39.9f) continue;
    util::MeshRays::Hit hit;
    EXPECT_TRUE(rays.intersect({p[0], 10.0, p[2]}, {0.0, -1.0, 0.0}, 20.0, hit));
    most = std::max(most, std::abs(hit.point.y - static_cast<double>(p[1])));
  }
  return most;
}

}  // namespace

TEST(MeshLevels, KeepTheShapeAndAllBorders) {
  const auto mesh = std::make_shared<const MeshData>(Sheet(120, 0.5));
  const auto levels = MakeLevels(mesh);
  ASSERT_TRUE(levels);
  EXPECT_EQ(MakeLevels(mesh)->indices, levels->indices) << "the same each time";
  EXPECT_EQ(Triangles(Cut(*levels, levels->whole[0])), Triangles(mesh->indices));
  EXPECT_GT(levels->pieces.size(), 4u);
  EXPECT_LT(levels->whole[4].count, levels->whole[0].count / 8);
  for (std::size_t level = 0; level < MeshLevels::kCount; ++level) {
    const MeshLevels::Range& whole = levels->whole[level];
    EXPECT_LE(HeightError(*mesh, Cut(*levels, whole)), 2.0 * whole.error + 1e-6) << level;
    for (const MeshLevels::Piece& piece : levels->pieces)
      EXPECT_EQ(Border(Cut(*levels, piece.levels[level])), Border(Cut(*levels, piece.levels[0])));
  }
}

TEST(MeshLevels, CountLostColoursAsErrors) {
  MeshData flat = Sheet(60, 0.0), painted = flat;
  for (std::size_t i = 0; i < painted.positions.size(); ++i)
    painted.colours.push_back(i * 7 % 3 ? MeshData::Bytes4{255, 255, 255, 255}
                                        : MeshData::Bytes4{255, 0, 0, 255});
  const auto plain = MakeLevels(std::make_shared<const MeshData>(flat));
  const auto coloured = MakeLevels(std::make_shared<const MeshData>(painted));
  ASSERT_TRUE(plain && coloured);
  EXPECT_LT(plain->whole[2].error, 1e-3f);
  EXPECT_GT(coloured->whole[1].error, 0.3f) << "half an edge of what is left";
  EXPECT_FALSE(MakeLevels(std::make_shared<const MeshData>(Sheet(4, 0.1)))) << "too small";
}

TEST(MeshLevels, AreTakenByTheErrorInPixels) {
  const auto mesh = std::make_shared<const MeshData>(Sheet(120, 0.5));
  const auto levels = MakeLevels(mesh);
  FramePacket packet;
  packet.materials.resize(1);
  packet.instances.push_back({{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0}, {}, 1});
  Batch batch;
  batch.mesh = mesh;
  batch.count = 1;
  constexpr int kHeight = 720;
  std::vector<MeshLevels::Range> ranges;
  /// Triangles from this far away.
  const auto count = [&](double distance, double yaw) {
    OrbitEye eye;
    eye.target = {20.0, 0.0, 20.0};
    eye.distance = distance;
    eye.yaw = 0.0;
    util::Matrix<double> pose = eye.GetPose();
    eye = OrbitEye::FromPose(pose, 1e-3);
    eye.yaw += yaw;
    SetEye(packet, eye.GetPose(), {}, 16.0 / 9.0);
    for (int row = 0; row < 3; ++row)
      packet.instances[0].pose[4 * row + 3] = static_cast<float>(-packet.origin[row]);
    LevelChoice(packet, kHeight).Choose(packet.instances.data(), batch, levels.get(), ranges);
    std::size_t triangles = 0;
    for (const auto& range : ranges) triangles += range.count / 3;
    return triangles;
  };
  const std::size_t all = mesh->indices.size() / 3;
  EXPECT_LE(count(5.0, 0.0), all);
  EXPECT_GT(count(30.0, 0.0), all / 6);
  EXPECT_LT(count(300.0, 0.0), all / 8);
  EXPECT_EQ(count(60.0, 3.1), 0u) << "behind the eye";
  std::size_t before = all;
  for (double distance = 40.0; distance < 5000.0; distance *= 1.5) {
    const std::size_t now = count(distance, 0.0);
    EXPECT_LE(now, before) << distance;
    before = now;
  }
}

}  // namespace orv::tests
