// A tree over a stored ground mesh.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "util/Vector3.h"

namespace orv::util {
class CMesh;
}

namespace orv::rws::addon {

/// A box of a mesh, in the mesh's own space, that is divided where that separates its triangles. A
/// node with children holds no triangles; a triangle that crosses a cell's border lives in each
/// cell that it touches.
class MeshOctreeNode {
 public:
  using Vector = util::Vector3<double>;
  using Triangle = std::array<Vector, 3>;

  MeshOctreeNode() = default;
  /// Builds the whole tree. Triangles with a vertex that is not finite or outside the mesh are left
  /// out.
  explicit MeshOctreeNode(const util::CMesh& mesh);

  bool IsEmpty() const { return m_triangles.empty() && m_children.empty(); }

  /// The first triangle in storage order that the LINE through `origin` along `direction` (unit)
  /// meets; `distance` is negative for one behind the origin. Neither the sign nor the nearest hit
  /// is looked for: a vehicle below a stored surface is to be lifted onto it. `normal` is that of
  /// the winding.
  bool Intersect(const Vector& origin, const Vector& direction, double& distance,
                 Vector& normal) const;

 private:
  struct Cell {
    Vector low, high;
  };

  bool LineMeetsBox(const Vector& origin, const Vector& direction) const;
  bool IntersectTriangles(const Vector& origin, const Vector& direction, double& distance,
                          Vector& normal) const;
  void Split();
  std::vector<Cell> Divide() const;
  static bool Touches(const Triangle& triangle, const Cell& cell);

  Vector m_low, m_high;
  std::vector<std::unique_ptr<MeshOctreeNode>> m_children;
  std::vector<Triangle> m_triangles;
};

}  // namespace orv::rws::addon
