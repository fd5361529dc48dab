#include "adaptor/headless/MeshRays.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "util/CMesh.h"

namespace orv::rws::adaptor::headless {

using Vec = util::Vector3<double>;

namespace {

constexpr int kBins = 16;
constexpr int kLeafSize = 4;
/// From this depth on nodes are halved by count, which bounds the depth and so the stack.
constexpr int kMaxSahDepth = 48;
constexpr int kStackSize = kMaxSahDepth + 40;
/// Covers the rounding of a slab test (three operations in double precision).
constexpr double kSlabSlack = 1.0000000000000016;

struct Bounds {
  double low[3] = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                   std::numeric_limits<double>::infinity()};
  double high[3] = {-std::numeric_limits<double>::infinity(),
                    -std::numeric_limits<double>::infinity(),
                    -std::numeric_limits<double>::infinity()};

  void Add(const Vec& p) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], p[i]);
      high[i] = std::max(high[i], p[i]);
    }
  }
  void Add(const Bounds& other) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], other.low[i]);
      high[i] = std::max(high[i], other.high[i]);
    }
  }
  /// Half the surface; 0 for an empty box.
  double Area() const {
    const double x = high[0] - low[0], y = high[1] - low[1], z = high[2] - low[2];
    return x < 0.0 ? 0.0 : x * y + y * z + z * x;
  }
};

float RoundDown(double value) {
  const float f = static_cast<float>(value);
  return f > value ? std::nextafterf(f, -std::numeric_limits<float>::infinity()) : f;
}

float RoundUp(double value) {
  const float f = static_cast<float>(value);
  return f < value ? std::nextafterf(f, std::numeric_limits<float>::infinity()) : f;
}

/// Two numbers that are computed with at once, one for each child of a node.
using Lanes = double __attribute__((vector_size(16)));

Lanes Widen(const float (&pair)[2]) {
  return Lanes{pair[0], pair[1]};
}

