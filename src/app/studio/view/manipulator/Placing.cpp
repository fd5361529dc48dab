#include "app/studio/view/manipulator/Placing.h"

#include <cmath>

namespace orv::app::view {

using util::Matrix;
using util::Quat;
using util::Vector3;

namespace {

const Vector3<double> kWhole(1.0, 1.0, 1.0);

bool IsMirroring(const Matrix<double>& m) {
  return m.axisRow(0).cross(m.axisRow(1)).dot(m.axisRow(2)) < 0.0;
}

/// A new place of the world as one below the parent; what does not move keeps its bits.
void PutTranslation(const Target& target, const Vector3<double>& by, NewPose& pose) {
  if (by == Vector3<double>()) return;
  pose.translation = target.translation + target.parent.affineInverse().transformVector(by);
}

/// The axis as the parent sees it: a mirrored one sees the turn the other way round.
Vector3<double> AxisInParent(const Target& target, const Vector3<double>& axis) {
  const Vector3<double> inside = FrameOf(target.parent).FromWorld(axis);
  if (!IsMirroring(target.parent)) return inside;
  // The frame is right-handed; of a mirrored parent its last axis is the other way.
  return {-inside.x, -inside.y, inside.z};
}

NewPose Turned(const Target& target, const Vector3<double>& axis, double angle,
               const Vector3<double>& pivot) {
  NewPose pose;
  const Vector3<double> arm = target.world.translation() - pivot;
  PutTranslation(target, TurnAbout(axis, angle).rotate(arm) - arm, pose);
  pose.rotation = (target.rotation * TurnAbout(AxisInParent(target, axis), angle)).normalized();
  return pose;
}

/// Scale has no shear: each of the node's own axes becomes as long as its image.
NewPose Scaled(const Target& target, const Frame& frame, const Vector3<double>& factors,
               const Vector3<double>& pivot) {
  const auto stretch = [&](const Vector3<double>& v) {
    const Vector3<double> inside = frame.FromWorld(v);
    return frame.ToWorld(
        {inside.x * (factors.x - 1.0), inside.y * (factors.y - 1.0), inside.z * (factors.z - 1.0)});
  };
  NewPose pose;
  PutTranslation(target, stretch(target.world.translation() - pivot), pose);
  Vector3<double> scale = target.scale;
  const bool isEven = factors.x == factors.y && factors.y == factors.z;
  for (int i = 0; i < 3; ++i) {
    if (isEven) {
      scale[i] *= factors[i];
      continue;
    }
    const Vector3<double> own = target.world.axisRow(i).normalized(), image = own + stretch(own);
    scale[i] *= std::copysign(image.length(), image.dot(own));
  }
  if (scale != target.scale) pose.scale = scale;
  return pose;
}

}  // namespace

Frame FrameOf(const Matrix<double>& pose) {
  Frame frame;
  frame.origin = pose.translation();
  const Vector3<double> x = pose.axisRow(0), y = pose.axisRow(1);
  if (x.length() > 0.0) frame.axes[0] = x.normalized();
  // What a scale of 0 leaves open is as good as any.
  Vector3<double> up = y - frame.axes[0] * frame.axes[0].dot(y);
  for (int i = 1; !(up.length() > 1e-9 * y.length()); ++i) {
    const Vector3<double> other(i == 2 ? 1.0 : 0.0, i == 1 ? 1.0 : 0.0, 0.0);
    up = other - frame.axes[0] * frame.axes[0].dot(other);
    if (up.length() > 0.1) break;
  }
  frame.axes[1] = up.normalized();
  frame.axes[2] = frame.axes[0].cross(frame.axes[1]);
  return frame;
}

Frame ChooseFrame(const Selection& selection, Space space) {
  Frame frame;
  if (space == Space::kLocal) frame = FrameOf(selection.active.world);
  if (space == Space::kParent) frame = FrameOf(selection.active.parent);
  if (space == Space::kNode && selection.reference) frame = FrameOf(*selection.reference);
  frame.origin = selection.active.world.translation();
  return frame;
}

bool Change::IsNothing() const {
  return tool == Tool::kNone || (tool == Tool::kMove && move == Vector3<double>()) ||
         (tool == Tool::kTurn && angle == 0.0) || (tool == Tool::kScale && factors == kWhole);
}

std::vector<NewPose> Apply(const Selection& selection, const Change& change, Space space,
                           Pivot pivot) {
  std::vector<NewPose> poses(selection.targets.size());
  if (change.IsNothing()) return poses;
  const Frame common = ChooseFrame(selection, space);
  for (std::size_t i = 0; i < poses.size(); ++i) {
    const Target& target = selection.targets[i];
    Frame frame = common;
    if (pivot == Pivot::kOwn && !change.isFree) {
      Selection own;
      own.active = target;
      own.reference = selection.reference;
      frame = ChooseFrame(own, space);
    }
    const Vector3<double> centre =
        pivot == Pivot::kOwn ? target.world.translation() : common.origin;
    if (change.tool == Tool::kMove) PutTranslation(target, frame.ToWorld(change.move), poses[i]);
    if (change.tool == Tool::kTurn)
      poses[i] = Turned(target, change.axis < 0 ? change.about : frame.axes[change.axis],
                        change.angle, centre);
    if (change.tool == Tool::kScale) poses[i] = Scaled(target, frame, change.factors, centre);
  }
  return poses;
}

Quat<double> TurnAbout(const Vector3<double>& axis, double angle) {
  const double sine = std::sin(0.5 * angle);
  return {axis.x * sine, axis.y * sine, axis.z * sine, std::cos(0.5 * angle)};
}

}  // namespace orv::app::view
