#include "app/studio/view/manipulator/Drag.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"

namespace orv::app::view {

using util::Quat;
using util::Vector3;
using Kind = Constraint::Kind;

namespace {

/// Below this cosine between sight and axis a ring is seen from its side, and follows its tangent.
constexpr double kEdgeOn = 0.25;
constexpr double kLeastFactor = 1e-3;  ///< a drag neither mirrors nor flattens
constexpr double kFarthest = 1e7;      ///< m, that a pointer near a horizon may mean
/// A pointer so near to the pivot (pixels) has no distance that a scale could be measured by.
constexpr double kNearPivot = 20.0;

}  // namespace

Drag::Drag(Tool tool, const Constraint& constraint, Grip grip, const Frame& frame,
           const ViewFrame& view, double size, double reach, const Pixel& start)
    : m_tool(tool),
      m_constraint(constraint),
      m_grip(grip),
      m_frame(frame),
      m_view(view),
      m_anchor(AnchorOf(frame.origin, view, reach)),
      m_size(size),
      m_start(start) {
  m_hasStart =
      m_tool == Tool::kTurn ? FindAngle(start, m_lastAngle) : FindMove(start, m_startPlace);
  m_change = Begin();
}

Vector3<double> Drag::AnchorOf(const Vector3<double>& pivot, const ViewFrame& view, double reach) {
  constexpr double kLeastDepth = 1e-3;  ///< m
  if (view.DepthOf(pivot) > kLeastDepth) return pivot;
  return view.GetEye() + view.GetForward() * reach;
}

Change Drag::Begin() const {
  Change change;
  change.tool = m_tool;
  change.isFree = m_constraint.kind == Kind::kFree;
  // A plane is turned within: about what is upright on it.
  change.axis = change.isFree ? -1 : m_constraint.axis;
  change.about = GetTurnAxis();
  return change;
}

Vector3<double> Drag::GetTurnAxis() const {
  return m_constraint.kind == Kind::kFree ? -m_view.GetForward() : m_frame.axes[m_constraint.axis];
}

Change Drag::Follow(const Pixel& at) {
  if (m_tool == Tool::kTurn) m_change.angle = FollowTurn(at);
  Vector place;
  if (m_tool == Tool::kMove && m_hasStart && FindMove(at, place)) {
    const Vector inside = m_frame.FromWorld(place - m_startPlace);
    for (int i = 0; i < 3; ++i)
      m_change.move[i] = m_constraint.Has(i) ? std::clamp(inside[i], -kFarthest, kFarthest) : 0.0;
  }
  if (m_tool == Tool::kScale) {
    const double factor = FollowScale(at);
    for (int i = 0; i < 3; ++i) m_change.factors[i] = m_constraint.Has(i) ? factor : 1.0;
  }
  return m_change;
}

bool Drag::FindMove(const Pixel& at, Vector& place) const {
  const Ray ray = m_view.RayAt(at);
  if (m_constraint.kind == Kind::kAxis) {
    const Vector& axis = m_frame.axes[m_constraint.axis];
    double along = 0.0;
    if (!MeetLine(ray, m_anchor, axis, along)) return false;
    place = m_anchor + axis * along;
    return true;
  }
  const Vector normal =
      m_constraint.kind == Kind::kPlane ? m_frame.axes[m_constraint.axis] : m_view.GetForward();
  return MeetPlane(ray, m_anchor, normal, place);
}

// --- turning ---

/// Where the pointer stands around the axis (radians); from its side a ring is unrolled.
bool Drag::FindAngle(const Pixel& at, double& angle) const {
  const Vector axis = GetTurnAxis(), sight = m_view.SightTo(m_anchor);
  if (std::abs(axis.dot(sight)) < kEdgeOn) {
    const Vector tangent = -axis.cross(sight);  // the way of what is nearest to the eye
    Pixel way{tangent.dot(m_view.GetRight()), -tangent.dot(m_view.GetUp())};
    const double length = way.Length(), radius = m_size / m_view.PixelSize(m_anchor);
    if (!(length > 0.0 && radius > 0.0)) return false;
    angle = (at - m_start).Dot(way) / (length * radius);
    return true;
  }
  Vector hit;
  if (!MeetPlane(m_view.RayAt(at), m_anchor, axis, hit)) return false;
  const Vector arm = hit - m_anchor;
  // Any two directions across the axis, the same ones each time.
  const Vector helper = std::abs(axis.x) < 0.9 ? Vector(1.0, 0.0, 0.0) : Vector(0.0, 1.0, 0.0);
  const Vector u = (helper - axis * axis.dot(helper)).normalized();
  angle = std::atan2(arm.dot(axis.cross(u)), arm.dot(u));
  return true;
}

double Drag::FollowTurn(const Pixel& at) {
  double angle = 0.0;
  if (!m_hasStart || !FindAngle(at, angle)) return m_change.angle;
  const double by = angle - m_lastAngle;
  m_lastAngle = angle;
  const bool isUnrolled = std::abs(GetTurnAxis().dot(m_view.SightTo(m_anchor))) < kEdgeOn;
  return m_change.angle + (isUnrolled ? by : std::remainder(by, 2.0 * util::kPi));
}

// --- scaling ---

double Drag::FollowScale(const Pixel& at) {
  double factor = m_change.factors[m_constraint.kind == Kind::kAxis    ? m_constraint.axis
                                   : m_constraint.kind == Kind::kPlane ? (m_constraint.axis + 1) % 3
                                                                       : 0];
  Pixel pivot;
  Vector place;
  const bool isAxis = m_grip == Grip::kHandle && m_constraint.kind == Kind::kAxis;
  if (isAxis && m_hasStart) {
    const Vector& axis = m_frame.axes[m_constraint.axis];
    const double start = (m_startPlace - m_anchor).dot(axis);
    if (!FindMove(at, place)) return factor;
    const double now = (place - m_anchor).dot(axis);
    factor = start > 0.1 * m_size ? now / start : 1.0 + (now - start) / m_size;
  } else if (m_view.Project(m_anchor, pivot)) {
    const double start = (m_start - pivot).Length();
    const bool isCentre = m_grip == Grip::kHandle && m_constraint.kind == Kind::kFree;
    const Pixel way = at - m_start;
    factor = isCentre || start < kNearPivot
                 ? 1.0 + (way.x - way.y) * m_view.PixelSize(m_anchor) / m_size
                 : (at - pivot).Length() / start;
  }
  return std::max(factor, kLeastFactor);
}

// --- snapping ---

void SnapToSteps(const SnapSteps& steps, const Constraint& constraint, const Frame& frame,
                 const Vector3<double>* lattice, Change& change) {
  const auto round = [](double value, double step) { return std::round(value / step) * step; };
  if (change.tool == Tool::kTurn) change.angle = round(change.angle, steps.angle);
  for (int i = 0; i < 3; ++i) {
    if (!constraint.Has(i)) continue;
    if (change.tool == Tool::kScale)
      change.factors[i] =
          std::max(1.0 + round(change.factors[i] - 1.0, steps.factor), steps.factor);
    if (change.tool != Tool::kMove) continue;
    const double from = lattice ? frame.axes[i].dot(frame.origin - *lattice) : 0.0;
    change.move[i] = round(from + change.move[i], steps.length) - from;
  }
}

void SnapToPlace(const Vector3<double>& place, const Constraint& constraint, const Frame& frame,
                 Change& change) {
  const Vector3<double> way = frame.FromWorld(place - frame.origin);
  for (int i = 0; i < 3; ++i) change.move[i] = constraint.Has(i) ? way[i] : 0.0;
}

void SnapToAxes(const Frame& active, const Frame& others, Change& change) {
  const auto rotation = [](const Frame& frame) {
    util::Matrix<double> m;
    for (int i = 0; i < 3; ++i) m.setAxisRow(i, frame.axes[i]);
    return Quat<double>::fromMatrix(m);
  };
  Quat<double> turn = rotation(active).conjugate() * rotation(others);
  if (turn.w < 0.0) turn = -turn;
  const Vector3<double> axis(turn.x, turn.y, turn.z);
  change.axis = -1;
  change.angle = 2.0 * std::atan2(axis.length(), turn.w);
  change.about = axis.normalized();
}

}  // namespace orv::app::view
