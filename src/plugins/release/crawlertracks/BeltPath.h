// The line on which a belt is laid round its wheels.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orv::rws::addon {

/// A point or direction in the plane of the belt: `z` and `y` of the Frame's space.
struct PlanePoint {
  double z = 0.0;
  double y = 0.0;
};

/// A wheel as the belt's line meets it.
struct BeltCircle {
  PlanePoint centre;
  /// Distance of the line from the centre: above 0 for an inner wheel, which the belt has inside of
  /// it, below 0 for an outer one, which presses on the belt from outside.
  double radius = 0.0;
};

/// The closed line of tangents and arcs round circles. Lengths are in the unit of the circles.
class BeltPath {
 public:
  struct Place {
    PlanePoint point;
    PlanePoint outward;  ///< unit normal, away from the inside of the belt
  };

  /// Through the circles in their order and back to the first. Circles in one line are passed below
  /// (-y) on the way there and above on the way back. An inner circle that the line would have to
  /// bend inwards for is left out: the belt does not reach it. Empty, with the reason in `problem`,
  /// when there is no such line.
  static std::optional<BeltPath> Lay(const std::vector<BeltCircle>& circles, std::string& problem);

  double GetLength() const { return m_length; }
  /// Whether the line, as it goes on, has the inside on its left (from z to y).
  bool IsLeftTurning() const { return m_turn > 0.0; }
  /// Length of the arcs alone.
  double GetArcLength() const;
  /// The place at arc length `s` from the first circle's last point, wrapping.
  Place At(double s) const;
  /// Length of one of `count` equal, straight steps whose middles lie evenly on the line and which
  /// touch its arcs: a little more than an even share of the line.
  double GetPitch(int count) const;

 private:
  struct Piece {
    double length = 0.0;
    PlanePoint start;      ///< straight piece
    PlanePoint direction;  ///< straight piece, unit
    PlanePoint centre;     ///< arc
    double radius = 0.0;   ///< arc, as the circle's but above 0 when it turns left
    double angle = 0.0;    ///< arc: of the outer normal at its start (rad)
    bool isArc = false;
  };
  static bool Build(const std::vector<BeltCircle>& circles, double turn, BeltPath& path,
                    std::vector<bool>& reached, std::string& problem);

  std::vector<Piece> m_pieces;
  double m_length = 0.0;
  double m_turn = 1.0;  ///< 1 when the line runs round the inside with the inside on its left
};

}  // namespace orv::rws::addon
