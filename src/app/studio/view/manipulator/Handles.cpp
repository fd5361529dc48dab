#include "app/studio/view/manipulator/Handles.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "util/Angles.h"

namespace orv::app::view {

using util::Vector3;
using Kind = Constraint::Kind;

namespace {

// Of an axis' length.
constexpr double kStem = 0.22;                          ///< where an axis begins
constexpr double kSquareFrom = 0.34, kSquareTo = 0.54;  ///< of a plane's square, along both axes
constexpr double kTip = 0.2, kTipWidth = 0.07;          ///< of an arrow
constexpr double kCube = 0.06;    ///< half of it, at the end of a scale's axis
constexpr double kCentre = 0.13;  ///< radius of the free handle of moving and scaling
constexpr double kViewRing = 1.18;
constexpr int kSteps = 64;  ///< of a circle
/// A stem or square fades from the upper sine between it and the sight to the lower one.
constexpr double kFadeFrom = 0.3, kFadeTo = 0.12;
constexpr double kRingFadeFrom = 0.12, kRingFadeTo = 0.03;
constexpr double kGuides = 400.0;  ///< lengths of an axis, to either side

constexpr Rgba kAxisColours[3] = {{230, 65, 70, 255}, {110, 190, 60, 255}, {65, 125, 235, 255}};
constexpr Rgba kFreeColour{225, 225, 225, 255}, kHotColour{255, 205, 60, 255},
    kGrey{150, 150, 150, 255};

constexpr Constraint kAll[] = {{Kind::kFree, 0},  {Kind::kPlane, 0}, {Kind::kPlane, 1},
                               {Kind::kPlane, 2}, {Kind::kAxis, 0},  {Kind::kAxis, 1},
                               {Kind::kAxis, 2}};

double Faded(double sine, double from, double to) {
  return std::clamp((sine - to) / (from - to), 0.0, 1.0);
}

double DistanceToSegment(const Pixel& at, const Pixel& from, const Pixel& to) {
  const Pixel way = to - from;
  const double length = way.Dot(way);
  const double part = length > 0.0 ? std::clamp((at - from).Dot(way) / length, 0.0, 1.0) : 0.0;
  return (at - from - Pixel{way.x * part, way.y * part}).Length();
}

Rgba WithAlpha(Rgba colour, double alpha) {
  colour[3] = static_cast<std::uint8_t>(std::lround(colour[3] * std::clamp(alpha, 0.0, 1.0)));
  return colour;
}

}  // namespace

Handles::Handles(Tool tool, const Frame& frame, const ViewFrame& view, double scale)
    : m_tool(tool),
      m_frame(frame),
      m_view(view),
      m_reach(kReach * scale),
      m_line(static_cast<float>(2.0 * scale)) {
  if (tool != Tool::kNone) m_size = std::max(0.0, kLength * scale * view.PixelSize(frame.origin));
}

double Handles::GetOpacity(const Constraint& handle) const {
  if (m_tool == Tool::kTurn && handle.kind == Kind::kPlane) return 0.0;
  if (handle.kind == Kind::kFree) return 1.0;
  const double along = std::abs(m_frame.axes[handle.axis].dot(m_view.SightTo(m_frame.origin)));
  if (m_tool == Tool::kTurn) return Faded(along, kRingFadeFrom, kRingFadeTo);
  const double sine =
      handle.kind == Kind::kPlane ? along : std::sqrt(std::max(0.0, 1.0 - along * along));
  return Faded(sine, kFadeFrom, kFadeTo);
}

// --- shapes ---

void Handles::GetStem(int axis, Vector& from, Vector& to) const {
  from = m_frame.origin + m_frame.axes[axis] * (kStem * m_size);
  to = m_frame.origin + m_frame.axes[axis] * m_size;
}

void Handles::GetSquare(int axis, Vector (&corners)[4]) const {
  const Vector &one = m_frame.axes[(axis + 1) % 3], &other = m_frame.axes[(axis + 2) % 3];
  for (int i = 0; i < 4; ++i)
    corners[i] = m_frame.origin + one * (m_size * (i == 1 || i == 2 ? kSquareTo : kSquareFrom)) +
                 other * (m_size * (i >= 2 ? kSquareTo : kSquareFrom));
}

/// The rings of turning; of the free handle a circle across the sight.
Vector3<double> Handles::OnCircle(const Constraint& handle, int step) const {
  const double angle = 2.0 * util::kPi * step / kSteps;
  const bool isFree = handle.kind == Kind::kFree;
  const Vector one = isFree ? m_view.GetRight() : m_frame.axes[(handle.axis + 1) % 3];
  const Vector other = isFree ? m_view.GetUp() : m_frame.axes[(handle.axis + 2) % 3];
  const double radius = !isFree ? 1.0 : m_tool == Tool::kTurn ? kViewRing : kCentre;
  return m_frame.origin + (one * std::cos(angle) + other * std::sin(angle)) * (radius * m_size);
}

/// The far half of a ring is neither drawn nor hit, unless the ring is seen as nearly round.
bool Handles::IsAtBack(const Constraint& handle, const Vector& onRing) const {
  return handle.kind == Kind::kAxis &&
         (onRing - m_frame.origin).dot(m_view.SightTo(m_frame.origin)) > 0.15 * m_size;
}

// --- hits ---

double Handles::DistanceToRing(const Constraint& handle, const Pixel& at) const {
  double nearest = std::numeric_limits<double>::infinity();
  Pixel before, now;
  for (int i = 0; i < kSteps; ++i) {
    const Vector from = OnCircle(handle, i), to = OnCircle(handle, i + 1);
    if (IsAtBack(handle, from) || IsAtBack(handle, to)) continue;
    if (m_view.Project(from, before) && m_view.Project(to, now))
      nearest = std::min(nearest, DistanceToSegment(at, before, now));
  }
  return nearest;
}

double Handles::DistanceToPlane(int axis, const Pixel& at) const {
  Vector corners[4];
  GetSquare(axis, corners);
  Pixel shown[4];
  for (int i = 0; i < 4; ++i)
    if (!m_view.Project(corners[i], shown[i])) return std::numeric_limits<double>::infinity();
  double nearest = std::numeric_limits<double>::infinity();
  int left = 0, right = 0;
  for (int i = 0; i < 4; ++i) {
    const Pixel &from = shown[i], &to = shown[(i + 1) % 4];
    const Pixel way = to - from, here = at - from;
    (way.x * here.y - way.y * here.x > 0.0 ? left : right) += 1;
    nearest = std::min(nearest, DistanceToSegment(at, from, to));
  }
  return left == 4 || right == 4 ? 0.0 : nearest;
}

double Handles::DistanceTo(const Constraint& handle, const Pixel& at) const {
  Pixel from, to;
  if (m_tool == Tool::kTurn) return DistanceToRing(handle, at);
  if (handle.kind == Kind::kPlane) return DistanceToPlane(handle.axis, at);
  if (handle.kind == Kind::kFree) {
    if (!m_view.Project(m_frame.origin, from) || !m_view.Project(OnCircle(handle, 0), to))
      return std::numeric_limits<double>::infinity();
    return std::max(0.0, (at - from).Length() - (to - from).Length());
  }
  Vector stem, tip;
  GetStem(handle.axis, stem, tip);
  if (!m_view.Project(stem, from) || !m_view.Project(tip, to))
    return std::numeric_limits<double>::infinity();
  return DistanceToSegment(at, from, to);
}

bool Handles::Hit(const Pixel& at, Constraint& found) const {
  if (!IsThere()) return false;
  double nearest = m_reach;
  bool isHit = false;
  for (const Constraint& handle : kAll) {
    if (GetOpacity(handle) <= 0.0) continue;
    const double distance = DistanceTo(handle, at);
    // Of two that are as near the first one counts, whose place is the smaller.
    if (!(isHit ? distance < nearest : distance <= nearest)) continue;
    nearest = distance;
    found = handle;
    isHit = true;
  }
  return isHit;
}

// --- the picture ---

Rgba Handles::ColourOf(const Constraint& handle, const Constraint* hot, bool isGrey) const {
  const bool isHot = hot && *hot == handle;
  Rgba colour = handle.kind == Kind::kFree ? kFreeColour : kAxisColours[handle.axis];
  if (isHot) colour = kHotColour;
  if (isGrey) colour = WithAlpha(kGrey, 0.5);
  return WithAlpha(colour, isHot ? 1.0 : GetOpacity(handle));
}

void Handles::DrawTip(int axis, const Vector& to, const Rgba& colour, LineSet& lines) const {
  const Vector one = m_frame.axes[(axis + 1) % 3] * m_size,
               other = m_frame.axes[(axis + 2) % 3] * m_size, along = m_frame.axes[axis] * m_size;
  if (m_tool == Tool::kMove) {
    constexpr int kSides = 12;
    const auto round = [&](int i) {
      const double angle = 2.0 * util::kPi * i / kSides;
      return to - along * kTip + (one * std::cos(angle) + other * std::sin(angle)) * kTipWidth;
    };
    for (int i = 0; i < kSides; ++i) lines.AddTriangle(to, round(i), round(i + 1), colour);
    return;
  }
  // The six sides of a cube, two triangles each.
  for (int side = 0; side < 6; ++side) {
    const Vector edges[3] = {one * kCube, other * kCube, along * kCube};
    const Vector out = edges[side / 2] * (side % 2 ? 1.0 : -1.0);
    const Vector &u = edges[(side / 2 + 1) % 3], &v = edges[(side / 2 + 2) % 3];
    lines.AddTriangle(to + out - u - v, to + out + u - v, to + out + u + v, colour);
    lines.AddTriangle(to + out - u - v, to + out + u + v, to + out - u + v, colour);
  }
}

void Handles::DrawHandle(const Constraint& handle, const Rgba& colour, LineSet& lines) const {
  if (m_tool == Tool::kTurn || handle.kind == Kind::kFree) {
    for (int i = 0; i < kSteps; ++i) {
      const Vector from = OnCircle(handle, i), to = OnCircle(handle, i + 1);
      if (!IsAtBack(handle, from) && !IsAtBack(handle, to)) lines.AddLine(from, to, colour, m_line);
    }
    return;
  }
  if (handle.kind == Kind::kAxis) {
    Vector from, to;
    GetStem(handle.axis, from, to);
    const Vector end =
        m_tool == Tool::kMove ? to - m_frame.axes[handle.axis] * (kTip * m_size) : to;
    lines.AddLine(from, end, colour, m_line);
    return DrawTip(handle.axis, to, colour, lines);
  }
  Vector corners[4];
  GetSquare(handle.axis, corners);
  const Rgba fill = WithAlpha(colour, 0.45);
  lines.AddTriangle(corners[0], corners[1], corners[2], fill);
  lines.AddTriangle(corners[0], corners[2], corners[3], fill);
  for (int i = 0; i < 4; ++i)
    lines.AddLine(corners[i], corners[(i + 1) % 4], colour, 0.5f * m_line);
}

void Handles::Draw(const Constraint* hot, bool isGrey, LineSet& lines) const {
  if (!IsThere()) return;
  for (const Constraint& handle : kAll)
    if (GetOpacity(handle) > 0.0) DrawHandle(handle, ColourOf(handle, hot, isGrey), lines);
}

void DrawGuide(const Frame& frame, const Constraint& constraint, double size, LineSet& lines) {
  if (constraint.kind == Kind::kFree) return;
  for (int axis = 0; axis < 3; ++axis) {
    if (!constraint.Has(axis)) continue;
    const Vector3<double> reach = frame.axes[axis] * (kGuides * size);
    lines.AddLine(frame.origin - reach, frame.origin + reach, WithAlpha(kAxisColours[axis], 0.7),
                  1.5f);
  }
}

}  // namespace orv::app::view
