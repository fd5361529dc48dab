#include "plugins/common/ground/MeshOctreeNode.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "util/CMesh.h"

namespace orv::rws::addon {

using Vector = MeshOctreeNode::Vector;
using Triangle = MeshOctreeNode::Triangle;

namespace {

/// Triangles below which a node stays whole.
constexpr std::size_t kLeafTriangles = 10;
/// Triangles in both halves over those of the node: beyond this a division duplicates too much.
constexpr double kMostDuplication = 1.1;
/// A half with fewer triangles is no group worth a cell.
constexpr std::size_t kLeastGroup = 3;

bool IsFinitePoint(const Vector& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool IsInside(const Vector& p, const Vector& low, const Vector& high) {
  for (int i = 0; i < 3; ++i)
    if (p[i] < low[i] || p[i] > high[i]) return false;
  return true;
}

/// Whether the segment from `a` to `b` passes through a face of the box.
bool CrossesFace(const Vector& a, const Vector& b, const Vector& low, const Vector& high) {
  for (int axis = 0; axis < 3; ++axis) {
    const double way = b[axis] - a[axis];
    if (way == 0.0) continue;
    for (const double face : {low[axis], high[axis]}) {
      const double t = (face - a[axis]) / way;
      if (t < 0.0 || t > 1.0) continue;
      const Vector at = a + (b - a) * t;
      const int u = (axis + 1) % 3, v = (axis + 2) % 3;
      if (at[u] >= low[u] && at[u] <= high[u] && at[v] >= low[v] && at[v] <= high[v]) return true;
    }
  }
  return false;
}

/// Where the line meets the triangle: P + t D = V0 + u (V1 - V0) + v (V2 - V0).
bool Solve(const Vector& origin, const Vector& direction, const Triangle& triangle, double& t) {
  const Vector e1 = triangle[1] - triangle[0], e2 = triangle[2] - triangle[0];
  const Vector across = direction.cross(e2);
  const double determinant = e1.dot(across);
  if (determinant == 0.0) return false;
  const Vector s = origin - triangle[0];
  const double u = s.dot(across) / determinant;
  const Vector q = s.cross(e1);
  const double v = direction.dot(q) / determinant;
  if (!(u >= 0.0 && v >= 0.0 && u + v < 1.0)) return false;
  t = e2.dot(q) / determinant;
  return true;
}

bool EdgeOfBoxCrosses(const Triangle& triangle, const Vector& low, const Vector& high) {
  for (int axis = 0; axis < 3; ++axis) {
    const int u = (axis + 1) % 3, v = (axis + 2) % 3;
    for (int corner = 0; corner < 4; ++corner) {
      Vector from = low, along{};
      from[u] = corner & 1 ? high[u] : low[u];
      from[v] = corner & 2 ? high[v] : low[v];
      along[axis] = high[axis] - low[axis];
      double t = 0.0;
      if (Solve(from, along, triangle, t) && t >= 0.0 && t <= 1.0) return true;
    }
  }
  return false;
}

}  // namespace

MeshOctreeNode::MeshOctreeNode(const util::CMesh& mesh) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  m_low = {kHuge, kHuge, kHuge};
  m_high = -m_low;
  const auto count = static_cast<std::int32_t>(mesh.vertices.size());
  for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
    Triangle triangle;
    bool good = true;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::int32_t index = mesh.faces[i + k];
      good = good && index >= 0 && index < count;
      if (good) triangle[k] = mesh.vertices[static_cast<std::size_t>(index)];
      good = good && IsFinitePoint(triangle[k]);
    }
    if (!good) continue;
    m_triangles.push_back(triangle);
    for (const Vector& p : triangle) {
      for (int axis = 0; axis < 3; ++axis) {
        m_low[axis] = std::min(m_low[axis], p[axis]);
        m_high[axis] = std::max(m_high[axis], p[axis]);
      }
    }
  }
  Split();
}

