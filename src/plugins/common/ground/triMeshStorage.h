// The collision shape of one ground surface.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "util/Vector3.h"

class btCollisionShape;
class btTriangleIndexVertexArray;

namespace orv::util {
class CMesh;
}

namespace orv::rws::addon {

/// Whether a surface is moved during a take.
enum class SurfaceMotion { kFixed, kMoving };

/// Triangles in the layout that Bullet reads in place, and the shape over them. Fixed surfaces are
/// a triangle mesh with its tree, moving ones the convex hull of it.
class triMeshStorage {
 public:
  /// `mesh` in the surface's own space, stretched by `scale`. Triangles that are not finite, or
  /// point outside the mesh, are left out.
  triMeshStorage(const util::CMesh& mesh, const util::Vector3<double>& scale, SurfaceMotion motion);
  triMeshStorage(const triMeshStorage&) = delete;
  triMeshStorage& operator=(const triMeshStorage&) = delete;
  virtual ~triMeshStorage();

  /// Null for a mesh without triangles.
  virtual btCollisionShape* GetShape() const;
  /// Product of the three extents of the shape's box (m³): 0 for a flat surface.
  double GetExtent() const { return m_extent; }

 private:
  static constexpr int kIndexStride = 12;
  static constexpr int kVertexStride = 32;

  std::unique_ptr<btTriangleIndexVertexArray> m_array;
  std::vector<std::array<double, 4>> m_vertices;
  std::vector<std::int32_t> m_indices;
  std::unique_ptr<btCollisionShape> m_shape;
  double m_extent = 0.0;
};

}  // namespace orv::rws::addon
