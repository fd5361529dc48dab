#include "plugins/release/splinespeedcontroller/NodeSpline.h"

#include <cmath>

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Shape.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/SnapshotGuard.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

/// The host's curve for the length of a scope; empty when there is none.
class NodeSpline::Shape {
 public:
  explicit Shape(const NodeSpline& spline) : m_spline(spline) {
    double time = spline.m_time;
    if (spline.m_node)
      m_shape = reinterpret_cast<CSnapshot_Shape*>(
          spline.m_node->Extension(kAcquireCurve, &time, nullptr));
  }
  Shape(const Shape&) = delete;
  Shape& operator=(const Shape&) = delete;
  ~Shape() {
    if (m_shape) m_spline.m_core->ReleaseNode(static_cast<CExtendable*>(m_shape));
  }

  explicit operator bool() const { return m_shape != nullptr; }
  CSnapshot_Shape* operator->() const { return m_shape; }

 private:
  const NodeSpline& m_spline;
  CSnapshot_Shape* m_shape = nullptr;
};

double ScaleLength(const Vector& scale) {
  return scale.length() / std::sqrt(3.0);
}

void NodeSpline::Bind(CInterface& core, CNode* child) {
  Unbind();
  m_core = &core;
  m_node = child && child->IsValid() ? child->GetParent() : nullptr;
}

void NodeSpline::Unbind() {
  if (m_node) m_core->ReleaseNode(static_cast<CExtendable*>(m_node));
  m_node = nullptr;
}

bool NodeSpline::IsSupported() const {
  return m_node && m_node->HasExtension(kAcquireCurve);
}

bool NodeSpline::IsValid() {
  const Shape shape(*this);
  return shape && shape->GetLength() > 0.0;
}

Matrix NodeSpline::NodeMatrix() const {
  Matrix matrix;
  if (!m_node) return matrix;
  const SnapshotGuard snapshot(*m_core, m_node, m_time);
  if (snapshot) snapshot->GetMatrix(matrix.data());
  return matrix;
}

Vector NodeSpline::WorldTangent(double u) {
  const Shape shape(*this);
  return shape ? shape->GetTangent(u) : Vector();
}

Vector NodeSpline::RawTangent(double u) {
  const Shape shape(*this);
  if (!shape) return {};
  return NodeMatrix().inverse3x3().transformVector(shape->GetTangent(u)).normalized();
}

Vector NodeSpline::WorldPosition(double u) {
  const Shape shape(*this);
  return shape ? shape->GetPoint(u) : Vector();
}

Vector NodeSpline::RawPosition(double u) {
  const Shape shape(*this);
  return shape ? NodeMatrix().affineInverse().transformPoint(shape->GetPoint(u)) : Vector();
}

double NodeSpline::RawLength() {
  const double scale = ScaleLength(ScaleOf(NodeMatrix()));
  return scale > 0.0 ? WorldLength() / scale : 0.0;
}

double NodeSpline::WorldLength() {
  const Shape shape(*this);
  return shape ? shape->GetLength() : 0.0;
}

double NodeSpline::Closest(const Vector& point) {
  const Shape shape(*this);
  return shape ? shape->GetClosest(point) : 0.0;
}

}  // namespace orv::rws::addon