bool MeshOctreeNode::Touches(const Triangle& triangle, const Cell& cell) {
  for (int i = 0; i < 3; ++i) {
    const auto [least, most] = std::minmax({triangle[0][i], triangle[1][i], triangle[2][i]});
    if (most < cell.low[i] || least > cell.high[i]) return false;
  }
  for (const Vector& p : triangle)
    if (IsInside(p, cell.low, cell.high)) return true;
  for (std::size_t k = 0; k < 3; ++k)
    if (CrossesFace(triangle[k], triangle[(k + 1) % 3], cell.low, cell.high)) return true;
  return EdgeOfBoxCrosses(triangle, cell.low, cell.high);
}

/// The cells that dividing each axis that is worth it leaves: 1, 2, 4 or 8.
std::vector<MeshOctreeNode::Cell> MeshOctreeNode::Divide() const {
  std::vector<Cell> cells{{m_low, m_high}};
  for (int axis = 0; axis < 3; ++axis) {
    const double middle = m_low[axis] + (m_high[axis] - m_low[axis]) * 0.5;
    Cell first{m_low, m_high}, second{m_low, m_high};
    first.high[axis] = second.low[axis] = middle;
    std::size_t inFirst = 0, inSecond = 0;
    for (const Triangle& triangle : m_triangles) {
      inFirst += Touches(triangle, first);
      inSecond += Touches(triangle, second);
    }
    const double duplication =
        static_cast<double>(inFirst + inSecond) / static_cast<double>(m_triangles.size());
    if (duplication > kMostDuplication || inFirst < kLeastGroup || inSecond < kLeastGroup) continue;
    const std::size_t before = cells.size();
    for (std::size_t i = 0; i < before; ++i) {
      Cell upper = cells[i];
      upper.low[axis] = middle;
      cells[i].high[axis] = middle;
      cells.push_back(upper);
    }
  }
  return cells;
}

void MeshOctreeNode::Split() {
  if (m_triangles.size() < kLeafTriangles) return;
  for (const Cell& cell : Divide()) {
    auto child = std::make_unique<MeshOctreeNode>();
    for (const Triangle& triangle : m_triangles)
      if (Touches(triangle, cell)) child->m_triangles.push_back(triangle);
    if (child->m_triangles.empty()) continue;
    // A cell that holds as much as the node itself would divide for ever.
    if (child->m_triangles.size() >= m_triangles.size()) {
      m_children.clear();
      return;
    }
    child->m_low = cell.low;
    child->m_high = cell.high;
    m_children.push_back(std::move(child));
  }
  m_triangles = {};
  for (auto& child : m_children) child->Split();
}

bool MeshOctreeNode::LineMeetsBox(const Vector& origin, const Vector& direction) const {
  // The slack keeps a line along a border between two cells in both of them.
  const double slack = 1e-12 * ((m_high - m_low).length() + (origin - m_low).length());
  double from = -std::numeric_limits<double>::infinity(), to = -from;
  for (int i = 0; i < 3; ++i) {
    const double low = m_low[i] - slack - origin[i], high = m_high[i] + slack - origin[i];
    if (direction[i] == 0.0) {
      if (low > 0.0 || high < 0.0) return false;
      continue;
    }
    const double a = low / direction[i], b = high / direction[i];
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
  }
  return from <= to;
}

bool MeshOctreeNode::IntersectTriangles(const Vector& origin, const Vector& direction,
                                        double& distance, Vector& normal) const {
  for (const Triangle& triangle : m_triangles) {
    if (!Solve(origin, direction, triangle, distance)) continue;
    normal = (triangle[1] - triangle[0]).cross(triangle[2] - triangle[0]).normalized();
    return true;
  }
  return false;
}

bool MeshOctreeNode::Intersect(const Vector& origin, const Vector& direction, double& distance,
                               Vector& normal) const {
  if (!LineMeetsBox(origin, direction)) return false;
  if (m_children.empty()) return IntersectTriangles(origin, direction, distance, normal);
  for (const auto& child : m_children)
    if (child->Intersect(origin, direction, distance, normal)) return true;
  return false;
}

}  // namespace orv::rws::addon
