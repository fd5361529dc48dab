// What a hand takes hold of.
#pragma once

#include <vector>

#include "app/studio/view/manipulator/Placing.h"
#include "app/studio/view/manipulator/ViewFrame.h"
#include "app/studio/view/packet/Lines.h"

namespace orv::app::view {

/// What a drag keeps to.
struct Constraint {
  enum class Kind { kFree, kAxis, kPlane };
  Kind kind = Kind::kFree;
  int axis = 0;  ///< the axis, or the one that is upright on the plane; 0, 1, 2

  /// Whether the frame's axis `i` may change.
  bool Has(int i) const { return kind == Kind::kFree || (kind == Kind::kAxis) == (i == axis); }
  friend bool operator==(const Constraint& a, const Constraint& b) {
    return a.kind == b.kind && (a.kind == Kind::kFree || a.axis == b.axis);
  }
};

/// The handles of one tool in one picture: of the same size wherever they stand. Those along the
/// view's sight fade out, and what can't be seen can't be hit.
class Handles {
 public:
  /// Lengths in pixels of the desktop at 96 dpi.
  static constexpr double kLength = 84.0, kReach = 6.0;

  /// Nothing: none is there.
  Handles() = default;
  /// `scale`: pixels of the desktop for one at 96 dpi.
  Handles(Tool tool, const Frame& frame, const ViewFrame& view, double scale);

  bool IsThere() const { return m_size > 0.0; }
  /// Length of an axis (m).
  double GetSize() const { return m_size; }
  /// The nearest within reach; false for none.
  bool Hit(const Pixel& at, Constraint& found) const;
  /// `hot` is drawn as one that is held; null for none. Grey ones can't be used now.
  void Draw(const Constraint* hot, bool isGrey, LineSet& lines) const;
  /// 0 for one that can't be seen, to 1.
  double GetOpacity(const Constraint& handle) const;

 private:
  using Vector = util::Vector3<double>;

  double DistanceTo(const Constraint& handle, const Pixel& at) const;
  double DistanceToRing(const Constraint& handle, const Pixel& at) const;
  double DistanceToPlane(int axis, const Pixel& at) const;
  /// Ends of an axis' stem, corners of a plane's square, points of a circle.
  void GetStem(int axis, Vector& from, Vector& to) const;
  void GetSquare(int axis, Vector (&corners)[4]) const;
  Vector OnCircle(const Constraint& handle, int step) const;
  bool IsAtBack(const Constraint& handle, const Vector& onRing) const;
  Rgba ColourOf(const Constraint& handle, const Constraint* hot, bool isGrey) const;
  void DrawHandle(const Constraint& handle, const Rgba& colour, LineSet& lines) const;
  void DrawTip(int axis, const Vector& to, const Rgba& colour, LineSet& lines) const;

  Tool m_tool = Tool::kNone;
  Frame m_frame;
  ViewFrame m_view;
  double m_size = 0.0;   ///< m
  double m_reach = 0.0;  ///< pixels
  float m_line = 1.0f;   ///< width of lines (pixels)
};

/// A line through a place along an axis, as long as can be seen: what a drag keeps to.
void DrawGuide(const Frame& frame, const Constraint& constraint, double size, LineSet& lines);

}  // namespace orv::app::view
