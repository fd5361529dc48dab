#include "plugins/release/crawlertracks/TrackMeshes.h"

#include <array>
#include <vector>

#include "plugins/common/MeshParts.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"

namespace orv::rws::addon {

using util::CMesh;
using util::CMesh_Box;
using Vector = util::Vector3<double>;

namespace {

/// A wedge of half width `half` in X from z = 0 to its edge at z = -length.
CMesh Head(double half, double length, double thickness) {
  CMesh mesh;
  const double y = thickness / 2;
  mesh.vertices = {{-half, -y, 0}, {half, -y, 0}, {0, -y, -length},
                   {-half, y, 0},  {half, y, 0},  {0, y, -length}};
  mesh.faces = {0, 2, 1, 3, 4, 5, 0, 1, 4, 0, 4, 3, 1, 2, 5, 1, 5, 4, 2, 0, 3, 2, 3, 5};
  return mesh;
}

CMesh Moved(CMesh mesh, const Vector& by) {
  for (Vector& vertex : mesh.vertices) vertex = vertex + by;
  return mesh;
}

/// Strokes of a letter on a grid of 2 by 4, each from a point to a point.
struct Letter {
  std::vector<std::array<double, 4>> strokes;
};

/// The letters' strokes as flat bars in the plane x = 0, read from -X: -Z is to the right.
void Write(CMesh& mesh, const std::vector<Letter>& word, double size, const Vector& start) {
  constexpr double kAdvance = 3.0, kWeight = 0.6;
  double at = 0.0;
  for (const Letter& letter : word) {
    for (const auto& [x0, y0, x1, y1] : letter.strokes) {
      const Vector from = start + Vector(0, y0, -(at + x0)) * size;
      const Vector to = start + Vector(0, y1, -(at + x1)) * size;
      const Vector way = (to - from).normalized();
      const Vector side = Vector(1, 0, 0).cross(way) * (kWeight * size / 2);
      const Vector deep(kWeight * size / 4, 0, 0);
      CMesh bar;
      for (const Vector& corner : {from - side, from + side, to + side, to - side}) {
        bar.vertices.push_back(corner - deep);
        bar.vertices.push_back(corner + deep);
      }
      bar.faces = {0, 4, 2, 0, 6, 4, 1, 3, 5, 1, 5, 7, 0, 2, 3, 0, 3, 1,
                   2, 4, 5, 2, 5, 3, 4, 6, 7, 4, 7, 5, 6, 0, 1, 6, 1, 7};
      AppendMesh(mesh, bar);
    }
    at += kAdvance;
  }
}

}  // namespace

CMesh CrawlerFrameMesh() {
  return JoinedMesh(
      {CMesh_Box(0.04, 0.02, 2.0, {-0.5, 0, 0}), CMesh_Box(0.04, 0.02, 2.0, {0.5, 0, 0}),
       CMesh_Box(0.96, 0.02, 0.04, {0, 0, -0.98}), CMesh_Box(0.96, 0.02, 0.04, {0, 0, 0.98})});
}

CMesh CrawlerWheelMesh(double radius, double halfWidth) {
  CMesh mesh = util::CMesh_Cylinder(radius, halfWidth * 2, 32, 0);
  for (const double side : {-1.0, 1.0})
    AppendMesh(mesh, CMesh_Box(halfWidth * 0.1, radius * 1.6, radius * 0.2,
                               {side * halfWidth * 1.05, 0, 0}));
  return mesh;
}

CMesh TrackDirectionMesh() {
  CMesh mesh = JoinedMesh({CMesh_Box(0.02, 0.02, 0.6), Moved(Head(0.08, 0.2, 0.02), {0, 0, -0.3})});
  const Letter f{{{0, 0, 0, 4}, {0, 4, 2, 4}, {0, 2, 1.5, 2}}};
  const Letter o{{{0, 0, 2, 0}, {2, 0, 2, 4}, {2, 4, 0, 4}, {0, 4, 0, 0}}};
  const Letter r{{{0, 0, 0, 4}, {0, 4, 2, 4}, {2, 4, 2, 2}, {2, 2, 0, 2}, {0.7, 2, 2, 0}}};
  const Letter w{{{0, 4, 0.5, 0}, {0.5, 0, 1, 3}, {1, 3, 1.5, 0}, {1.5, 0, 2, 4}}};
  const Letter a{{{0, 0, 1, 4}, {1, 4, 2, 0}, {0.5, 1.5, 1.5, 1.5}}};
  const Letter d{{{0, 0, 0, 4},
                  {0, 4, 1.3, 4},
                  {1.3, 4, 2, 2.7},
                  {2, 2.7, 2, 1.3},
                  {2, 1.3, 1.3, 0},
                  {1.3, 0, 0, 0}}};
  Write(mesh, {f, o, r, w, a, r, d}, 0.03, {0, 0.06, 0.3});
  return mesh;
}

CMesh CrawlerGravityMesh() {
  return JoinedMesh(
      {CMesh_Box(0.03, 0.03, 0.4, {0, 0, -0.2}), Moved(Head(0.09, 0.18, 0.09), {0, 0, -0.4})});
}

CMesh TemplateStepMesh() {
  return JoinedMesh(
      {CMesh_Box(0.4, 0.04, 0.18, {0, -0.01, 0}), CMesh_Box(0.4, 0.02, 0.03, {0, 0.02, 0})});
}

}  // namespace orv::rws::addon
