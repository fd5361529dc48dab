// From where the pointer is to what it does.
#pragma once

#include "app/studio/view/manipulator/Handles.h"
#include "app/studio/view/manipulator/Placing.h"
#include "app/studio/view/manipulator/ViewFrame.h"

namespace orv::app::view {

/// One drag of one tool under one constraint, as its first picture shows it: a camera that is moved
/// while one looks through it does not act upon its own drag.
class Drag {
 public:
  /// How it was begun: by a handle, which follows the pointer, or by a key, anywhere.
  enum class Grip { kHandle, kAnywhere };

  Drag() = default;
  /// `size`: length of the handles at the anchor (m); `reach`: see there.
  Drag(Tool tool, const Constraint& constraint, Grip grip, const Frame& frame,
       const ViewFrame& view, double size, double reach, const Pixel& start);
  /// Where the pointer takes hold: the pivot, or, where that is not in front of the eye, as that of
  /// a camera that one looks through, a place so far ahead (m).
  static util::Vector3<double> AnchorOf(const util::Vector3<double>& pivot, const ViewFrame& view,
                                        double reach);

  Tool GetTool() const { return m_tool; }
  Drag::Grip GetGrip() const { return m_grip; }
  const Constraint& GetConstraint() const { return m_constraint; }
  const Frame& GetFrame() const { return m_frame; }
  const ViewFrame& GetView() const { return m_view; }
  const Pixel& GetStart() const { return m_start; }

  /// What the pointer's place means; where it means nothing, as beyond the horizon of a plane, what
  /// it meant last.
  Change Follow(const Pixel& at);
  /// Nothing has happened yet: tool, axis and freedom alone.
  Change Begin() const;
  /// About what is turned; unit, towards the user for the view's own.
  util::Vector3<double> GetTurnAxis() const;

 private:
  using Vector = util::Vector3<double>;

  bool FindMove(const Pixel& at, Vector& place) const;
  double FollowTurn(const Pixel& at);
  double FollowScale(const Pixel& at);
  bool FindAngle(const Pixel& at, double& angle) const;

  Tool m_tool = Tool::kNone;
  Constraint m_constraint;
  Grip m_grip = Grip::kHandle;
  Frame m_frame;
  ViewFrame m_view;
  Vector m_anchor;
  double m_size = 1.0;
  Pixel m_start;
  bool m_hasStart = false;   ///< the start means something
  Vector m_startPlace;       ///< of a move, and of a scale by its handle, along the axis
  double m_lastAngle = 0.0;  ///< as of the latest pointer, within a turn
  Change m_change;
};

/// Steps that a drag keeps to.
struct SnapSteps {
  double length = 1.0;  ///< m
  double angle = 0.0;   ///< radians
  double factor = 0.1;
};

/// Rounds a change to steps. Where `lattice` is given a move ends on places whose distance from its
/// origin along the frame's axes is a multiple of the step; else the way is one.
void SnapToSteps(const SnapSteps& steps, const Constraint& constraint, const Frame& frame,
                 const util::Vector3<double>* lattice, Change& change);
/// A move that brings the pivot to a place, as far as the constraint lets it.
void SnapToPlace(const util::Vector3<double>& place, const Constraint& constraint,
                 const Frame& frame, Change& change);
/// A turn that gives the axes `active` the directions of others.
void SnapToAxes(const Frame& active, const Frame& others, Change& change);

}  // namespace orv::app::view
