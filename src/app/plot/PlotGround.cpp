#include "app/plot/PlotGround.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotData.h"
#include "app/plot/PlotScale.h"
#include "app/plot/PlotSubject.h"
#include "util/CMesh.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::adaptor::headless::SceneNode;
using Vector = util::Vector3<double>;

namespace {

constexpr std::size_t kMostPoints = 3000;  ///< of borders and edges, and again of the heights
constexpr double kSharp = 0.866;     ///< cosine between two faces that make an edge: 30 degrees
constexpr double kSteep = 0.2;       ///< upward part of a normal under which it is a wall
constexpr int kHeights = 12;         ///< lines of equal height from the lowest to the highest
constexpr double kFlat = 0.05;       ///< m of height in which there is nothing to tell
constexpr double kSamePlace = 1e-4;  ///< m within which points of neighbours are one
// Parts of the longer side of the paths.
constexpr double kRoom = 1.0;        ///< how far around them the ground is looked at
constexpr double kShort = 4e-3;      ///< lines below this length are left out
constexpr double kTolerance = 4e-4;  ///< by which a line may be straightened

struct Rectangle {
  double left = HUGE_VAL, right = -HUGE_VAL, back = HUGE_VAL, front = -HUGE_VAL;  ///< x, z (m)

  void Include(const Vector& p) {
    left = std::min(left, p.x), right = std::max(right, p.x);
    back = std::min(back, p.z), front = std::max(front, p.z);
  }
  double LongerSide() const { return std::max(right - left, front - back); }
  bool Meets(const Vector& a, const Vector& b, const Vector& c) const {
    return std::max({a.x, b.x, c.x}) >= left && std::min({a.x, b.x, c.x}) <= right &&
           std::max({a.z, b.z, c.z}) >= back && std::min({a.z, b.z, c.z}) <= front;
  }
};

/// A line between two points, by their numbers, the smaller first.
using Piece = std::pair<std::uint32_t, std::uint32_t>;

/// The triangles of all meshes of the ground that lie around the paths.
class Surface {
 public:
  explicit Surface(const Rectangle& around) : m_around(around) {}

  void Add(const SceneNode& node, double time);
  /// Borders and edges.
  std::vector<Piece> Edges() const;
  /// Where the ground is so high (m); makes the points.
  std::vector<Piece> LevelAt(double height);

  std::vector<Vector> points;
  double low = HUGE_VAL, high = -HUGE_VAL;  ///< heights that there are (m)

 private:
  using Face = std::array<std::uint32_t, 3>;
  struct Side {
    Piece ends;
    std::uint32_t face;
    bool operator<(const Side& other) const {
      return ends != other.ends ? ends < other.ends : face < other.face;
    }
  };
  using Place = std::array<std::int64_t, 3>;
  struct Hash {
    std::size_t operator()(const Place& place) const {
      std::uint64_t hash = 0;
      for (const std::int64_t k : place)
        hash = (hash ^ static_cast<std::uint64_t>(k)) * 0x9E3779B97F4A7C15u;
      return static_cast<std::size_t>(hash ^ hash >> 29);
    }
  };

  std::uint32_t PointAt(const Vector& p);

