#include "adaptor/common/HostChannels.h"

namespace orv::rws::adaptor {

using util::Matrix;
using util::Quat;
using util::Vector3;

namespace {

/// How far the pivots carry the node's origin under this rotation and scale.
Vector3<double> Carried(const Quat<double>& rotation, const Vector3<double>& scale,
                        const ChannelFrame& frame) {
  const Vector3<double>& pivot = frame.scalePivot;
  const Vector3<double> scaled(scale.x * pivot.x, scale.y * pivot.y, scale.z * pivot.z);
  const Vector3<double> shift = pivot - scaled + frame.scaleShift - frame.rotatePivot;
  return rotation.rotate(shift) + frame.rotatePivot + frame.rotateShift;
}

}  // namespace

Trs PoseOf(const HostChannels& channels, const ChannelFrame& frame) {
  const Quat<double> rotation =
      frame.rotateAxis * FromEuler(channels.angles, frame.order) * frame.orient;
  const Vector3<double> origin = Carried(rotation, channels.scale, frame);
  return {channels.translation + origin, rotation, channels.scale};
}

Matrix<double> MatrixOf(const HostChannels& channels, const ChannelFrame& frame) {
  return Compose(PoseOf(channels, frame));
}

HostChannels ChannelsOf(const Trs& pose, const ChannelFrame& frame,
                        const Vector3<double>& previousAngles) {
  const Quat<double> turned =
      frame.rotateAxis.conjugate() * pose.rotation * frame.orient.conjugate();
  return {pose.translation - Carried(pose.rotation, pose.scale, frame),
          ToEulerNear(turned, frame.order, previousAngles), pose.scale};
}

}  // namespace orv::rws::adaptor
