#include "adaptor/common/HostSnapshot_Shape.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orv::rws::adaptor {

using util::Matrix;
using util::Vector3;

HostSnapshot_Shape& HostSnapshot_Shape::Bind(std::shared_ptr<const Curve> curve,
                                             const Matrix<double>& world) {
  m_inUse = true;
  // A curve never changes; a node that gets another one gets another object.
  if (m_curve != curve || m_world != world) Fill(std::move(curve), world);
  return *this;
}

void HostSnapshot_Shape::Fill(std::shared_ptr<const Curve> curve, const Matrix<double>& world) {
  m_curve = std::move(curve);
  m_world = world;
  m_points.clear();
  m_lengths.clear();
  const auto add = [this](const Vector3<double>& point) {
    const double step = m_points.empty() ? 0.0 : (point - m_points.back()).length();
    if (!m_points.empty() && !(step > 0.0)) return;
    m_lengths.push_back(m_points.empty() ? 0.0 : m_lengths.back() + step);
    m_points.push_back(point);
  };
  for (const Vector3<double>& point : m_curve->points) add(world.transformPoint(point));
  if (m_curve->closed && !m_points.empty()) add(Vector3<double>(m_points.front()));
}

/// Index of the line's first point; the last line for the whole length.
std::size_t HostSnapshot_Shape::SegmentAt(double length) const {
  const auto next = std::upper_bound(m_lengths.begin(), m_lengths.end(), length);
  const auto index = static_cast<std::size_t>(next - m_lengths.begin());
  return std::min(std::max<std::size_t>(index, 1), m_lengths.size() - 1) - 1;
}

Vector3<double> HostSnapshot_Shape::GetPoint(double fraction) {
  if (m_points.empty()) return {};
  if (m_points.size() == 1 || !(fraction > 0.0)) return m_points.front();
  if (fraction >= 1.0) return m_points.back();
  const double length = fraction * GetLength();
  const std::size_t i = SegmentAt(length);
  const double u = (length - m_lengths[i]) / (m_lengths[i + 1] - m_lengths[i]);
  return m_points[i] + (m_points[i + 1] - m_points[i]) * u;
}

Vector3<double> HostSnapshot_Shape::GetTangent(double fraction) {
  if (m_points.size() < 2) return Vector3<double>().normalized();
  const std::size_t i = SegmentAt(std::clamp(fraction, 0.0, 1.0) * GetLength());
  return (m_points[i + 1] - m_points[i]).normalized();
}

double HostSnapshot_Shape::GetClosest(const Vector3<double>& point) {
  double closest = 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < m_points.size(); ++i) {
    const Vector3<double> line = m_points[i + 1] - m_points[i];
    const double along = (point - m_points[i]).dot(line) / line.lengthSquared();
    const double share = std::clamp(along, 0.0, 1.0);
    const double distance = (m_points[i] + line * share - point).lengthSquared();
    if (!(distance < least)) continue;
    least = distance;
    closest = (m_lengths[i] + (m_lengths[i + 1] - m_lengths[i]) * share) / GetLength();
  }
  return closest;
}

}  // namespace orv::rws::adaptor
