#include "app/studio/view/packet/LevelChoice.h"

#include <algorithm>
#include <cmath>

namespace orv::app::view {

namespace {

constexpr double kMostError = 1.0, kMostRoughError = 2.0;  ///< pixels
constexpr double kDense = 3.0;                             ///< pixels, the edge of a triangle
constexpr double kLeastDepth = 1e-3;                       ///< m

std::size_t CoarsestLevel(const std::array<MeshLevels::Range, MeshLevels::kCount>& levels,
                          double perMetre, bool isRough) {
  std::size_t level = 0;
  const auto fits = [perMetre, isRough](const MeshLevels::Range& range) {
    return isRough ? static_cast<double>(range.shape) * perMetre <= kMostRoughError
                   : static_cast<double>(range.error) * perMetre <= kMostError;
  };
  while (level + 1 < levels.size() && fits(levels[level + 1])) ++level;
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

LevelChoice::LevelChoice(const FramePacket& packet, int height, bool isRough) : m_isRough(isRough) {
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
  m_leastAhead = 1.0 / std::sqrt(1.0 + 1.0 / (w * w) + 1.0 / (h * h));
}

LevelChoice::Seen LevelChoice::Look(const Instance& instance, const util::Box& box) const {
  const util::Vector3<double> at = box.middle(), half = (box.high - box.low) * 0.5;
  // The box around it along the axes of the packet's space.
  double middle[3], reach[3], scale = 0.0;
  for (int row = 0; row < 3; ++row) {
    const float* m = instance.pose + 4 * row;
    middle[row] = static_cast<double>(m[0]) * at.x + static_cast<double>(m[1]) * at.y +
                  static_cast<double>(m[2]) * at.z + static_cast<double>(m[3]);
    reach[row] = 0.0;
    for (int k = 0; k < 3; ++k) reach[row] += std::abs(static_cast<double>(m[k])) * half[k];
  }
  for (int k = 0; k < 3; ++k) {
    const double length = std::sqrt(std::pow(static_cast<double>(instance.pose[k]), 2.0) +
                                    std::pow(static_cast<double>(instance.pose[4 + k]), 2.0) +
                                    std::pow(static_cast<double>(instance.pose[8 + k]), 2.0));
    scale = std::max(scale, length);
  }
  Seen seen;
  seen.isInside = true;
  for (const auto& plane : m_planes) {
    double distance = plane[3];
    for (std::size_t k = 0; k < 3; ++k)
      distance += plane[k] * middle[k] + std::abs(plane[k]) * reach[k];
    seen.isInside = seen.isInside && distance > 0.0;
  }
  double distance = 0.0;
  for (int k = 0; k < 3; ++k)
    distance += std::pow(std::max(std::abs(middle[k]) - reach[k], 0.0), 2.0);
  seen.perMetre = scale * m_focus / std::max(m_leastAhead * std::sqrt(distance), kLeastDepth);
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
      const std::size_t level = CoarsestLevel(piece.levels, seen.perMetre, m_isRough);
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
  const std::size_t level = levels ? CoarsestLevel(levels->whole, perMetre, m_isRough) : 0;
  ranges.push_back(levels ? levels->whole[level] : range);
  return (levels ? EdgeOf(edge, levels->whole, level) : edge) * perMetre < kDense;
}

}  // namespace orv::app::view
