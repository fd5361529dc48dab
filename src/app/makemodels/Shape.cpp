#include "Shape.h"

#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "util/Angles.h"

namespace orv::app {

namespace {

using Vector = Shape::Vector;

/// Cosine of the angle between two faces from which on their edge is seen.
constexpr double kCrease = 0.8;

}  // namespace

void Shape::Triangle(int material, const Vector& a, const Vector& b, const Vector& c) {
  if (!((b - a).cross(c - a).length() > 1e-9)) return;
  m_corners.insert(m_corners.end(), {a, b, c});
  m_materials.push_back(material);
}

void Shape::Face(int material, const std::vector<Vector>& corners) {
  for (std::size_t i = 2; i < corners.size(); ++i)
    Triangle(material, corners[0], corners[i - 1], corners[i]);
}

void Shape::Loft(int material, const std::vector<std::vector<Vector>>& rings, bool closed,
                 bool ends) {
  for (std::size_t r = 1; r < rings.size(); ++r) {
    const std::vector<Vector>& a = rings[r - 1];
    const std::vector<Vector>& b = rings[r];
    const std::size_t count = closed ? a.size() : a.size() - 1;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t k = (i + 1) % a.size();
      Triangle(material, a[i], a[k], b[k]);
      Triangle(material, a[i], b[k], b[i]);
    }
  }
  if (!ends) return;
  Face(material, {rings.front().rbegin(), rings.front().rend()});
  Face(material, rings.back());
}

void Shape::Box(int material, const Vector& low, const Vector& high, double bevel) {
  // Four octagons along Z, the outer two smaller by the bevel.
  const auto ring = [&](double z, double inset) {
    const double x0 = low.x + inset, x1 = high.x - inset, y0 = low.y + inset, y1 = high.y - inset;
    const double b = bevel;
    return std::vector<Vector>{{x0 + b, y0, z}, {x1 - b, y0, z}, {x1, y0 + b, z}, {x1, y1 - b, z},
                               {x1 - b, y1, z}, {x0 + b, y1, z}, {x0, y1 - b, z}, {x0, y0 + b, z}};
  };
  Loft(material,
       {ring(low.z, bevel), ring(low.z + bevel, 0.0), ring(high.z - bevel, 0.0),
        ring(high.z, bevel)},
       true, true);
}

void Shape::Turned(int material, const std::vector<std::pair<double, double>>& line,
                   const Vector& centre, bool alongZ, int segments) {
  std::vector<std::vector<Vector>> rings;
  for (const auto& [radius, place] : line) {
    std::vector<Vector> ring;
    for (int i = 0; i < segments; ++i) {
      const double angle = 2.0 * util::kPi * i / segments;
      const double c = radius * std::cos(angle), s = radius * std::sin(angle);
      ring.push_back(centre + (alongZ ? Vector(c, s, place) : Vector(place, c, s)));
    }
    rings.push_back(std::move(ring));
  }
  Loft(material, rings, true, false);
}

void Shape::TurnAboutX(double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  for (Vector& p : m_corners) p = {p.x, c * p.y - s * p.z, s * p.y + c * p.z};
}

void Shape::Add(const Shape& other) {
  m_corners.insert(m_corners.end(), other.m_corners.begin(), other.m_corners.end());
  m_materials.insert(m_materials.end(), other.m_materials.begin(), other.m_materials.end());
}

void Shape::AddMirrored(const Shape& other) {
  const auto mirrored = [](const Vector& v) { return Vector(-v.x, v.y, v.z); };
  for (std::size_t i = 0; i < other.m_materials.size(); ++i)
    Triangle(other.m_materials[i], mirrored(other.m_corners[3 * i]),
             mirrored(other.m_corners[3 * i + 2]), mirrored(other.m_corners[3 * i + 1]));
}

std::vector<GltfBuilder::Primitive> Shape::Primitives() const {
  const auto placeOf = [](const Vector& v) {
    return std::array<long, 3>{std::lround(v.x * 1e4), std::lround(v.y * 1e4),
                               std::lround(v.z * 1e4)};
  };
  std::vector<Vector> normals;  // of the faces, as long as twice their area
  std::map<std::array<long, 3>, std::vector<std::size_t>> facesAt;
  for (std::size_t i = 0; i < m_materials.size(); ++i) {
    const Vector* c = &m_corners[3 * i];
    normals.push_back((c[1] - c[0]).cross(c[2] - c[0]));
    for (int k = 0; k < 3; ++k) facesAt[placeOf(c[k])].push_back(i);
  }
  std::map<int, GltfBuilder::Primitive> parts;
  std::map<std::array<long, 7>, std::uint32_t> known;
  for (std::size_t i = 0; i < m_corners.size(); ++i) {
    const std::size_t own = i / 3;
    const Vector flat = normals[own] * (1.0 / normals[own].length());
    Vector normal;
    for (const std::size_t other : facesAt[placeOf(m_corners[i])])
      if (flat.dot(normals[other]) > kCrease * normals[other].length()) normal += normals[other];
    normal = normal * (1.0 / normal.length());
    GltfBuilder::Primitive& part = parts[m_materials[own]];
    part.material = m_materials[own];
    const auto place = placeOf(m_corners[i]);
    const auto turn = placeOf(normal);
    const auto [at, isNew] = known.emplace(
        std::array<long, 7>{place[0], place[1], place[2], turn[0], turn[1], turn[2], part.material},
        static_cast<std::uint32_t>(part.points.size() / 3));
    part.corners.push_back(at->second);
    if (!isNew) continue;
    for (const double n : {m_corners[i].x, m_corners[i].y, m_corners[i].z})
      part.points.push_back(static_cast<float>(n));
    for (const double n : {normal.x, normal.y, normal.z})
      part.normals.push_back(static_cast<float>(n));
  }
  std::vector<GltfBuilder::Primitive> result;
  for (auto& [material, part] : parts) result.push_back(std::move(part));
  return result;
}

}  // namespace orv::app
