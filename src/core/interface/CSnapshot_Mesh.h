// Geometry of a node at one time.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/interface/CExtendable.h"
#include "util/Box.h"
#include "util/CMesh.h"
#include "util/Vector3.h"

namespace orv::rws {

/// Closest hit of a ray with a mesh. World space.
struct RayHit {
  util::Vector3<double> point;
  util::Vector3<double> normal;  ///< unit, of the triangle's winding
  double distance = 0.0;         ///< from the ray's origin, along the unit direction (m)
  int triangle = -1;             ///< index into the triangulated faces
};

/// Extension codes that a CSnapshot_Mesh answers.
enum MeshExtension : int {
  kMeshExtent = 65,  ///< adds the mesh to the MeshExtent in `a` without a copy of it: 1
};

/// How many triangles a mesh has, and where, in its own space.
struct MeshExtent {
  util::Box box;  ///< round the vertices that are finite
  std::int64_t triangles = 0;

  void Add(const util::CMesh& mesh) {
    triangles += static_cast<std::int64_t>(mesh.faces.size() / 3);
    for (const util::Vector3<double>& v : mesh.vertices)
      if (std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z)) box.add(v);
  }
};

/// Reads the geometry of a mesh node.
class CSnapshot_Mesh : public CExtendable {
 public:
  /// Makes sure that the host mesh is in triangles.
  virtual void Triangulate() = 0;
  /// The mesh in the node's own space, by value.
  virtual util::CMesh GetMesh() = 0;
  /// Closest hit of the ray from `origin` along `direction` (need not be unit), not farther than
  /// `maxDistance` (m). Both sides of a triangle count. False when nothing is hit.
  virtual bool Intersect(const util::Vector3<double>& origin,
                         const util::Vector3<double>& direction, double maxDistance,
                         RayHit& hit) = 0;
  ~CSnapshot_Mesh() override = default;
};

}  // namespace orv::rws
