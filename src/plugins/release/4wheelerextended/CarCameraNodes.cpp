#include "plugins/release/4wheelerextended/CarCameraNodes.h"

#include "plugins/common/NodeScale.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Transform = util::QTransform<double>;
using Quat = util::Quat<double>;
using Vector = util::Vector3<double>;

namespace {

/// Place of the follow camera against the base, in body scales.
const Vector kFollowPlace(0.0, 1.4, 7.0);
constexpr double kFollowPlaceMult = 1.0;
/// Of the follow camera's lens (degrees). It looks straight ahead and has the car below the middle
/// of the picture: a smaller angle loses the wheels where a soft car dives on hills.
constexpr double kFollowFieldOfView = 32.0;
constexpr double kFollowTurnResponse = 0.7;
constexpr double kFollowMoveResponse = 0.6;
/// Turn of the driver's head for a turn of the front wheels.
constexpr double kHeadTurn = 0.35;
/// Height of the top view camera, in body scales.
constexpr double kTopViewHeight = 12.0;

}  // namespace

CFollowCamNode::CFollowCamNode(CCamera& rig, CCarCam& car, const RigSceneNode& parent)
    : RigCameraNode(rig, "FollowCam", &parent), m_car(car) {
  lens.fieldOfView = kFollowFieldOfView;
  SetWritten();
}

Transform CFollowCamNode::Target() const {
  const Transform& base = m_car.state.base;
  const double scale = m_car.geometry.scale * kFollowPlaceMult;
  return {base.position + base.rotation.rotate(kFollowPlace) * scale, base.rotation};
}

void CFollowCamNode::Reset() {
  m_car.state.followCamFirst = m_car.state.followCamSecond = Target();
}

void CFollowCamNode::Update(double time, double dt) {
  const Transform target = Target();
  Transform& first = m_car.state.followCamFirst;
  Transform& second = m_car.state.followCamSecond;
  util::lowPassClamped(first.rotation, target.rotation, kFollowTurnResponse, 0.0, dt);
  util::lowPassClamped(second.rotation, first.rotation, kFollowTurnResponse, 0.0, dt);
  util::lowPassClamped(first.position, target.position, kFollowMoveResponse, 0.0, dt);
  util::lowPassClamped(second.position, first.position, kFollowMoveResponse, 0.0, dt);
  WriteKey(time, Pose());
}

Matrix CFollowCamNode::Pose() const {
  Matrix pose = m_car.state.followCamSecond.toMatrix();
  const double scale = m_car.geometry.scale;
  ScaleRows(pose, {scale, scale, scale});
  return pose;
}

CDriverCamNode::CDriverCamNode(CCamera& rig, CCarCam& car, const RigSceneNode& body)
    : RigCameraNode(rig, "DriverCam", &body), m_car(car), m_body(body) {
  SetWritten();
}

void CDriverCamNode::Reset(double time) {
  m_car.geometry.driverCam = m_body.ReadMatrix(time).affineInverse() * ReadMatrix(time);
}

void CDriverCamNode::Update(double time) {
  const Quat head =
      Quat::fromRotationVector({0.0, -kHeadTurn * m_car.state.filtered[kSteeringWheel], 0.0});
  WriteKey(time, m_body.ReadMatrix(time) * m_car.geometry.driverCam * head.toMatrix());
}

CTopViewCamNode::CTopViewCamNode(CCamera& rig, const CCarCam& car, const RigSceneNode& parent)
    : RigCameraNode(rig, "TopViewCam", &parent), m_car(car) {
  SetWritten();
}

Matrix CTopViewCamNode::Pose() const {
  const double scale = m_car.geometry.scale;
  Matrix pose;
  pose.setAxisRow(0, {scale, 0.0, 0.0});
  pose.setAxisRow(1, {0.0, 0.0, -scale});
  pose.setAxisRow(2, {0.0, scale, 0.0});
  pose.setTranslation(m_car.state.base.position + Vector(0.0, kTopViewHeight * scale, 0.0));
  return pose;
}

void CTopViewCamNode::Update(double time) {
  WriteKey(time, Pose());
}

}  // namespace orv::rws::addon