  const Rectangle& m_around;
  std::vector<Face> m_faces;
  std::vector<Vector> m_normals;  ///< unit, by face
  std::unordered_map<Place, std::uint32_t, Hash> m_places;
};

std::uint32_t Surface::PointAt(const Vector& p) {
  Place place;
  for (int i = 0; i < 3; ++i)
    place[static_cast<std::size_t>(i)] = std::llround(std::clamp(p[i] / kSamePlace, -9e18, 9e18));
  const auto [at, isNew] = m_places.emplace(place, static_cast<std::uint32_t>(points.size()));
  if (isNew) points.push_back(p);
  return at->second;
}

void Surface::Add(const SceneNode& node, double time) {
  const util::CMesh& mesh = *node.GetMesh();
  const util::Matrix<double> pose = node.WorldMatrix(time);
  std::vector<Vector> places;
  places.reserve(mesh.vertices.size());
  for (const Vector& vertex : mesh.vertices) places.push_back(pose.transformPoint(vertex));
  for (std::size_t f = 0; f + 2 < mesh.faces.size(); f += 3) {
    const Vector* corner[3];
    for (std::size_t k = 0; k < 3; ++k)
      corner[k] = &places[static_cast<std::size_t>(mesh.faces[f + k])];
    if (!m_around.Meets(*corner[0], *corner[1], *corner[2])) continue;
    const Vector normal = (*corner[1] - *corner[0]).cross(*corner[2] - *corner[0]);
    if (!(normal.length() > 0.0)) continue;
    m_faces.push_back({PointAt(*corner[0]), PointAt(*corner[1]), PointAt(*corner[2])});
    m_normals.push_back(normal.normalized());
    for (const Vector* p : corner) {
      low = std::min(low, p->y);
      high = std::max(high, p->y);
    }
  }
}

std::vector<Piece> Surface::Edges() const {
  std::vector<Side> sides;
  sides.reserve(3 * m_faces.size());
  for (std::size_t f = 0; f < m_faces.size(); ++f)
    for (std::size_t k = 0; k < 3; ++k)
      sides.push_back(
          {std::minmax({m_faces[f][k], m_faces[f][(k + 1) % 3]}), static_cast<std::uint32_t>(f)});
  std::sort(sides.begin(), sides.end());
  std::vector<Piece> edges;
  for (std::size_t i = 0, next = 0; i < sides.size(); i = next) {
    while (next < sides.size() && sides[next].ends == sides[i].ends) ++next;
    const Vector& a = m_normals[sides[i].face];
    const Vector& b = m_normals[sides[next - 1].face];
    // Faces whose corners run round in different ways still make one plane.
    const bool sharp = std::abs(a.dot(b)) < kSharp;
    const bool rim = a.dot(b) > 0.0 && a.y * b.y < 0.0;
    if (next - i == 1 || sharp || rim) edges.push_back(sides[i].ends);
  }
  return edges;
}

std::vector<Piece> Surface::LevelAt(double height) {
  std::map<Piece, std::uint32_t> crossings;  // by the side that is crossed
  std::vector<Piece> pieces;
  for (std::size_t f = 0; f < m_faces.size(); ++f) {
    if (std::abs(m_normals[f].y) < kSteep) continue;
    std::uint32_t ends[3];
    int count = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      const Piece side = std::minmax({m_faces[f][k], m_faces[f][(k + 1) % 3]});
      const Vector a = points[side.first], b = points[side.second];
      if ((a.y < height) == (b.y < height)) continue;
      const auto [at, isNew] = crossings.emplace(side, static_cast<std::uint32_t>(points.size()));
      if (isNew) points.push_back(a + (b - a) * ((height - a.y) / (b.y - a.y)));
      ends[count++] = at->second;
    }
    if (count == 2) pieces.push_back(std::minmax({ends[0], ends[1]}));
  }
  return pieces;
}

/// A chain of pieces seen from above.
struct Outline {
  std::vector<Vector> points;
  double length = 0.0;  ///< m
};

/// Puts pieces together as far as each point has two; what is left over are loops.
std::vector<Outline> Chained(const std::vector<Vector>& points, const std::vector<Piece>& pieces) {
  std::map<std::uint32_t, std::vector<std::size_t>> at;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    at[pieces[i].first].push_back(i);
    at[pieces[i].second].push_back(i);
  }
  std::vector<bool> used(pieces.size(), false);
  std::vector<Outline> outlines;
  const auto walk = [&](std::uint32_t from, std::size_t piece) {
    Outline outline;
    outline.points.push_back(points[from]);
    while (!used[piece]) {
      used[piece] = true;
      from = pieces[piece].first == from ? pieces[piece].second : pieces[piece].first;
      const Vector step = points[from] - outline.points.back();
      outline.length += std::hypot(step.x, step.z);
      outline.points.push_back(points[from]);
      const auto& there = at.at(from);
      if (there.size() == 2) piece = there[there.front() == piece ? 1 : 0];
    }
    outlines.push_back(std::move(outline));
  };
  for (const auto& [point, there] : at)
    for (const std::size_t piece : there)
      if (there.size() != 2 && !used[piece]) walk(point, piece);
  for (std::size_t i = 0; i < pieces.size(); ++i)
    if (!used[i]) walk(pieces[i].first, i);
  return outlines;
}

