// What a manipulator makes of poses.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "util/Matrix.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::app::view {

enum class Tool { kNone, kMove, kTurn, kScale };

/// Whose axes count.
enum class Space { kWorld, kLocal, kParent, kNode };

/// What several nodes are turned and scaled around.
enum class Pivot { kActive, kOwn };

/// A node that is to be placed, as it stands. Poses of the world, and its own below its parent (m).
struct Target {
  int id = 0;
  util::Matrix<double> world, parent;
  util::Vector3<double> translation;
  util::Quat<double> rotation;
  util::Vector3<double> scale{1.0, 1.0, 1.0};

  friend bool operator==(const Target& a, const Target& b) {
    return a.id == b.id && a.world == b.world && a.parent == b.parent &&
           a.translation == b.translation && a.rotation == b.rotation && a.scale == b.scale;
  }
};

/// What is selected. Nodes below others that are selected go with these and are no targets.
struct Selection {
  std::vector<Target> targets;  ///< empty: there is nothing to place
  Target active;                ///< the one that was selected last; the handles stand there
  /// The pose of the node whose axes Space::kNode means.
  std::optional<util::Matrix<double>> reference;
  std::string blocked;  ///< why nothing can be placed now, for the user; empty when it can
};

/// A pose relative to the parent; what is not given stays, and gets no key.
struct NewPose {
  std::optional<util::Vector3<double>> translation;  ///< m
  std::optional<util::Quat<double>> rotation;
  std::optional<util::Vector3<double>> scale;
};

/// A place of the world and three unit axes at right angles.
struct Frame {
  util::Vector3<double> origin;  ///< m
  util::Vector3<double> axes[3]{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};

  /// Amounts along the axes as a vector of the world.
  util::Vector3<double> ToWorld(const util::Vector3<double>& amounts) const {
    return axes[0] * amounts.x + axes[1] * amounts.y + axes[2] * amounts.z;
  }
  util::Vector3<double> FromWorld(const util::Vector3<double>& v) const {
    return {axes[0].dot(v), axes[1].dot(v), axes[2].dot(v)};
  }
};

/// The place and axes of a pose, without its scale and shear.
Frame FrameOf(const util::Matrix<double>& pose);
/// Where the handles stand: at the active node.
Frame ChooseFrame(const Selection& selection, Space space);

/// How far a drag has come. By its tool one of the three counts.
struct Change {
  Tool tool = Tool::kNone;
  util::Vector3<double> move;                    ///< m along the frame's axes
  util::Vector3<double> factors{1.0, 1.0, 1.0};  ///< along the frame's axes
  double angle = 0.0;                            ///< radians
  int axis = -1;                ///< of the frame, that is turned about; -1: `about`
  util::Vector3<double> about;  ///< unit, of the world
  bool isFree = false;          ///< moves all the same way, whatever their own axes are

  bool IsNothing() const;
};

/// The poses that a change gives to all targets, in their order. With Pivot::kOwn each has its own
/// place as pivot and, in local and parent space, its own axes.
std::vector<NewPose> Apply(const Selection& selection, const Change& change, Space space,
                           Pivot pivot);

/// About a unit axis, right-handed (radians).
util::Quat<double> TurnAbout(const util::Vector3<double>& axis, double angle);

}  // namespace orv::app::view
