#include "plugins/release/crawlertracks/BeltPath.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"

namespace orv::rws::addon {

namespace {

using util::kPi;
/// An arc this close to a whole turn is none: rounding made it so (rad).
constexpr double kNoArc = 1e-6;
/// Area of the wheels' polygon, in squares of its extent, below which they stand in one line.
constexpr double kInLine = 1e-9;
/// Arc beyond which an inner circle can only be one that the line would have to bend inwards for.
constexpr double kMostArc = 1.5 * kPi;

PlanePoint operator+(PlanePoint a, PlanePoint b) {
  return {a.z + b.z, a.y + b.y};
}
PlanePoint operator-(PlanePoint a, PlanePoint b) {
  return {a.z - b.z, a.y - b.y};
}
PlanePoint operator*(PlanePoint a, double f) {
  return {a.z * f, a.y * f};
}

/// 1 when the line has the inside on its left (from z to y), else -1.
double TurnOf(const std::vector<BeltCircle>& circles) {
  double area = 0.0, extent = 0.0;
  const PlanePoint origin = circles.front().centre;
  for (std::size_t i = 0; i < circles.size(); ++i) {
    const PlanePoint a = circles[i].centre - origin;
    const PlanePoint b = circles[(i + 1) % circles.size()].centre - origin;
    area += a.z * b.y - b.z * a.y;
    extent = std::max(extent, a.z * a.z + a.y * a.y);
  }
  if (std::abs(area) > kInLine * extent) return area > 0.0 ? 1.0 : -1.0;
  // In one line: the way there is the one below.
  return circles[1 % circles.size()].centre.z >= origin.z ? 1.0 : -1.0;
}

}  // namespace

/// The common tangents of circles with signed radii r (left-turning above 0): with n the left
/// normal of the tangent and D from centre to centre, D·n is the difference of the radii.
bool BeltPath::Build(const std::vector<BeltCircle>& circles, double turn, BeltPath& path,
                     std::vector<bool>& reached, std::string& problem) {
  const std::size_t count = circles.size();
  std::vector<double> normals(count);  // angle of the left normal of the tangent from i to i + 1
  path = BeltPath();
  path.m_turn = turn;
  for (std::size_t i = 0; i < count; ++i) {
    const BeltCircle &a = circles[i], &b = circles[(i + 1) % count];
    const PlanePoint way = b.centre - a.centre;
    const double distance = std::hypot(way.z, way.y);
    const double difference = turn * (b.radius - a.radius);
    if (!(std::abs(difference) < distance)) {
      problem = "two of its wheels are too close to each other: one stands within the other's line";
      return false;
    }
    normals[i] = std::atan2(way.y, way.z) + std::acos(difference / distance);
  }
  reached.assign(count, true);
  double turned = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t next = (i + 1) % count;
    const BeltCircle &a = circles[i], &b = circles[next];
    const PlanePoint normal{std::cos(normals[i]), std::sin(normals[i])};
    Piece straight;
    straight.start = a.centre - normal * (turn * a.radius);
    straight.direction = {normal.y, -normal.z};
    const PlanePoint way = b.centre - normal * (turn * b.radius) - straight.start;
    straight.length = std::hypot(way.z, way.y);
    path.m_pieces.push_back(straight);

    Piece arc;
    arc.isArc = true;
    arc.centre = b.centre;
    arc.radius = turn * b.radius;
    const double sense = arc.radius >= 0.0 ? 1.0 : -1.0;
    double sweep = std::fmod(sense * (normals[next] - normals[i]), 2.0 * kPi);
    if (sweep < 0.0) sweep += 2.0 * kPi;
    if (sweep > 2.0 * kPi - kNoArc) sweep = 0.0;
    reached[next] = b.radius < 0.0 || sweep < kMostArc || count < 3;
    turned += sense * sweep;
    arc.angle = normals[i] + (sense > 0.0 ? kPi : 0.0);
    arc.length = sweep * std::abs(arc.radius);
    path.m_pieces.push_back(arc);
  }
  for (const Piece& piece : path.m_pieces) path.m_length += piece.length;
  if (std::find(reached.begin(), reached.end(), false) != reached.end()) return true;
  if (std::abs(turned - 2.0 * kPi * turn) > 1e-3) {
    problem =
        "its line would cross itself: the wheels must follow each other round the belt in the "
        "order in which they were added";
    return false;
  }
  return true;
}

std::optional<BeltPath> BeltPath::Lay(const std::vector<BeltCircle>& circles,
                                      std::string& problem) {
  std::vector<BeltCircle> left = circles;
  if (left.empty() || !(left.front().radius > 0.0)) {
    problem = "it needs an inner wheel first";
    return std::nullopt;
  }
  BeltPath path;
  while (left.size() > 1) {
    std::vector<bool> reached;
    if (!Build(left, TurnOf(left), path, reached, problem)) return std::nullopt;
    const auto gone = std::find(reached.begin(), reached.end(), false);
    if (gone == reached.end()) return path;
    left.erase(left.begin() + (gone - reached.begin()));
  }
  Piece circle;
  circle.isArc = true;
  circle.centre = left.front().centre;
  circle.radius = left.front().radius;
  circle.length = path.m_length = 2.0 * kPi * circle.radius;
  path.m_pieces = {circle};
  return path;
}

double BeltPath::GetArcLength() const {
  double length = 0.0;
  for (const Piece& piece : m_pieces)
    if (piece.isArc) length += piece.length;
  return length;
}

BeltPath::Place BeltPath::At(double s) const {
  s = std::fmod(s, m_length);
  if (s < 0.0) s += m_length;
  std::size_t i = 0;
  while (i + 1 < m_pieces.size() && s >= m_pieces[i].length) s -= m_pieces[i++].length;
  const Piece& piece = m_pieces[i];
  if (!piece.isArc) {
    // The outside is on the right of a line that has the inside on its left.
    const PlanePoint right{piece.direction.y, -piece.direction.z};
    return {piece.start + piece.direction * s, right * m_turn};
  }
  const double angle = piece.angle + s / piece.radius;
  const PlanePoint out{std::cos(angle), std::sin(angle)};
  const bool innerSide = piece.radius * m_turn > 0.0;
  return {piece.centre + out * std::abs(piece.radius), out * (innerSide ? 1.0 : -1.0)};
}

double BeltPath::GetPitch(int count) const {
  double pitch = m_length / count;
  for (int round = 0; round < 8; ++round) {
    double length = 0.0;
    for (const Piece& piece : m_pieces) {
      if (!piece.isArc) {
        length += piece.length;
        continue;
      }
      // A step of this length on the arc spans an angle of 2 atan(pitch / 2 radius).
      const double half = pitch / (2.0 * std::abs(piece.radius));
      length += half < 1.0 ? piece.length * half / std::atan(half) : piece.length;
    }
    pitch = length / count;
  }
  return pitch;
}

}  // namespace orv::rws::addon