bool IsFinite(const Vec& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace

/// Splits top down by the surface area heuristic over bins of the centroids.
struct MeshRays::Builder {
  struct Reference {
    Bounds bounds;
    Vec centroid;
    std::int32_t triangle;  ///< into `source`
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

  std::vector<Triangle> source;
  std::vector<Reference> references;
  std::vector<Pair>& pairs;

  explicit Builder(std::vector<Pair>& target) : pairs(target) {}

  void Collect(const util::CMesh& mesh) {
    const std::size_t count = mesh.faces.size() / 3;
    source.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      Triangle triangle;
      triangle.index = static_cast<std::int32_t>(i);
      bool usable = true;
      for (int k = 0; k < 3 && usable; ++k) {
        const std::int32_t vertex = mesh.faces[3 * i + k];
        usable = vertex >= 0 && static_cast<std::size_t>(vertex) < mesh.vertices.size() &&
                 IsFinite(mesh.vertices[vertex]);
        if (usable) triangle.corner[k] = mesh.vertices[vertex];
      }
      if (!usable) continue;
      const Vec cross =
          (triangle.corner[1] - triangle.corner[0]).cross(triangle.corner[2] - triangle.corner[0]);
      if (cross.x == 0.0 && cross.y == 0.0 && cross.z == 0.0) continue;
      source.push_back(triangle);
    }
    references.resize(source.size());
    for (std::size_t i = 0; i < source.size(); ++i) {
      Reference& reference = references[i];
      for (const Vec& corner : source[i].corner) reference.bounds.Add(corner);
      for (int k = 0; k < 3; ++k)
        reference.centroid[k] = 0.5 * reference.bounds.low[k] + 0.5 * reference.bounds.high[k];
      reference.triangle = static_cast<std::int32_t>(i);
    }
  }

  static int BinOf(const Reference& reference, int axis, double low, double scale) {
    const int bin = static_cast<int>((reference.centroid[axis] - low) * scale);
    return std::clamp(bin, 0, kBins - 1);
  }

  void TryAxis(const Task& task, const Bounds& centroids, int axis, Split& best) const {
    const double low = centroids.low[axis];
    const double extent = centroids.high[axis] - low;
    if (!(extent > 0.0)) return;
    const double scale = kBins / extent;
    std::array<Bounds, kBins> bounds;
    std::array<int, kBins> counts{};
    for (int i = task.begin; i < task.end; ++i) {
      const int bin = BinOf(references[i], axis, low, scale);
      bounds[bin].Add(references[i].bounds);
      ++counts[bin];
    }
    std::array<double, kBins> rightCost{};
    Bounds right;
    for (int bin = kBins - 1, count = 0; bin > 0; --bin) {
      right.Add(bounds[bin]);
      count += counts[bin];
      rightCost[bin] = count * right.Area();
    }
    Bounds left;
    for (int bin = 0, count = 0; bin < kBins - 1; ++bin) {
      left.Add(bounds[bin]);
      count += counts[bin];
      const double cost = count * left.Area() + rightCost[bin + 1];
      if (count > 0 && count < task.end - task.begin && cost < best.cost) best = {axis, cost, bin};
    }
  }

  /// Where the range is cut; its end when it should stay one leaf.
  int Cut(const Task& task, const Bounds& whole, const Bounds& centroids) {
    const int count = task.end - task.begin;
    if (count <= 1) return task.end;
    Split split;
    if (task.depth < kMaxSahDepth)
      for (int axis = 0; axis < 3; ++axis) TryAxis(task, centroids, axis, split);
    if (split.axis < 0) return count <= kLeafSize ? task.end : task.begin + count / 2;
    // A traversal step costs about as much as one triangle.
    if (count <= kLeafSize && split.cost + whole.Area() >= count * whole.Area()) return task.end;
    const double low = centroids.low[split.axis];
    const double scale = kBins / (centroids.high[split.axis] - low);
    const auto middle = std::partition(
        references.begin() + task.begin, references.begin() + task.end,
        [&](const Reference& r) { return BinOf(r, split.axis, low, scale) <= split.bin; });
    const int cut = static_cast<int>(middle - references.begin());
    return cut > task.begin && cut < task.end ? cut : task.begin + count / 2;
  }

  /// A pair whose children no ray meets.
  std::int32_t AddPair() {
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

  void Build() {
    if (references.empty()) return;
    pairs.reserve(references.size() / 2 + 1);
    std::vector<Task> tasks = {{AddPair(), 0, 0, static_cast<int>(references.size()), 0}};
    while (!tasks.empty()) {
      const Task task = tasks.back();
      tasks.pop_back();
      Bounds whole, centroids;
      for (int i = task.begin; i < task.end; ++i) {
        whole.Add(references[i].bounds);
        centroids.Add(references[i].centroid);
      }
      std::int32_t first = task.begin, count = task.end - task.begin;
      const int cut = Cut(task, whole, centroids);
      if (cut != task.end) {
        first = AddPair();
        count = 0;
        tasks.push_back({first, 0, task.begin, cut, task.depth + 1});
        tasks.push_back({first, 1, cut, task.end, task.depth + 1});
      }
      Pair& pair = pairs[static_cast<std::size_t>(task.pair)];
      for (int i = 0; i < 3; ++i) {
        pair.bound[0][i][task.side] = RoundDown(whole.low[i]);
        pair.bound[1][i][task.side] = RoundUp(whole.high[i]);
      }
      pair.first[task.side] = first;
      pair.count[task.side] = count;
    }
  }
};

MeshRays::MeshRays(const util::CMesh& mesh) {
  Builder builder(m_pairs);
  builder.Collect(mesh);
  builder.Build();
  m_pairs.shrink_to_fit();
  m_triangles.reserve(builder.source.size());
  for (const Builder::Reference& reference : builder.references)
    m_triangles.push_back(builder.source[reference.triangle]);
}

/// A ray readied for slab tests and for the edge tests, which look along it: the axes are permuted
/// so that z is its main direction, and sheared so that it runs along z.
struct MeshRays::Ray {
  Vec origin;
  double inverse[3];
  int negative[3];  ///< 1 where it runs towards lower values, else 0
  int kx, ky, kz;
  double shearX, shearY, shearZ;

  Ray(const Vec& from, const Vec& direction) : origin(from) {
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
      negative[i] = inverse[i] < 0.0;
    }
  }

  /// Where the ray enters the boxes of the pair's children and where it leaves them, between 0 and
  /// `limit`; it meets a box that it enters before it leaves.
  void Meet(const Pair& pair, double limit, Lanes& enter, Lanes& leave) const {
    enter = Lanes{0.0, 0.0};
    leave = Lanes{limit, limit} * kSlabSlack;
    for (int i = 0; i < 3; ++i) {
      const Lanes a = (Widen(pair.bound[negative[i]][i]) - origin[i]) * inverse[i];
      const Lanes b = (Widen(pair.bound[1 - negative[i]][i]) - origin[i]) * inverse[i] * kSlabSlack;
      enter = a > enter ? a : enter;
      leave = b < leave ? b : leave;
    }
  }
};

/// A node that a ray still has to look into, and where it enters it.
struct MeshRays::Entry {
  std::int32_t first, count;  ///< as in its pair
  double t;
};

bool MeshRays::HitTriangle(const Ray& ray, const Triangle& triangle, double& t) {
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

bool MeshRays::Intersect(const Vec& origin, const Vec& direction, double maxT, Hit& hit) const {
  if (m_pairs.empty() || !IsFinite(origin) || !IsFinite(direction) || !(maxT >= 0.0)) return false;
  if (direction.x == 0.0 && direction.y == 0.0 && direction.z == 0.0) return false;
  const Ray ray(origin, direction);
  Entry stack[kStackSize];
  int depth = 0;
  double limit = maxT;
  const Triangle* best = nullptr;
  for (Entry node{0, 0, 0.0};; node = stack[--depth]) {
    while (node.count == 0 && node.t <= limit * kSlabSlack) {
      const Pair& pair = m_pairs[static_cast<std::size_t>(node.first)];
      Lanes enter, leave;
      ray.Meet(pair, limit, enter, leave);
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
    if (node.t <= limit * kSlabSlack) {
      for (int i = node.first; i < node.first + node.count; ++i) {
        const Triangle& triangle = m_triangles[static_cast<std::size_t>(i)];
        double t;
        if (!HitTriangle(ray, triangle, t) || t > limit) continue;
        if (best && t == limit && best->index < triangle.index) continue;
        best = &triangle;
        limit = t;
      }
    }
    if (depth == 0) break;
  }
  if (!best) return false;
  hit.t = limit;
  hit.triangle = best->index;
  hit.point = origin + direction * limit;
  hit.edge1 = best->corner[1] - best->corner[0];
  hit.edge2 = best->corner[2] - best->corner[0];
  return true;
}

}  // namespace orv::rws::adaptor::headless
