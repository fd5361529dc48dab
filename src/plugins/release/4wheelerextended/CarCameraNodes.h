// The cameras of a car.
#pragma once

#include "plugins/common/RigSceneNode.h"
#include "plugins/release/4wheelerextended/CCarCam.h"

namespace orv::rws::addon {

/// Trails the car from behind through two stages of lag, which the car's state holds.
class CFollowCamNode : public RigCameraNode {
 public:
  CFollowCamNode(CCamera& rig, CCarCam& car, const RigSceneNode& parent);
  /// Both stages on the place that they follow.
  void Reset();
  /// One frame of `dt` seconds that ends at `time`.
  void Update(double time, double dt);
  using RigCameraNode::Update;
  util::Matrix<double> Pose() const;

 private:
  util::QTransform<double> Target() const;
  CCarCam& m_car;
};

/// Sits where the animator put it in the body; the head turns into the curve.
class CDriverCamNode : public RigCameraNode {
 public:
  CDriverCamNode(CCamera& rig, CCarCam& car, const RigSceneNode& body);
  /// Takes the node's place in the body at `time` for that of a head that looks ahead.
  void Reset(double time);
  void Update(double time);
  using RigCameraNode::Update;

 private:
  CCarCam& m_car;
  const RigSceneNode& m_body;
};

/// Looks straight down on the car from above, the world's -Z at the top of the picture.
class CTopViewCamNode : public RigCameraNode {
 public:
  CTopViewCamNode(CCamera& rig, const CCarCam& car, const RigSceneNode& parent);
  void Update(double time);
  using RigCameraNode::Update;
  util::Matrix<double> Pose() const;

 private:
  const CCarCam& m_car;
};

}  // namespace orv::rws::addon
