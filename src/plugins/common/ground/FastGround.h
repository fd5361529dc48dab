// The ground that rays meet without the host.
#pragma once

#include <memory>
#include <vector>

#include "plugins/common/ground/CollisionObjects.h"

class btDefaultVehicleRaycaster;

namespace orv::rws::addon {

/// Triangles near one wheel, in world space: rays that can't leave that neighbourhood need not walk
/// the trees of the whole ground.
class NearGround {
 public:
  using Vector = util::Vector3<double>;

  void Clear() { m_triangles.clear(); }
  void Add(const Vector& a, const Vector& b, const Vector& c);
  bool IsEmpty() const { return m_triangles.empty(); }
  /// Closest hit of a ray with a unit direction that ends within the neighbourhood.
  bool Cast(const Vector& origin, const Vector& direction, double length, double& distance,
            Vector& normal) const;

 private:
  struct Triangle {
    Vector corner[3];
    Vector normal;  ///< not unit
  };
  std::vector<Triangle> m_triangles;
};

/// A Bullet world that exists for ray tests alone. Surfaces stand as they do at the take's start.
/// World space.
class FastGround {
 public:
  using Vector = util::Vector3<double>;

  /// Null when the world can't be created. `gravity` in m/s².
  static std::unique_ptr<FastGround> Create(double gravity);
  FastGround(const FastGround&) = delete;
  FastGround& operator=(const FastGround&) = delete;
  ~FastGround();

  /// Takes a surface in; one that is not solid is dropped.
  void Add(std::unique_ptr<CollisionObjects> surface);
  /// Closest hit within `length` (m) along the unit `direction`, with the unit normal.
  bool CastRay(const Vector& origin, const Vector& direction, double length, double& distance,
               Vector& normal) const;
  /// Replaces what is in `out` by the triangles that reach into the cube of half size `reach`.
  void Gather(const Vector& centre, double reach, NearGround& out) const;

 private:
  struct World;
  FastGround();

  std::unique_ptr<World> m_world;
  std::vector<std::unique_ptr<CollisionObjects>> m_surfaces;
};

}  // namespace orv::rws::addon
