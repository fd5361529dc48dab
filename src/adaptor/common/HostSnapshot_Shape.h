// A curve at one time.
#pragma once

#include <memory>
#include <vector>

#include "adaptor/common/Geometry.h"
#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot_Shape.h"
#include "util/Matrix.h"

namespace orv::rws::adaptor {

/// A polyline as it stands in the world at one time, with its arc length summed up. Pooled by the
/// adaptor; an object that is bound again to the same curve in the same place keeps its sums.
class HostSnapshot_Shape final : public PooledSnapshot<CSnapshot_Shape, HostSnapshot_Shape> {
 public:
  HostSnapshot_Shape& Bind(std::shared_ptr<const Curve> curve, const util::Matrix<double>& world);

  int GetCount() override { return 1; }
  int GetDegree() override { return 1; }
  double GetLength() override { return m_lengths.empty() ? 0.0 : m_lengths.back(); }
  util::Vector3<double> GetPoint(double fraction) override;
  /// The direction of the line that begins at the fraction; of the last line at the end.
  util::Vector3<double> GetTangent(double fraction) override;
  /// Exact, line by line.
  double GetClosest(const util::Vector3<double>& point) override;

 private:
  void Fill(std::shared_ptr<const Curve> curve, const util::Matrix<double>& world);
  std::size_t SegmentAt(double length) const;

  std::shared_ptr<const Curve> m_curve;  ///< what the sums were made from, node space
  util::Matrix<double> m_world;
  std::vector<util::Vector3<double>> m_points;  ///< world, no two neighbours alike
  std::vector<double> m_lengths;                ///< arc length up to each point (m)
};

}  // namespace orv::rws::adaptor
