#include "plugins/release/splinespeedcontroller/RailMeshes.h"

#include "plugins/common/MeshParts.h"
#include "util/CMesh_Box.h"

namespace orv::rws::addon {

using util::CMesh;
using util::CMesh_Box;
using Vector = util::Vector3<double>;

namespace {

/// Size of a marker, as a part of the distance between two points.
constexpr double kMarkerSize = 0.2 / 6;

/// Four faces around `centre`, seen from outside.
CMesh Marker(const Vector& centre, double size) {
  CMesh mesh;
  for (const Vector& corner :
       {Vector(1, 1, 1), Vector(1, -1, -1), Vector(-1, 1, -1), Vector(-1, -1, 1)})
    mesh.vertices.push_back(centre + corner * (size / 2));
  mesh.faces = {0, 1, 2, 0, 3, 1, 0, 2, 3, 1, 3, 2};
  return mesh;
}

/// A point at `tip` over a square of half width `half` in the plane through the origin across it.
CMesh Spike(const Vector& tip, const Vector& side, double half) {
  const Vector a = side * half, b = tip.normalized().cross(side) * half;
  CMesh mesh;
  mesh.vertices = {tip, a + b, b - a, -a - b, a - b};
  mesh.faces = {0, 1, 2, 0, 2, 3, 0, 3, 4, 0, 4, 1, 1, 3, 2, 1, 4, 3};
  return mesh;
}

}  // namespace

CMesh CarriageMesh() {
  return JoinedMesh({CMesh_Box(0.3, 0.1, 0.5), CMesh_Box(0.1, 0.06, 0.12, {0, 0.02, -0.31}),
                     CMesh_Box(0.04, 0.12, 0.04, {0, 0.11, 0.1})});
}

CMesh ReferenceFrameMesh() {
  return JoinedMesh({CMesh_Box(1.0, 0.02, 0.02, {0.5, 0, 0}),
                     CMesh_Box(0.02, 1.0, 0.02, {0, 0.5, 0}),
                     CMesh_Box(0.02, 0.02, 1.0, {0, 0, 0.5})});
}

CMesh DownDirectionMesh() {
  CMesh mesh = JoinedMesh({CMesh_Box(0.03, 0.5, 0.03, {0, -0.25, 0})});
  CMesh head = Spike({0, -0.2, 0}, {1, 0, 0}, 0.08);
  for (Vector& vertex : head.vertices) vertex.y -= 0.5;
  AppendMesh(mesh, head);
  return mesh;
}

CMesh WaypointMesh() {
  return JoinedMesh({Spike({0, 0.2, 0}, {1, 0, 0}, 0.12), Spike({0, -0.2, 0}, {1, 0, 0}, 0.12)});
}

CMesh TargetMesh() {
  return JoinedMesh(
      {CMesh_Box(0.3, 0.03, 0.03), CMesh_Box(0.03, 0.3, 0.03), CMesh_Box(0.03, 0.03, 0.3)});
}

CMesh CurveMesh(const std::vector<Vector>& points) {
  const double size = points.size() > 2 ? (points[2] - points[1]).length() * kMarkerSize : 0.0;
  CMesh mesh;
  for (const Vector& point : points) AppendMesh(mesh, Marker(point, size));
  return mesh;
}

}  // namespace orv::rws::addon