/// Without the points that lie within `tolerance` (m) of the line between those that are kept.
std::vector<Vector> Straightened(const std::vector<Vector>& points, double tolerance) {
  std::vector<bool> kept(points.size(), false);
  kept.front() = kept.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> open{{0, points.size() - 1}};
  while (!open.empty()) {
    const auto [from, to] = open.back();
    open.pop_back();
    const double dx = points[to].x - points[from].x, dz = points[to].z - points[from].z;
    const double length = std::hypot(dx, dz);
    double most = tolerance;
    std::size_t farthest = from;
    for (std::size_t i = from + 1; i < to; ++i) {
      const double x = points[i].x - points[from].x, z = points[i].z - points[from].z;
      const double off = length > 0.0 ? std::abs(x * dz - z * dx) / length : std::hypot(x, z);
      if (off > most) most = off, farthest = i;
    }
    if (farthest == from) continue;
    kept[farthest] = true;
    open.push_back({from, farthest});
    open.push_back({farthest, to});
  }
  std::vector<Vector> result;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (kept[i]) result.push_back(points[i]);
  return result;
}

/// The longest outlines first, until there are points enough.
void Draw(PlotData& data, std::vector<Outline> outlines, double size, const PlotLine& style) {
  std::stable_sort(outlines.begin(), outlines.end(),
                   [](const Outline& a, const Outline& b) { return a.length > b.length; });
  std::size_t count = 0;
  std::string name = style.name;
  for (const Outline& outline : outlines) {
    if (outline.length < kShort * size) return;
    PlotLine line = style;
    line.points = Straightened(outline.points, kTolerance * size);
    line.name = std::exchange(name, {});
    count += line.points.size();
    if (count > kMostPoints) return;
    data.lines.push_back(std::move(line));
  }
}

/// The meshes of a ground: of a node that has none, those below it, but for rigs and what hangs on
/// them.
void GatherMeshes(const SceneNode& node, std::vector<const SceneNode*>& meshes) {
  if (!node.GetTag().empty() || std::count(meshes.begin(), meshes.end(), &node) > 0) return;
  if (node.HasMesh()) meshes.push_back(&node);
}

void GatherBelow(const SceneNode& node, std::vector<const SceneNode*>& meshes) {
  for (const auto& child : node.GetChildren()) {
    if (!child->GetTag().empty()) continue;
    GatherMeshes(*child, meshes);
    GatherBelow(*child, meshes);
  }
}

std::vector<const SceneNode*> GroundOf(const std::vector<PlotSubject>& subjects) {
  std::vector<const SceneNode*> meshes;
  for (const PlotSubject& subject : subjects) {
    const SceneNode* const gravity = RigNode(*subject.rig, "GravityDirectionMesh");
    const SceneNode* const home = gravity ? gravity->GetParent() : nullptr;
    if (!home || !home->GetTag().empty()) continue;
    GatherMeshes(*home, meshes);
    if (!home->HasMesh()) GatherBelow(*home, meshes);
  }
  return meshes;
}

}  // namespace

void AddGround(PlotData& data, const std::vector<PlotSubject>& subjects) {
  const std::vector<const SceneNode*> meshes = GroundOf(subjects);
  if (meshes.empty()) return;
  Rectangle around;
  for (const PlotPath& path : data.paths)
    for (const Vector& p : path.points) around.Include(p);
  const double size = std::max(around.LongerSide(), 1.0);  // of a parked vehicle
  around.left -= kRoom * size, around.right += kRoom * size;
  around.back -= kRoom * size, around.front += kRoom * size;
  Surface ground(around);
  for (const SceneNode* node : meshes) ground.Add(*node, data.start);
  Draw(data, Chained(ground.points, ground.Edges()), size,
       {{}, PlotLine::kSurface, 0.8, false, "borders and edges of the ground"});
  if (!(ground.high - ground.low > kFlat)) return;
  const double step = RoundStep(ground.high - ground.low, kHeights);
  std::vector<Outline> heights;
  // Half a step off round heights, at which level ground lies so often.
  for (const double below : Ticks(ground.low - step / 2.0, ground.high - step / 2.0, step)) {
    const std::vector<Piece> level = ground.LevelAt(below + step / 2.0);
    for (Outline& outline : Chained(ground.points, level)) heights.push_back(std::move(outline));
  }
  Draw(data, std::move(heights), size,
       {{}, PlotLine::kHeight, 0.7, false, "its heights, every " + util::shortText(step) + " m"});
}

}  // namespace orv::app
