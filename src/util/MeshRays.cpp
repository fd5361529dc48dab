#include "util/MeshRays.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "util/CMesh.h"
#include "util/Simd.h"

namespace orv::util {

using Vec = Vector3<double>;

namespace {

constexpr int kBins = 16;
constexpr int kLeafSize = 4;
/// From this depth on nodes are halved by count, which bounds the depth and so the stack.
constexpr int kMaxSahDepth = 48;
constexpr int kStackSize = kMaxSahDepth + 64;
/// A region of up to so many triangles is sorted at once when a ray enters it; a larger one goes
/// through a grid of about so many triangles a cell.
constexpr int kSortedAtOnce = 256;
constexpr int kGridTriangles = 16;
constexpr int kMostCells = 8192;
/// Count of a child that is a region.
constexpr std::int32_t kWaits = -1;
/// Part of a place's size that its rays keep from its border.
constexpr double kPlaceMargin = 1e-3;
/// Shortest ray, over its distance from the mesh's origin, whose rounding is far below that.
constexpr double kShortestInPlace = 1e-6;
/// Shortest ray for which a place serves, over the length of the ray that it was made for.
constexpr double kShortestOfPlace = 0.125;
/// Most nodes that are looked into for the triangles of a place.
constexpr int kMostLooks = 96;
/// Sine against a plane of the flattest ray that the plane may rule out.
constexpr double kFlattest = 1e-3;
/// See planesOf().
constexpr double kPlaneSlack = 1e-9, kPlaceSlack = 1e-14;
/// Covers the rounding of a slab test (three operations in double precision).
constexpr double kSlabSlack = 1.0000000000000016;

/// Half the surface; 0 for an empty box.
double area(const Box& box) {
  const Vec size = box.high - box.low;
  return size.x < 0.0 ? 0.0 : size.x * size.y + size.y * size.z + size.z * size.x;
}

float roundDown(double value) {
  const float f = static_cast<float>(value);
  return f > value ? std::nextafterf(f, -std::numeric_limits<float>::infinity()) : f;
}

float roundUp(double value) {
  const float f = static_cast<float>(value);
  return f < value ? std::nextafterf(f, std::numeric_limits<float>::infinity()) : f;
}

/// One number for each child of a node.
using Lanes = DoublePair;

Lanes widen(const float (&pair)[2]) {
  return Lanes{pair[0], pair[1]};
}

bool isFinite(const Vec& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace

/// Divides one region: a large one by a grid into smaller regions that wait in their turn, a small
/// one to the end. The nodes above either split top down by the surface area heuristic over bins of
/// the centroids.
class MeshRays::Builder {
 public:
  explicit Builder(const MeshRays& rays) : m_rays(rays), m_mesh(*rays.m_mesh) {}

  void divide(const Region& region) {
    const bool isLarge = region.end - region.begin > kSortedAtOnce;
    if (!isLarge || !fillGrid(region)) collect(region);
    build(region);
  }

  /// A pair whose children no ray meets.
  static std::int32_t addPair(std::vector<Pair>& pairs) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    Pair pair{};
    for (int i = 0; i < 3; ++i)
      for (int side = 0; side < 2; ++side) {
        pair.bound[0][i][side] = kInfinity;
        pair.bound[1][i][side] = -kInfinity;
      }
    pairs.push_back(pair);
    return static_cast<std::int32_t>(pairs.size()) - 1;
  }

 private:
  /// What is sorted: a triangle, or the triangles of a cell of the grid.
  struct Item {
    Box bounds;
    Vec centroid;
    std::int32_t begin, end;  ///< of the order
    std::int32_t weight() const { return end - begin; }
  };
  struct Task {
    std::int32_t pair, side;  ///< where the node goes
    int begin, end, depth;
  };
  struct Split {
    int axis = -1;
    double cost = std::numeric_limits<double>::infinity();
    int bin = 0;
  };

  const Vec& corner(std::int32_t triangle, int k) const {
    const auto face = 3 * static_cast<std::size_t>(triangle) + static_cast<std::size_t>(k);
    return m_mesh.vertices[static_cast<std::size_t>(m_mesh.faces[face])];
  }
  Box boundsOf(std::int32_t triangle) const {
    Box bounds;
    for (int k = 0; k < 3; ++k) bounds.add(corner(triangle, k));
    return bounds;
  }

  void collect(const Region& region) {
    m_items.clear();
    m_isGrid = false;
    for (std::int32_t i = region.begin; i < region.end; ++i) {
      const Box bounds = boundsOf(m_rays.m_order[static_cast<std::size_t>(i)]);
      m_items.push_back({bounds, bounds.middle(), i, i + 1});
    }
  }

  /// Sorts the region's triangles into cells about as long as wide. False when all are in one.
  bool fillGrid(const Region& region) {
    const auto first = m_rays.m_order.begin() + region.begin;
    const int count = region.end - region.begin;
    Box centroids;
    Vec meanSize;
    for (int i = 0; i < count; ++i) {
      const Box bounds = boundsOf(first[i]);
      centroids.add(bounds.middle());
      meanSize += (bounds.high - bounds.low) / count;
    }
    int cells[3] = {1, 1, 1};
    Vec step = centroids.high - centroids.low;
    for (int total = 1; 2 * total * kGridTriangles <= count && total < kMostCells; total *= 2) {
      // The axis by which the box round a cell's triangles shrinks most.
      int best = 0;
      double least = std::numeric_limits<double>::infinity();
      for (int axis = 0; axis < 3; ++axis) {
        Vec size = step + meanSize;
        size[axis] -= 0.5 * step[axis];
        const double area = size.x * size.y + size.y * size.z + size.z * size.x;
        if (area >= least) continue;
        least = area;
        best = axis;
      }
      cells[best] *= 2;
      step[best] *= 0.5;
    }
    Vec scale;
    for (int axis = 0; axis < 3; ++axis) scale[axis] = step[axis] > 0.0 ? 1.0 / step[axis] : 0.0;
    std::vector<Item> grid(static_cast<std::size_t>(cells[0]) * cells[1] * cells[2]);
    std::vector<std::int32_t> cellOf(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      const Box bounds = boundsOf(first[i]);
      const Vec middle = bounds.middle();
      int cell = 0;
      for (int axis = 2; axis >= 0; --axis) {
        const double at = (middle[axis] - centroids.low[axis]) * scale[axis];
        cell =
            cell * cells[axis] + (at > 0.0 ? static_cast<int>(std::min(at, cells[axis] - 1.0)) : 0);
      }
      cellOf[static_cast<std::size_t>(i)] = cell;
      grid[static_cast<std::size_t>(cell)].bounds.add(bounds);
      ++grid[static_cast<std::size_t>(cell)].end;
    }
    return rearrange(region, grid, cellOf);
  }

  /// Puts the triangles of each cell together; the cells that hold any become the items.
  bool rearrange(const Region& region, std::vector<Item>& grid,
                 const std::vector<std::int32_t>& cellOf) {
    std::int32_t next = region.begin;
    for (Item& cell : grid) {
      const std::int32_t count = cell.end;
      cell.begin = cell.end = next;
      next += count;
    }
    const auto first = m_rays.m_order.begin() + region.begin;
    const std::vector<std::int32_t> before(first, m_rays.m_order.begin() + region.end);
    for (std::size_t i = 0; i < before.size(); ++i)
      m_rays.m_order[static_cast<std::size_t>(grid[static_cast<std::size_t>(cellOf[i])].end++)] =
          before[i];
    m_items.clear();
    m_isGrid = true;
    for (Item& cell : grid) {
      if (cell.weight() == 0) continue;
      cell.centroid = cell.bounds.middle();
      m_items.push_back(cell);
    }
    return m_items.size() > 1;
  }

  static int binOf(const Item& item, int axis, double low, double scale) {
    const int bin = static_cast<int>((item.centroid[axis] - low) * scale);
    return std::clamp(bin, 0, kBins - 1);
  }

  void tryAxis(const Task& task, const Box& centroids, int axis, Split& best) const {
    const double low = centroids.low[axis];
    const double extent = centroids.high[axis] - low;
    if (!(extent > 0.0)) return;
    const double scale = kBins / extent;
    std::array<Box, kBins> bounds;
    std::array<int, kBins> counts{};
    int all = 0;
    for (int i = task.begin; i < task.end; ++i) {
      const int bin = binOf(m_items[i], axis, low, scale);
      bounds[bin].add(m_items[i].bounds);
      counts[bin] += m_items[i].weight();
      all += m_items[i].weight();
    }
    std::array<double, kBins> rightCost{};
    Box right;
    for (int bin = kBins - 1, count = 0; bin > 0; --bin) {
      right.add(bounds[bin]);
      count += counts[bin];
      rightCost[bin] = count * area(right);
    }
    Box left;
    for (int bin = 0, count = 0; bin < kBins - 1; ++bin) {
      left.add(bounds[bin]);
      count += counts[bin];
      const double cost = count * area(left) + rightCost[bin + 1];
      if (count > 0 && count < all && cost < best.cost) best = {axis, cost, bin};
    }
  }

  /// Where the range is cut; its end when it should stay one leaf.
  int cut(const Task& task, const Box& whole, const Box& centroids) {
    const int count = task.end - task.begin;
    const int leafSize = m_isGrid ? 1 : kLeafSize;
    if (count <= 1) return task.end;
    Split split;
    if (task.depth < kMaxSahDepth)
      for (int axis = 0; axis < 3; ++axis) tryAxis(task, centroids, axis, split);
    if (split.axis < 0) return count <= leafSize ? task.end : task.begin + count / 2;
    // A traversal step costs about as much as one triangle.
    if (count <= leafSize && split.cost + area(whole) >= count * area(whole)) return task.end;
    const double low = centroids.low[split.axis];
    const double scale = kBins / (centroids.high[split.axis] - low);
    const auto middle = std::partition(
        m_items.begin() + task.begin, m_items.begin() + task.end,
        [&](const Item& item) { return binOf(item, split.axis, low, scale) <= split.bin; });
    const int cut = static_cast<int>(middle - m_items.begin());
    return cut > task.begin && cut < task.end ? cut : task.begin + count / 2;
  }

  /// The triangles of a leaf, or the region that waits in its place.
  void addLeaf(const Task& task, std::int32_t& first, std::int32_t& count) {
    if (m_isGrid) {
      const Item& cell = m_items[static_cast<std::size_t>(task.begin)];
      first = static_cast<std::int32_t>(m_rays.m_regions.size());
      count = kWaits;
      m_rays.m_regions.push_back({cell.begin, cell.end, task.pair, task.side, task.depth});
      return;
    }
    first = static_cast<std::int32_t>(m_rays.m_triangles.size());
    count = task.end - task.begin;
    for (int i = task.begin; i < task.end; ++i) {
      const auto at = static_cast<std::size_t>(m_items[static_cast<std::size_t>(i)].begin);
      const std::int32_t index = m_rays.m_order[at];
      m_rays.m_triangles.push_back({{corner(index, 0), corner(index, 1), corner(index, 2)}, index});
    }
  }

  void build(const Region& region) {
    const int all = static_cast<int>(m_items.size());
    std::vector<Task> tasks = {{region.pair, region.side, 0, all, region.depth}};
    while (!tasks.empty()) {
      const Task task = tasks.back();
      tasks.pop_back();
      Box whole, centroids;
      for (int i = task.begin; i < task.end; ++i) {
        whole.add(m_items[i].bounds);
        centroids.add(m_items[i].centroid);
      }
      std::int32_t first = 0, count = 0;
      const int middle = cut(task, whole, centroids);
      if (middle != task.end) {
        first = addPair(m_rays.m_pairs);
        tasks.push_back({first, 0, task.begin, middle, task.depth + 1});
        tasks.push_back({first, 1, middle, task.end, task.depth + 1});
      } else {
        addLeaf(task, first, count);
      }
      Pair& pair = m_rays.m_pairs[static_cast<std::size_t>(task.pair)];
      for (int i = 0; i < 3; ++i) {
        pair.bound[0][i][task.side] = roundDown(whole.low[i]);
        pair.bound[1][i][task.side] = roundUp(whole.high[i]);
      }
      pair.first[task.side] = first;
      pair.count[task.side] = count;
    }
  }

  const MeshRays& m_rays;
  const CMesh& m_mesh;
  std::vector<Item> m_items;
  bool m_isGrid = false;  ///< the items are cells
};

MeshRays::MeshRays(std::shared_ptr<const CMesh> mesh) : m_mesh(std::move(mesh)) {
  const std::size_t count = m_mesh->faces.size() / 3;
  m_order.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Vec* corners[3];
    bool usable = true;
    for (std::size_t k = 0; k < 3 && usable; ++k) {
      const std::int32_t vertex = m_mesh->faces[3 * i + k];
      usable = vertex >= 0 && static_cast<std::size_t>(vertex) < m_mesh->vertices.size();
      if (usable) corners[k] = &m_mesh->vertices[static_cast<std::size_t>(vertex)];
      usable = usable && isFinite(*corners[k]);
    }
    if (!usable) continue;
    const Vec cross = (*corners[1] - *corners[0]).cross(*corners[2] - *corners[0]);
    if (cross.x == 0.0 && cross.y == 0.0 && cross.z == 0.0) continue;
    m_order.push_back(static_cast<std::int32_t>(i));
  }
  if (m_order.empty()) return;
  m_regions.push_back(
      {0, static_cast<std::int32_t>(m_order.size()), Builder::addPair(m_pairs), 0, 0});
  // Whatever the bounds, the first ray enters and finds them.
  Pair& root = m_pairs.front();
  for (int i = 0; i < 3; ++i) std::swap(root.bound[0][i][0], root.bound[1][i][0]);
  root.count[0] = kWaits;
}

/// A ray readied for slab tests and for the edge tests, which look along it: the axes are permuted
/// so that z is its main direction, and sheared so that it runs along z.
struct MeshRays::Ray {
  Vec origin;
  Vec behind;  ///< the origin for what is left: along the border of a box a ray stays in it
  double inverse[3];
  int negative[3];  ///< 1 where it runs towards lower values, else 0
  int kx, ky, kz;
  double shearX, shearY, shearZ;

