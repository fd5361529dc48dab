// A curve of the host's scene as a path.
#pragma once

#include "plugins/release/splinespeedcontroller/SplineInformation.h"
#include "util/Matrix.h"

namespace orv::rws {
class CInterface;
class CNode;
}  // namespace orv::rws

namespace orv::rws::addon {

/// The curve that is the parent of a node, at one time. Every question acquires the curve and hands
/// it back. The host gives points, tangents and arc length as they are in the world; the raw ones
/// are these seen from the curve's node.
class NodeSpline : public SplineInformation {
 public:
  NodeSpline() = default;
  NodeSpline(const NodeSpline&) = delete;
  NodeSpline& operator=(const NodeSpline&) = delete;
  ~NodeSpline() override { Unbind(); }

  /// Takes hold of the parent of `child` (may be null), until Unbind.
  void Bind(CInterface& core, CNode* child);
  void Unbind();
  bool IsBound() const { return m_node != nullptr; }
  /// Whether the bound node's host has curves at all.
  bool IsSupported() const;
  /// The time that all questions are about (s).
  void SetTime(double time) { m_time = time; }

  Vector WorldTangent(double u) override;
  Vector RawTangent(double u) override;
  Vector WorldPosition(double u) override;
  Vector RawPosition(double u) override;
  double RawLength() override;
  double WorldLength() override;
  /// A curve without length carries nothing either.
  bool IsValid() override;
  /// Arc parameter of the point that is closest to `point` (world).
  double Closest(const Vector& point);

 private:
  class Shape;

  util::Matrix<double> NodeMatrix() const;

  CInterface* m_core = nullptr;  ///< while bound
  CNode* m_node = nullptr;       ///< handed out by the core, goes back in Unbind
  double m_time = 0.0;
};

/// The length of a node's scale, measured so that a node of scale 1 has length 1.
double ScaleLength(const util::Vector3<double>& scale);

}  // namespace orv::rws::addon
