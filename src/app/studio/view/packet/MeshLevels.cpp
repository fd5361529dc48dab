#include "app/studio/view/packet/MeshLevels.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <cmath>

#include "util/CMesh.h"
#include "util/MeshRays.h"

namespace orv::app::view {

using util::Vector3;

namespace {

using Corners = std::vector<std::uint32_t>;

constexpr std::size_t kLeastTriangles = 256;   ///< of a mesh that is worth it
constexpr std::size_t kPieceTriangles = 2048;  ///< at most; a step's work
constexpr float kMostDeviation = 0.2f;         ///< of a piece's size, of one level from the next
/// A level with more of the triangles before it than this is none.
constexpr double kLeastGain = 0.8;
/// What may change unseen, on average: length of a unit normal's difference, parts of a colour,
/// parts of a texture.
constexpr double kNormalTolerance = 0.06, kColourTolerance = 0.02, kPlaceTolerance = 5e-4;
constexpr std::size_t kMostSamples = 256;  ///< of a piece and level

Vector3<double> PointOf(const MeshData::Float3& p) {
  return {p[0], p[1], p[2]};
}

/// What is seen at a place of a triangle, but for where it is.
struct Look {
  Vector3<double> normal;
  std::array<double, 4> colour{};
  std::array<double, 2> place{};
};

/// `weights` of the three corners.
Look LookAt(const MeshData& mesh, const std::uint32_t* corners, const double* weights) {
  Look look;
  const Vector3<double> a = PointOf(mesh.positions[corners[0]]);
  if (mesh.normals.empty())
    look.normal =
        (PointOf(mesh.positions[corners[1]]) - a).cross(PointOf(mesh.positions[corners[2]]) - a);
  for (std::size_t i = 0; i < 3; ++i) {
    const std::uint32_t corner = corners[i];
    if (!mesh.normals.empty()) look.normal += PointOf(mesh.normals[corner]) * weights[i];
    for (std::size_t k = 0; k < 4 && !mesh.colours.empty(); ++k)
      look.colour[k] += weights[i] * mesh.colours[corner][k] / 255.0;
    for (std::size_t k = 0; k < 2 && !mesh.texCoords.empty(); ++k)
      look.place[k] += weights[i] * static_cast<double>(mesh.texCoords[corner][k]);
  }
  const double length = look.normal.length();
  if (length > 0.0) look.normal /= length;
  return look;
}

/// Weights of a triangle's corners at a point in its plane.
void WeightsAt(const util::MeshRays::Hit& hit, const Vector3<double>& corner, double* weights) {
  const Vector3<double> across = hit.edge1.cross(hit.edge2), from = hit.point - corner;
  const double area = std::max(across.lengthSquared(), 1e-300);
  weights[1] = from.cross(hit.edge2).dot(across) / area;
  weights[2] = hit.edge1.cross(from).dot(across) / area;
  weights[0] = 1.0 - weights[1] - weights[2];
}

}  // namespace

LevelMaker::LevelMaker(std::shared_ptr<const MeshData> mesh) : m_mesh(std::move(mesh)) {
  const std::size_t count = m_mesh->indices.size() / 3;
  const auto isFinite = [](const MeshData::Float3& p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
  };
  if (m_mesh->lines || count < kLeastTriangles ||
      !std::all_of(m_mesh->positions.begin(), m_mesh->positions.end(), isFinite))
    return;
  m_middles.resize(count);
  m_order.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    m_order[i] = static_cast<std::uint32_t>(i);
    for (std::size_t k = 0; k < 3; ++k)
      for (std::size_t corner = 0; corner < 3; ++corner)
        m_middles[i][k] += m_mesh->positions[m_mesh->indices[3 * i + corner]][k] / 3.0f;
  }
  m_open.push_back({0, count});
}

bool LevelMaker::Work() {
  if (!m_open.empty()) {
    const Span span = m_open.back();
    m_open.pop_back();
    Split(span);
    return true;
  }
  if (m_simplified < m_parts.size()) {
    Simplify(m_parts[m_simplified++]);
    return true;
  }
  if (!m_parts.empty()) Assemble();
  return false;
}

