// Names of the rail's elements that its events are told apart by.
#pragma once

namespace orv::rws::addon {

inline constexpr char kCreateWaypoint[] = "Create New Waypoint";
inline constexpr char kRemoveWaypoint[] = "Remove Current Waypoint";
inline constexpr char kEqualiseWaypoints[] = "Make all waypoints equal to Waypoint01";
inline constexpr char kInitializeCarriage[] = "Initialize Carriage";
inline constexpr char kSnapCarriage[] = "Snap Carriage to closest point on Curve";
inline constexpr char kSnapWaypoints[] = "Snap Waypoints to Spline/Redraw Orvel Curve";
inline constexpr char kCreateCurve[] = "Create Curve";
inline constexpr char kRemoveCurve[] = "Remove Curve";

inline constexpr char kCurrentWaypoint[] = "Current Waypoint";
inline constexpr char kPosition[] = "Position on Spline (in Percent)";
inline constexpr char kDelaySeconds[] = "Time Delay (seconds)";
inline constexpr char kDelayFrames[] = "Time Delay (frames)";
inline constexpr char kTensionIn[] = "Tension In";
inline constexpr char kTensionOut[] = "Tension Out";
inline constexpr char kClosed[] = "Closed Curve";
inline constexpr char kEndStraight[] = "End Curve Straight";
inline constexpr char kNoWaypoint[] = "(none)";

inline constexpr char kNoCurve[] =
    "There is no Orvel curve yet: create waypoints, place them and press Create Curve.";
inline constexpr char kNeedsSpline[] = "The CarriageNode needs to be Linked/Parented to a Spline.";

}  // namespace orv::rws::addon
