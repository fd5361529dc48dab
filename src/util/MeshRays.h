// Closest hits of rays with a triangle mesh.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "util/Box.h"
#include "util/Simd.h"
#include "util/Vector3.h"

namespace orv::util {

class CMesh;

/// A bounding volume hierarchy over the triangles of one mesh, in the mesh's own space. It is built
/// where rays go: regions that none has entered stay lists of triangles, so that the first ray
/// costs two or three looks at the mesh and not a sort of it. Rays therefore come from one thread.
/// Triangles without area, with an index outside the mesh or a vertex that is not finite never
/// count. Results do not depend on the shape of the tree: of several triangles hit at one distance
/// (a ray through an edge) the one with the lowest index wins.
///
/// After published methods: the surface area heuristic (MacDonald and Booth, "Heuristics for ray
/// tracing using space subdivision", 1990) over binned centroids (Wald, "On fast construction of
/// SAH-based bounding volume hierarchies", 2007); the test of a box by its slabs (Kay and Kajiya,
/// "Ray tracing complex scenes", 1986), widened by its rounding (Ize, "Robust BVH ray traversal",
/// 2013); and the test of a triangle of Woop, Benthin and Wald, "Watertight ray/triangle
/// intersection", 2013, all of it in double precision, where a ray exactly through an edge hits
/// both triangles. Watertight as theirs is: the bounds in single precision are rounded outwards,
/// and two triangles test a shared edge by the same products. The grid above large meshes, growth
/// where rays go and the places of short rays are our own.
class MeshRays {
 public:
  struct Hit {
    double t = 0.0;     ///< distance from the origin in lengths of the direction
    int triangle = -1;  ///< index into the mesh's faces
    Vector3<double> point;
    /// Two edges of the triangle; their cross product points along the winding's normal.
    Vector3<double> edge1, edge2;
  };

  /// Holds the mesh, which nobody changes.
  explicit MeshRays(std::shared_ptr<const CMesh> mesh);

  /// Closest hit of origin + t * direction with t in [0, maxT]. The direction need not be unit.
  /// Both sides of a triangle count, and no ray passes between two triangles that share an edge.
  bool intersect(const Vector3<double>& origin, const Vector3<double>& direction, double maxT,
                 Hit& hit) const;

  int triangleCount() const { return static_cast<int>(m_order.size()); }

 private:
  /// Two children of one node, side by side so that a ray tests both at once, on one cache line.
  /// Bounds in single precision, rounded outwards; a child that is not there has an empty box.
  struct alignas(64) Pair {
    float bound[2][3][2];   ///< low and high, by axis, of each child
    std::int32_t first[2];  ///< the child's own pair, the first triangle of a leaf, or a region
    std::int32_t count[2];  ///< triangles of a leaf, 0 for an inner node, below 0 for a region
  };
  static_assert(sizeof(Pair) == 64);

  struct Triangle {
    Vector3<double> corner[3];
    std::int32_t index;
  };
  /// Triangles that are not sorted yet, and the place in the tree that waits for them.
  struct Region {
    std::int32_t begin, end;  ///< of m_order
    std::int32_t pair, side;
    int depth;
  };

  /// Planes of two triangles, by which a ray that can't hit these is told at once.
  struct Planes {
    DoublePair normal[3];      ///< unit
    DoublePair offset;         ///< distance of the plane from the mesh's origin
    DoublePair room;           ///< a ray that stays farther away from the plane than this misses
    std::int32_t triangle[2];  ///< twice the same where there is no other
  };

  /// A neighbourhood in which many short rays follow each other, as those of a wheel do, and what
  /// reaches into it: its rays need not come down from the root.
  struct Place {
    static constexpr int kMostNodes = 6, kMostPlanes = 16;
    Box inner;              ///< rays within it may use what is noted here; empty at first
    double shortest = 0.0;  ///< rays below that are worth a smaller place
    int count = 0;          ///< of the nodes
    std::int32_t pair[kMostNodes], side[kMostNodes];
    int planeCount = -1;  ///< below 0 where too many triangles reach in: then the nodes serve
    Planes planes[kMostPlanes];
  };
  /// The surroundings of the latest ray that found no place.
  struct Seen {
    Box box;
    double shortest = 0.0;
  };

  class Builder;
  struct Ray;
  struct Entry;
  struct Closest;

  void divide(Entry& entry) const;
  bool isInPlace(const Vector3<double>& origin, const Vector3<double>& way) const;
  bool makePlace(const Vector3<double>& origin, const Vector3<double>& way) const;
  void fillPlace() const;
  void findPlanes(const Box& box) const;
  Planes planesOf(std::int32_t first, std::int32_t second, const Box& box) const;
  unsigned crossPlanes(const Vector3<double>& origin, const Vector3<double>& way) const;
  static bool hitTriangle(const Ray& ray, const Triangle& triangle, double& t);
  void look(const Ray& ray, std::int32_t triangle, Closest& closest) const;
  void walk(const Ray& ray, bool inPlace, Closest& closest) const;

  std::shared_ptr<const CMesh> m_mesh;
  // Grow where rays go.
  mutable std::vector<Pair> m_pairs;  ///< the root alone in the first; empty without triangles
  mutable std::vector<Triangle> m_triangles;  ///< of the sorted leaves
  mutable std::vector<Region> m_regions;
  mutable Place m_place;
  mutable Seen m_seen;
  mutable std::vector<std::int32_t> m_order;  ///< usable triangles, region by region
};

}  // namespace orv::util