/// At the middle along its longest side, until it is a piece.
void LevelMaker::Split(const Span& span) {
  util::Box box;
  for (std::size_t i = span.begin; i < span.end; ++i) box.add(PointOf(m_middles[m_order[i]]));
  if (span.end - span.begin <= kPieceTriangles) {
    Part part;
    for (std::size_t i = span.begin; i < span.end; ++i)
      for (std::size_t k = 0; k < 3; ++k) {
        part.levels[0].push_back(m_mesh->indices[3 * std::size_t{m_order[i]} + k]);
        part.box.add(PointOf(m_mesh->positions[part.levels[0].back()]));
      }
    m_parts.push_back(std::move(part));
    return;
  }
  const Vector3<double> size = box.high - box.low;
  const std::size_t axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
  const std::size_t middle = span.begin + (span.end - span.begin) / 2;
  const auto at = [this](std::size_t i) {
    return m_order.begin() + static_cast<std::ptrdiff_t>(i);
  };
  std::nth_element(at(span.begin), at(middle), at(span.end),
                   [this, axis](std::uint32_t a, std::uint32_t b) {
                     const float one = m_middles[a][axis], other = m_middles[b][axis];
                     return one != other ? one < other : a < b;
                   });
  m_open.push_back({middle, span.end});
  m_open.push_back({span.begin, middle});
}

void LevelMaker::Simplify(Part& part) const {
  // Its own vertices alone: the library's work grows with all that it is given.
  Corners vertices = part.levels[0];
  std::sort(vertices.begin(), vertices.end());
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  std::vector<MeshData::Float3> points;
  points.reserve(vertices.size());
  for (const std::uint32_t vertex : vertices) points.push_back(m_mesh->positions[vertex]);
  const auto numberOf = [&vertices](std::uint32_t vertex) {
    return static_cast<std::uint32_t>(std::lower_bound(vertices.begin(), vertices.end(), vertex) -
                                      vertices.begin());
  };
  Corners corners = part.levels[0];
  std::transform(corners.begin(), corners.end(), corners.begin(), numberOf);
  const float scale = meshopt_simplifyScale(&points[0][0], points.size(), sizeof(points[0]));
  bool loses = false;
  for (std::size_t level = 0; level < MeshLevels::kCount; ++level) {
    if (level > 0) {
      Corners coarse(corners.size());
      float error = 0.0f;
      coarse.resize(meshopt_simplify(coarse.data(), corners.data(), corners.size(), &points[0][0],
                                     points.size(), sizeof(points[0]), corners.size() / 6 * 3,
                                     kMostDeviation, meshopt_SimplifyLockBorder, &error));
      if (coarse.empty() ||
          static_cast<double>(coarse.size()) > kLeastGain * static_cast<double>(corners.size()))
        return;
      corners = std::move(coarse);
      part.errors[level] = part.errors[level - 1] + error * scale;
      part.shapes[level] = part.shapes[level - 1] + error * scale;
    }
    meshopt_optimizeVertexCache(corners.data(), corners.data(), corners.size(), points.size());
    Corners& made = part.levels[level];
    made.resize(corners.size());
    std::transform(corners.begin(), corners.end(), made.begin(),
                   [&vertices](std::uint32_t number) { return vertices[number]; });
    if (level == 0) continue;
    loses = loses || LosesDetail(part.levels[0], made, part.errors[level]);
    if (loses)
      part.errors[level] = std::max(part.errors[level], static_cast<float>(0.5 * MeanEdge(made)));
  }
}

/// Whether normals, colours or places in the texture come out otherwise. `reach` is how far the two
/// surfaces lie apart (m).
bool LevelMaker::LosesDetail(const Corners& fine, const Corners& coarse, double reach) const {
  auto surface = std::make_shared<util::CMesh>();
  for (const std::uint32_t corner : coarse) {
    surface->faces.push_back(static_cast<std::int32_t>(surface->vertices.size()));
    surface->vertices.push_back(PointOf(m_mesh->positions[corner]));
  }
  const util::MeshRays rays(surface);
  const std::size_t step = std::max<std::size_t>(1, fine.size() / 3 / kMostSamples);
  constexpr double kThird[3] = {1.0 / 3.0, 1.0 / 3.0, 1.0 / 3.0};
  double normals = 0.0, colours = 0.0, places = 0.0;
  std::size_t samples = 0, hits = 0;
  for (std::size_t i = 0; i + 2 < fine.size(); i += 3 * step) {
    const Vector3<double> a = PointOf(m_mesh->positions[fine[i]]),
                          b = PointOf(m_mesh->positions[fine[i + 1]]),
                          c = PointOf(m_mesh->positions[fine[i + 2]]);
    Vector3<double> out = (b - a).cross(c - a);
    const double length = out.length();
    if (!(length > 0.0)) continue;
    out *= (2.0 * reach + 1e-3 * std::sqrt(length)) / length;
    ++samples;
    util::MeshRays::Hit hit;
    if (!rays.intersect((a + b + c) / 3.0 + out, out * -2.0, 1.0, hit)) continue;
    ++hits;
    const std::uint32_t* met = &coarse[3 * static_cast<std::size_t>(hit.triangle)];
    hit.edge1 = PointOf(m_mesh->positions[met[1]]) - PointOf(m_mesh->positions[met[0]]);
    hit.edge2 = PointOf(m_mesh->positions[met[2]]) - PointOf(m_mesh->positions[met[0]]);
    double weights[3];
    WeightsAt(hit, PointOf(m_mesh->positions[met[0]]), weights);
    const Look one = LookAt(*m_mesh, &fine[i], kThird), other = LookAt(*m_mesh, met, weights);
    normals += (one.normal - other.normal).lengthSquared();
    for (std::size_t k = 0; k < 4; ++k) colours += std::pow(one.colour[k] - other.colour[k], 2.0);
    for (std::size_t k = 0; k < 2; ++k) places += std::pow(one.place[k] - other.place[k], 2.0);
  }
  const double n = std::max<double>(1.0, static_cast<double>(hits));
  return 4 * hits < 3 * samples || std::sqrt(normals / n) > kNormalTolerance ||
         std::sqrt(colours / n) > kColourTolerance || std::sqrt(places / n) > kPlaceTolerance;
}

