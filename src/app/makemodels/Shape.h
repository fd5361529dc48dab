// Modelled parts out of faces.
#pragma once

#include <vector>

#include "app/session/models/GltfBuilder.h"
#include "util/Vector3.h"

namespace orv::app {

/// Triangles of several materials, in metres with Y up; faces are counter-clockwise seen from
/// outside. Edges flatter than the crease are shaded round.
class Shape {
 public:
  using Vector = util::Vector3<double>;

  /// A convex polygon.
  void Face(int material, const std::vector<Vector>& corners);
  /// A box whose edges are cut off by `bevel` (m).
  void Box(int material, const Vector& low, const Vector& high, double bevel);
  /// Quads between rings of equally many points. Rings run counter-clockwise seen from behind the
  /// last one; `closed` ones end at their beginning, and `ends` are convex.
  void Loft(int material, const std::vector<std::vector<Vector>>& rings, bool closed, bool ends);
  /// Turns a line of (radius, place along the axis) about an axis along X (or Z) through `centre`.
  void Turned(int material, const std::vector<std::pair<double, double>>& line,
              const Vector& centre, bool alongZ, int segments);
  /// Turns all that is there about X through the origin (radians).
  void TurnAboutX(double angle);
  /// Adds all of another.
  void Add(const Shape& other);
  /// The same on the other side, with x turned round.
  void AddMirrored(const Shape& other);

  /// A primitive for each material that has faces.
  std::vector<GltfBuilder::Primitive> Primitives() const;
  /// For pictures: three corners after each other, and a material for each three.
  const std::vector<Vector>& GetCorners() const { return m_corners; }
  const std::vector<int>& GetMaterials() const { return m_materials; }

 private:
  void Triangle(int material, const Vector& a, const Vector& b, const Vector& c);

  std::vector<Vector> m_corners;
  std::vector<int> m_materials;
};

}  // namespace orv::app
