#include "adaptor/common/HostChannels.h"

namespace orv::rws::adaptor {

using util::Matrix;
using util::Quat;
using util::Vector3;

namespace {

/// How far the pivots carry the node's origin under this rotation and scale.
Vector3<double> carried(const Quat<double>& rotation, const Vector3<double>& scale,
                        const ChannelFrame& frame) {
  const Vector3<double>& pivot = frame.scalePivot;
  const Vector3<double> scaled(scale.x * pivot.x, scale.y * pivot.y, scale.z * pivot.z);
  const Vector3<double> shift = pivot - scaled + frame.scaleShift - frame.rotatePivot;
  return rotation.rotate(shift) + frame.rotatePivot + frame.rotateShift;
}

}  // namespace

Matrix<double> matrixOf(const HostChannels& channels, const ChannelFrame& frame) {
  const Quat<double> rotation =
      frame.rotateAxis * fromEuler(channels.angles, frame.order) * frame.orient;
  const Vector3<double> origin = carried(rotation, channels.scale, frame);
  return compose({channels.translation + origin, rotation, channels.scale});
}

HostChannels channelsOf(const Trs& pose, const ChannelFrame& frame,
                        const Vector3<double>& previousAngles) {
  const Quat<double> turned =
      frame.rotateAxis.conjugate() * pose.rotation * frame.orient.conjugate();
  return {pose.translation - carried(pose.rotation, pose.scale, frame),
          toEulerNear(turned, frame.order, previousAngles), pose.scale};
}

}  // namespace orv::rws::adaptor