  Ray(const Vec& from, const Vec& direction) : origin(from), behind(from) {
    kz = 0;
    if (std::abs(direction.y) > std::abs(direction[kz])) kz = 1;
    if (std::abs(direction.z) > std::abs(direction[kz])) kz = 2;
    kx = (kz + 1) % 3;
    ky = (kz + 2) % 3;
    if (direction[kz] < 0.0) std::swap(kx, ky);
    shearX = direction[kx] / direction[kz];
    shearY = direction[ky] / direction[kz];
    shearZ = 1.0 / direction[kz];
    for (int i = 0; i < 3; ++i) {
      // A tiny step in place of none keeps the slab test free of 0 * infinity.
      const double step = direction[i] == 0.0 ? std::copysign(1e-300, direction[i]) : direction[i];
      inverse[i] = 1.0 / step;
      if (direction[i] == 0.0)
        behind[i] -= std::copysign(std::max(std::abs(from[i]) * 1e-15, 1e-280), step);
      negative[i] = inverse[i] < 0.0;
    }
  }

  /// Where the ray enters the boxes of the pair's children and where it leaves them, between 0 and
  /// `limit`; it meets a box that it enters before it leaves.
  void meet(const Pair& pair, double limit, Lanes& enter, Lanes& leave) const {
    enter = Lanes{0.0, 0.0};
    leave = Lanes{limit, limit} * kSlabSlack;
    for (int i = 0; i < 3; ++i) {
      const Lanes a = (widen(pair.bound[negative[i]][i]) - origin[i]) * inverse[i];
      const Lanes b = (widen(pair.bound[1 - negative[i]][i]) - behind[i]) * inverse[i] * kSlabSlack;
      enter = larger(a, enter);
      leave = smaller(b, leave);
    }
  }
};

/// A node that a ray still has to look into, and where it enters it.
struct MeshRays::Entry {
  std::int32_t first, count;  ///< as in its pair
  double t;
};

/// Makes of a region's entry that of the node or the leaf that it becomes. Apart from the hot loop.
[[gnu::noinline]] void MeshRays::divide(Entry& entry) const {
  const Region region = m_regions[static_cast<std::size_t>(entry.first)];
  Builder(*this).divide(region);
  const Pair& pair = m_pairs[static_cast<std::size_t>(region.pair)];
  entry.first = pair.first[region.side];
  entry.count = pair.count[region.side];
}

bool MeshRays::hitTriangle(const Ray& ray, const Triangle& triangle, double& t) {
  const Vec a = triangle.corner[0] - ray.origin;
  const Vec b = triangle.corner[1] - ray.origin;
  const Vec c = triangle.corner[2] - ray.origin;
  const double ax = a[ray.kx] - ray.shearX * a[ray.kz], ay = a[ray.ky] - ray.shearY * a[ray.kz];
  const double bx = b[ray.kx] - ray.shearX * b[ray.kz], by = b[ray.ky] - ray.shearY * b[ray.kz];
  const double cx = c[ray.kx] - ray.shearX * c[ray.kz], cy = c[ray.ky] - ray.shearY * c[ray.kz];
  // Two triangles compute the test of a shared edge with opposite signs, bit for bit: no gap.
  const double u = cx * by - cy * bx;
  const double v = ax * cy - ay * cx;
  const double w = bx * ay - by * ax;
  if ((u < 0.0 || v < 0.0 || w < 0.0) && (u > 0.0 || v > 0.0 || w > 0.0)) return false;
  const double determinant = u + v + w;
  if (determinant == 0.0) return false;
  t = ray.shearZ * (u * a[ray.kz] + v * b[ray.kz] + w * c[ray.kz]) / determinant;
  return t >= 0.0;
}

/// The closest hit so far.
struct MeshRays::Closest {
  double t;                    ///< no farther than that
  std::int32_t triangle = -1;  ///< of m_triangles
};

inline void MeshRays::look(const Ray& ray, std::int32_t triangle, Closest& closest) const {
  const Triangle& looked = m_triangles[static_cast<std::size_t>(triangle)];
  double t;
  if (!hitTriangle(ray, looked, t) || t > closest.t) return;
  if (closest.triangle >= 0 && t == closest.t &&
      m_triangles[static_cast<std::size_t>(closest.triangle)].index < looked.index)
    return;
  closest = {t, triangle};
}

// --- places ---

namespace {

template <class Pair>
bool meets(const Box& box, const Pair& pair, int side) {
  for (int i = 0; i < 3; ++i)
    if (pair.bound[0][i][side] > box.high[i] || pair.bound[1][i][side] < box.low[i]) return false;
  return true;
}

}  // namespace

/// Whether the ray's whole way lies in the place, and is not too short for it. False for one that
/// is no ray.
inline bool MeshRays::isInPlace(const Vec& origin, const Vec& way) const {
  const Place& place = m_place;
  double longest = 0.0;
  for (int i = 0; i < 3; ++i) {
    const double end = origin[i] + way[i];
    if (!(origin[i] >= place.inner.low[i] && origin[i] <= place.inner.high[i] &&
          end >= place.inner.low[i] && end <= place.inner.high[i]))
      return false;
    longest = std::max(longest, std::abs(way[i]));
  }
  return longest >= place.shortest;
}

/// The second of two rays that come near each other makes a place, and is in it; what rays of
/// another order of length do doesn't count.
bool MeshRays::makePlace(const Vec& origin, const Vec& way) const {
  if (!isFinite(way)) return false;
  Box box;
  box.add(origin);
  box.add(origin + way);
  double longest = 0.0, farthest = 0.0;
  for (int i = 0; i < 3; ++i) {
    longest = std::max(longest, std::abs(way[i]));
    farthest = std::max(farthest, std::abs(origin[i]));
  }
  if (!(longest > farthest * kShortestInPlace)) return false;
  const bool isNear = longest >= m_seen.shortest && m_seen.box.holds(box);
  const Vec room(longest, longest, longest);
  m_seen = {{box.low - room, box.high + room}, longest * kShortestOfPlace};
  if (isNear) fillPlace();
  return isNear;
}

/// Comes down from the root as long as few nodes are enough.
void MeshRays::fillPlace() const {
  Place& place = m_place;
  const Box& box = m_seen.box;
  const Vec margin = (box.high - box.low) * kPlaceMargin;
  place.inner = {box.low + margin, box.high - margin};
  place.shortest = m_seen.shortest;
  place.count = 1;
  place.pair[0] = place.side[0] = 0;
  for (int i = 0; i < place.count;) {
    const Pair& pair = m_pairs[static_cast<std::size_t>(place.pair[i])];
    const std::int32_t below = pair.first[place.side[i]];
    if (pair.count[place.side[i]] != 0) {
      ++i;  // a leaf, or a region that waits
      continue;
    }
    const Pair& children = m_pairs[static_cast<std::size_t>(below)];
    const bool first = meets(box, children, 0), second = meets(box, children, 1);
    if (first && second && place.count == Place::kMostNodes) {
      ++i;
      continue;
    }
    if (first || second) {
      place.pair[i] = below;
      place.side[i] = first ? 0 : 1;
    } else {
      --place.count;
      place.pair[i] = place.pair[place.count];
      place.side[i] = place.side[place.count];
    }
    if (first && second) {
      place.pair[place.count] = below;
      place.side[place.count++] = 1;
    }
  }
  findPlanes(box);
}

/// Notes the triangles below the place's nodes that reach into `box`, if they are few.
void MeshRays::findPlanes(const Box& box) const {
  constexpr int kMost = 2 * Place::kMostPlanes;
  m_place.planeCount = -1;
  Entry stack[kStackSize];
  std::int32_t found[kMost];
  int depth = 0, count = 0, looks = 0;
  for (int i = 0; i < m_place.count; ++i) {
    const Pair& pair = m_pairs[static_cast<std::size_t>(m_place.pair[i])];
    stack[depth++] = {pair.first[m_place.side[i]], pair.count[m_place.side[i]], 0.0};
  }
  while (depth > 0) {
    Entry node = stack[--depth];
    while (node.count < 0) divide(node);
    if (node.count == 0) {
      if (++looks > kMostLooks) return;
      const Pair& pair = m_pairs[static_cast<std::size_t>(node.first)];
      for (int side = 0; side < 2; ++side)
        if (meets(box, pair, side)) stack[depth++] = {pair.first[side], pair.count[side], 0.0};
      continue;
    }
    for (int i = node.first; i < node.first + node.count; ++i) {
      Box bounds;
      for (const Vec& corner : m_triangles[static_cast<std::size_t>(i)].corner) bounds.add(corner);
      if (!bounds.meets(box)) continue;
      if (count == kMost) return;
      found[count++] = i;
    }
  }
  m_place.planeCount = (count + 1) / 2;
  for (int i = 0; i < count; i += 2)
    m_place.planes[i / 2] = planesOf(found[i], found[std::min(i + 1, count - 1)], box);
}

/// What hitTriangle() takes for a hit lies next to the ray and to the triangle, though rounding
/// moves the one from the other. With d for the greatest distance between a start in the place and
/// a corner, the edge tests are within 64 roundings of d², and so the weights that they give place
/// the hit within 543 roundings of d³ over their sum beside the ray. The sum is the triangle's size
/// as the ray sees it: at least kFlattest of its double area, for rays that are not flatter.
/// A ray that stays farther away than that from the plane can't hit. `room` has ten times as much,
/// and what the distances to the plane lose at their size.
MeshRays::Planes MeshRays::planesOf(std::int32_t first, std::int32_t second, const Box& box) const {
  Planes planes{};
  for (int lane = 0; lane < 2; ++lane) {
    const std::int32_t at = lane == 0 ? first : second;
    const Triangle& triangle = m_triangles[static_cast<std::size_t>(at)];
    const Vec* const corner = triangle.corner;
    const Vec cross = (corner[1] - corner[0]).cross(corner[2] - corner[0]);
    const double doubleArea = cross.length();
    const Vec normal = cross / doubleArea;
    Box whole = box;
    for (int k = 0; k < 3; ++k) whole.add(corner[k]);
    const double d = (whole.high - whole.low).length();
    const double farthest = std::max(whole.high.length(), whole.low.length());
    for (int i = 0; i < 3; ++i) planes.normal[i][lane] = normal[i];
    planes.offset[lane] = normal.dot(corner[0]);
    planes.room[lane] = kPlaneSlack * d * d * d / doubleArea + kPlaceSlack * farthest;
    planes.triangle[lane] = at;
  }
  return planes;
}

/// The triangles of the place's planes that a ray may hit: a bit for each.
unsigned MeshRays::crossPlanes(const Vec& origin, const Vec& way) const {
  const double flat = (std::abs(way.x) + std::abs(way.y) + std::abs(way.z)) * kFlattest;
  unsigned crossed = 0;
  for (int i = 0; i < m_place.planeCount; ++i) {
    const Planes& planes = m_place.planes[i];
    const DoublePair* const n = planes.normal;
    const DoublePair begin = n[0] * origin.x + n[1] * origin.y + n[2] * origin.z - planes.offset;
    const DoublePair rise = n[0] * way.x + n[1] * way.y + n[2] * way.z;
    const DoublePair end = begin + rise;
    const DoublePair away = larger(smaller(begin, end), smaller(-begin, -end)) - planes.room;
    // What is not a number is no miss.
    const DoublePair misses = smaller(larger(rise, -rise) - flat, away);
    if (!(misses[0] > 0.0)) crossed |= 1u << (2 * i);
    if (!(misses[1] > 0.0)) crossed |= 2u << (2 * i);
  }
  return crossed;
}

// --- rays ---

void MeshRays::walk(const Ray& ray, bool inPlace, Closest& closest) const {
  Entry stack[kStackSize];
  int depth = 0;
  Entry node{0, 0, 0.0};
  if (inPlace) {
    for (int i = m_place.count; i-- > 0;) {
      const Pair& pair = m_pairs[static_cast<std::size_t>(m_place.pair[i])];
      stack[depth++] = {pair.first[m_place.side[i]], pair.count[m_place.side[i]], 0.0};
    }
    if (depth == 0) return;
    node = stack[--depth];
  }
  for (;;) {
    while (node.count == 0 && node.t <= closest.t * kSlabSlack) {
      const Pair& pair = m_pairs[static_cast<std::size_t>(node.first)];
      Lanes enter, leave;
      ray.meet(pair, closest.t, enter, leave);
      const Entry left{pair.first[0], pair.count[0], enter[0]};
      const Entry right{pair.first[1], pair.count[1], enter[1]};
      const bool meetsLeft = enter[0] <= leave[0], meetsRight = enter[1] <= leave[1];
      if (meetsLeft && meetsRight) {
        const bool leftFirst = left.t < right.t;
        stack[depth++] = leftFirst ? right : left;
        node = leftFirst ? left : right;
      } else if (meetsLeft || meetsRight) {
        node = meetsLeft ? left : right;
      } else {
        break;
      }
    }
    if (node.t <= closest.t * kSlabSlack) {
      if (node.count < 0) {
        divide(node);
        continue;
      }
      for (int i = node.first; i < node.first + node.count; ++i) look(ray, i, closest);
    }
    if (depth == 0) return;
    node = stack[--depth];
  }
}

bool MeshRays::intersect(const Vec& origin, const Vec& direction, double maxT, Hit& hit) const {
  if (!(maxT >= 0.0)) return false;
  const Vec way = direction * maxT;
  Closest closest{maxT};
  bool inPlace = isInPlace(origin, way);
  if (!inPlace) {
    if (m_pairs.empty() || !isFinite(origin) || !isFinite(direction)) return false;
    if (direction.x == 0.0 && direction.y == 0.0 && direction.z == 0.0) return false;
    inPlace = makePlace(origin, way);
  }
  if (inPlace && m_place.planeCount >= 0) {
    unsigned crossed = crossPlanes(origin, way);
    if (crossed == 0) return false;
    const Ray ray(origin, direction);
    for (int i = 0; crossed != 0; ++i, crossed >>= 1)
      if (crossed & 1u) look(ray, m_place.planes[i / 2].triangle[i % 2], closest);
  } else {
    walk(Ray(origin, direction), inPlace, closest);
  }
  if (closest.triangle < 0) return false;
  const Triangle& met = m_triangles[static_cast<std::size_t>(closest.triangle)];
  hit.t = closest.t;
  hit.triangle = met.index;
  hit.point = origin + direction * closest.t;
  hit.edge1 = met.corner[1] - met.corner[0];
  hit.edge2 = met.corner[2] - met.corner[0];
  return true;
}

}  // namespace orv::util