double LevelMaker::MeanEdge(const Corners& indices) const {
  double sum = 0.0;
  for (std::size_t i = 0; i + 2 < indices.size(); i += 3)
    for (std::size_t k = 0; k < 3; ++k)
      sum += (PointOf(m_mesh->positions[indices[i + k]]) -
              PointOf(m_mesh->positions[indices[i + (k + 1) % 3]]))
                 .length();
  return sum / static_cast<double>(std::max<std::size_t>(1, indices.size()));
}

/// Level by level, so that one range holds all pieces of a level.
void LevelMaker::Assemble() {
  m_made = std::make_shared<MeshLevels>();
  m_made->pieces.resize(m_parts.size());
  for (std::size_t level = 0; level < MeshLevels::kCount; ++level) {
    MeshLevels::Range& whole = m_made->whole[level];
    whole.first = static_cast<std::uint32_t>(m_made->indices.size());
    bool isNew = level == 0;
    for (const Part& part : m_parts) isNew = isNew || !part.levels[level].empty();
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
      Part& part = m_parts[i];
      MeshLevels::Piece& piece = m_made->pieces[i];
      piece.box = part.box;
      // What has no such level keeps the one before.
      if (level > 0 && part.levels[level].empty()) {
        part.levels[level] = std::move(part.levels[level - 1]);
        part.errors[level] = part.errors[level - 1];
        part.shapes[level] = part.shapes[level - 1];
      }
      MeshLevels::Range& range = piece.levels[level];
      if (!isNew) {
        range = piece.levels[level - 1];
        continue;
      }
      range.first = static_cast<std::uint32_t>(m_made->indices.size());
      range.count = static_cast<std::uint32_t>(part.levels[level].size());
      range.error = part.errors[level];
      range.shape = part.shapes[level];
      whole.error = std::max(whole.error, range.error);
      whole.shape = std::max(whole.shape, range.shape);
      m_made->indices.insert(m_made->indices.end(), part.levels[level].begin(),
                             part.levels[level].end());
    }
    if (isNew)
      whole.count = static_cast<std::uint32_t>(m_made->indices.size()) - whole.first;
    else
      whole = m_made->whole[level - 1];
  }
  m_parts.clear();
}

// --- all meshes ---

void LevelStore::Follow(const FramePacket& packet) {
  for (auto at = m_held.begin(); at != m_held.end();)
    at = at->second.mesh.expired() ? m_held.erase(at) : std::next(at);
  m_wanted.clear();
  for (const Batch& batch : packet.batches)
    if (!m_held.count(batch.mesh->id) && (!m_maker || m_maker->GetMesh() != batch.mesh))
      m_wanted.push_back(batch.mesh);
  const auto size = [](const std::weak_ptr<const MeshData>& mesh) {
    const auto held = mesh.lock();
    return held ? held->indices.size() : 0;
  };
  std::stable_sort(m_wanted.begin(), m_wanted.end(),
                   [&](const auto& a, const auto& b) { return size(a) < size(b); });
}

bool LevelStore::Work() {
  if (m_maker) {
    if (m_maker->Work()) return true;
    m_held[m_maker->GetMesh()->id] = {m_maker->GetMesh(), m_maker->Take()};
    m_maker.reset();
  }
  while (!m_maker && !m_wanted.empty()) {
    const auto mesh = m_wanted.back().lock();
    m_wanted.pop_back();
    if (mesh && !m_held.count(mesh->id)) m_maker = std::make_unique<LevelMaker>(mesh);
  }
  return m_maker != nullptr;
}

const MeshLevels* LevelStore::Find(const MeshData& mesh) const {
  const auto held = m_held.find(mesh.id);
  return held != m_held.end() ? held->second.levels.get() : nullptr;
}

}  // namespace orv::app::view
