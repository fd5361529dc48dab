/// A host node's nine animated channels, and what its transform keeps around them.
#pragma once

#include "adaptor/common/Euler.h"
#include "adaptor/common/Trs.h"
#include "util/Matrix.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor {

/// What keys are set on. In the host's unit and the parent's space.
struct HostChannels {
  util::Vector3<double> translation;
  util::Vector3<double> angles;  ///< radians, about X, Y and Z; any number of turns
  util::Vector3<double> scale{1.0, 1.0, 1.0};
};

/// What a user has set on a transform and a take never changes. In this order a point of the node
/// is moved: scaled about the scale pivot and shifted; turned about the rotation pivot by
/// `rotateAxis`, the channels' angles and `orient`, and shifted; translated. There is no shear.
struct ChannelFrame {
  RotationOrder order = RotationOrder::kXyz;
  util::Vector3<double> scalePivot;   ///< in the node's own space, before scale
  util::Vector3<double> scaleShift;   ///< added behind the scale
  util::Vector3<double> rotatePivot;  ///< in the node's own space, behind the scale
  util::Vector3<double> rotateShift;  ///< added behind the rotation
  util::Quat<double> rotateAxis;      ///< a turn of the node's own axes, before the angles
  util::Quat<double> orient;          ///< a turn behind the angles, such as a joint's
};

/// The pose that the host shows for these channels, and its local matrix.
Trs PoseOf(const HostChannels& channels, const ChannelFrame& frame);
util::Matrix<double> MatrixOf(const HostChannels& channels, const ChannelFrame& frame);

/// The channels under which the host shows `pose`, the angles nearest to those of the frame before.
HostChannels ChannelsOf(const Trs& pose, const ChannelFrame& frame,
                        const util::Vector3<double>& previousAngles);

}  // namespace orv::rws::adaptor
