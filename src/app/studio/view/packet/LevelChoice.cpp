#include "app/studio/view/packet/LevelChoice.h"

#include <algorithm>
#include <cmath>

namespace orv::app::view {

namespace {

constexpr double kMostError = 1.0;    ///< pixels
constexpr double kDense = 3.0;        ///< pixels, the edge of a triangle
constexpr double kLeastDepth = 1e-3;  ///< m

std::size_t CoarsestLevel(const std::array<MeshLevels::Range, MeshLevels::kCount>& levels,
                          double perMetre) {
  std::size_t level = 0;
  while (level + 1 < levels.size() &&
         static_cast<double>(levels[level + 1].error) * perMetre <= kMostError)
    ++level;
  return level;
}

/// Of a level's triangles on average, by how many are left of a mesh whose edges are so long.
double EdgeOf(double edge, const std::array<MeshLevels::Range, MeshLevels::kCount>& levels,
              std::size_t level) {
  return edge * std::sqrt(static_cast<double>(levels[0].count) /
                          static_cast<double>(std::max(levels[level].count, 1u)));
}

void Add(const MeshLevels::Range& range, std::vector<MeshLevels::Range>& ranges) {
  if (!ranges.empty() && ranges.back().first + ranges.back().count == range.first)
    ranges.back().count += range.count;
  else
    ranges.push_back(range);
}

}  // namespace

LevelChoice::LevelChoice(const FramePacket& packet, int height) {
  const auto& view = packet.camera.view;
  const auto& projection = packet.camera.projection;
  m_focus = 0.5 * height * static_cast<double>(projection[5]);
  // In the space of the eye, which looks along -Z.
  const double w = projection[0], h = projection[5];
  const double planes[5][3] = {{w, 0, -1}, {-w, 0, -1}, {0, h, -1}, {0, -h, -1}, {0, 0, -1}};
  for (std::size_t i = 0; i < m_planes.size(); ++i) {
    const double length = std::sqrt(planes[i][0] * planes[i][0] + planes[i][1] * planes[i][1] +
                                    planes[i][2] * planes[i][2]);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      m_planes[i][axis] = 0.0;
      for (std::size_t k = 0; k < 3; ++k)
        m_planes[i][axis] += planes[i][k] / length * static_cast<double>(view[4 * axis + k]);
    }
    m_planes[i][3] = 0.0;
    for (std::size_t k = 0; k < 3; ++k)
      m_planes[i][3] += planes[i][k] / length * static_cast<double>(view[12 + k]);
  }
  for (std::size_t axis = 0; axis < 3; ++axis) m_ahead[axis] = m_planes[4][axis];
}

LevelChoice::Seen LevelChoice::Look(const Instance& instance, const util::Box& box) const {
  const util::Vector3<double> at = box.middle(), half = (box.high - box.low) * 0.5;
  double middle[3], radius = 0.0, scale = 0.0;
  for (int row = 0; row < 3; ++row) {
    const float* m = instance.pose + 4 * row;
    middle[row] = static_cast<double>(m[0]) * at.x + static_cast<double>(m[1]) * at.y +
                  static_cast<double>(m[2]) * at.z + static_cast<double>(m[3]);
  }
  for (int k = 0; k < 3; ++k) {
    const double length = std::sqrt(std::pow(static_cast<double>(instance.pose[k]), 2.0) +
                                    std::pow(static_cast<double>(instance.pose[4 + k]), 2.0) +
                                    std::pow(static_cast<double>(instance.pose[8 + k]), 2.0));
    radius += length * half[k];
    scale = std::max(scale, length);
  }
  Seen seen;
  seen.isInside = true;
  for (const auto& plane : m_planes)
    seen.isInside =
        seen.isInside &&
        plane[0] * middle[0] + plane[1] * middle[1] + plane[2] * middle[2] + plane[3] > -radius;
  const double depth = m_ahead[0] * middle[0] + m_ahead[1] * middle[1] + m_ahead[2] * middle[2];
  seen.perMetre = scale * m_focus / std::max(depth - radius, kLeastDepth);
  return seen;
}

bool LevelChoice::Choose(const Instance* instances, const Batch& batch, const MeshLevels* levels,
                         std::vector<MeshLevels::Range>& ranges) const {
  ranges.clear();
  const MeshData& mesh = *batch.mesh;
  const double edge = mesh.edge;
  double perMetre = 0.0;
  if (levels && batch.count == 1) {
    bool isDense = true;
    for (const MeshLevels::Piece& piece : levels->pieces) {
      const Seen seen = Look(instances[0], piece.box);
      if (!seen.isInside) continue;
      const std::size_t level = CoarsestLevel(piece.levels, seen.perMetre);
      Add(piece.levels[level], ranges);
      isDense = isDense && EdgeOf(edge, piece.levels, level) * seen.perMetre < kDense;
    }
    return isDense;
  }
  bool isInside = false;
  for (std::uint32_t i = 0; i < batch.count; ++i) {
    const Seen seen = Look(instances[i], mesh.box);
    if (!seen.isInside) continue;
    isInside = true;
    perMetre = std::max(perMetre, seen.perMetre);
  }
  if (!isInside) return false;
  MeshLevels::Range range;
  range.count = static_cast<std::uint32_t>(mesh.indices.size());
  const std::size_t level = levels ? CoarsestLevel(levels->whole, perMetre) : 0;
  ranges.push_back(levels ? levels->whole[level] : range);
  return (levels ? EdgeOf(edge, levels->whole, level) : edge) * perMetre < kDense;
}

}  // namespace orv::app::view
