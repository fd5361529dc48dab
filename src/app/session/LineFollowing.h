// A rig's recorded path, driven once more by the rig's own mode of following a target.
#pragma once

#include <optional>
#include <string>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/TimeSpan.h"
#include "util/Sentence.h"

namespace orv::app {

class SceneSession;

/// What is to be followed, and how.
struct FollowWish {
  std::string rig;         ///< whose path it is
  std::string profile;     ///< that is to drive; empty: as the rig stands
  std::string name;        ///< of the copy that drives; empty: a free one
  bool inPlace = false;    ///< no copy: the rig itself drives
  bool toEnd = false;      ///< one that is late goes on behind the path's time, to where it ends
  bool asProfile = false;  ///< with the profile's own values of the mode, not the sharp ones
};

/// How far off a line a rig is. A place is compared with what was recorded of the line up to
/// `kFollowWindow` around its time, and around the time of the place that the target led it to
/// where that is another, so that a line may cross itself.
struct LineDistances {
  long frames = 0;
  double length = 0.0;         ///< of the line (m)
  double mean = 0.0;           ///< distance from the line (m)
  double p95 = 0.0;            ///< 95 of 100 frames are nearer (m)
  double largest = 0.0;        ///< m
  double largestTime = 0.0;    ///< s
  double speed = 0.0;          ///< largest difference of speeds at the same time (m/s)
  double speedTime = 0.0;      ///< s
  double margin = 0.0;         ///< m: farther off counts as left
  std::optional<double> left;  ///< s; it has left the line, and does not come back
  /// s by which it is late when it is led on along the line for the last time; nothing when it has
  /// left it
  std::optional<double> delay;
};

inline constexpr double kFollowWindow = 10.0;  ///< s

/// How a following ended. Unless it was done, the scene is as it was.
struct FollowResult {
  util::Sentence problem, hint;  ///< why nothing has changed, and what to do; empty when it has
  bool cancelled = false;
  std::string driver;  ///< name of the rig that drives
  std::string target;  ///< scene name of the node that it follows
  TimeSpan span;       ///< s, that was simulated
  LineDistances off;
};

/// Keys the target of a copy of the rig, or of the rig itself, so that each frame leads it to where
/// the path was in that frame; puts the inputs that the mode takes over to rest; simulates it over
/// the path's time. One undo step. Only rigs that answer kFollowLine can.
FollowResult FollowPath(SceneSession& session, const FollowWish& wish, const Monitor& monitor);

}  // namespace orv::app
