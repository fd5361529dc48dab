// The nodes of a new car, and what a reset reads from the scene.
#include <cmath>
#include <limits>

#include "core/interface/CNode.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"

namespace orv::rws::addon {

using Matrix = CCarCamObject::Matrix;
using Vector = CCarCamObject::Vector;
using Quat = util::Quat<double>;
using Transform = util::QTransform<double>;

namespace {

/// Wheelbase of a new car (m), which is the scale of its body.
constexpr double kNewScale = 2.7;
// Places in the body, in body scales.
constexpr double kRestHeight = 0.2;
constexpr double kWheelRadius = 0.13;
constexpr double kHalfTrack = 0.29;
const Vector kSteeringWheelPlace(-0.13, 0.13, -0.08);
const Vector kDriverEye(-0.13, 0.24, 0.12);
const Vector kForcePlace(0.0, 0.1, 0.5);
const Vector kTargetPlace(0.0, -kRestHeight, -4.0);
/// Part by which a body's rows may differ in length.
constexpr double kUniform = 1e-3;
/// Distance between a wheel's relocator and its center that is rounding (body scales).
constexpr double kRelocated = 0.01;

Matrix At(const Vector& place, double scale) {
  Matrix local;
  local.setRowLengths({scale, scale, scale});
  local.setTranslation(place);
  return local;
}

/// Where the diagonals of four points come nearest to each other: the middle of that.
Vector Diagonals(const Vector corners[kWheelCount]) {
  const Vector a = corners[0], u = corners[3] - a, b = corners[1], v = corners[2] - b;
  const double uu = u.dot(u), uv = u.dot(v), vv = v.dot(v);
  const double determinant = uu * vv - uv * uv;
  if (determinant == 0.0) return (corners[0] + corners[1] + corners[2] + corners[3]) * 0.25;
  const Vector w = b - a;
  const double s = (w.dot(u) * vv - w.dot(v) * uv) / determinant;
  const double t = (w.dot(u) * uv - w.dot(v) * uu) / determinant;
  return (a + u * s + b + v * t) * 0.5;
}

}  // namespace

int CCarCamObject::CreateAt(RigSceneNode& node, const Matrix& place) {
  const bool isNew = !node.Find();
  if (isNew && node.Create() != 0) return 1;
  if (isNew) node.Place(m_pInterface->GetTime(), place);
  return 0;
}

int CCarCamObject::Create() {
  const double now = m_pInterface->GetTime();
  Matrix body = At({0.0, kRestHeight * kNewScale, 0.0}, kNewScale);
  int failed = CreateAt(m_body, body);
  body = m_body.ReadMatrix(now);
  const Matrix onGround = body * At({0.0, -kRestHeight, 0.0}, 1.0);
  failed += CreateAt(m_chassisRelocator, body);
  failed += CreateAt(m_turnBase, body * At({0.0, -kRestHeight, 0.5}, 1.0));
  failed += CreateAt(m_gravity, onGround);
  failed += CreateAt(m_bodyBase, onGround);
  failed += CreateAt(m_target, body * At(kTargetPlace, 1.0));
  failed += CreateAt(m_force, body * At(kForcePlace, 1.0));
  failed += CreateAt(m_steeringWheel, body * At(kSteeringWheelPlace, 1.0));
  for (int i = 0; i < kWheelCount; ++i) {
    WheelNodes& nodes = *m_wheels[i];
    const double radius = kWheelRadius * m_settings.dWheelRadiusMult;
    const Vector place((i % 2 == 0 ? -1 : 1) * kHalfTrack, radius - kRestHeight,
                       i < 2 ? -0.5 : 0.5);
    failed += CreateAt(nodes.relocator, body * At(place, kWheelRadius));
    failed += nodes.center.Create() + nodes.suspension.Create() + nodes.wheel.Create();
    nodes.wheel.StandAtRest(now);
  }
  ReadGeometry(now);
  Vector bottoms[kWheelCount];
  cCarCam.state.base = FindBase(now, bottoms);
  m_followCam.Reset();
  failed += CreateAt(m_followCam, m_followCam.Pose());
  failed += CreateAt(m_driverCam, body * At(kDriverEye, 1.0));
  failed += CreateAt(m_topViewCam, m_topViewCam.Pose());
  if (failed != 0) return 1;
  UpdateMaximumGauges();
  m_hideModes.Restore();
  return 0;
}

void CCarCamObject::CheckBodyScale(double time) {
  Matrix body = m_body.ReadMatrix(time);
  const Vector lengths = body.rowLengths();
  const double turned = body.axisRow(0).cross(body.axisRow(1)).dot(body.axisRow(2));
  if (!(turned > 0.0)) {
    Tell("Warning", turned < 0.0
                        ? "The CarBodyMesh is mirrored. A car can't be driven inside out: "
                          "give its body a positive scale, and mirror your own meshes."
                        : "The CarBodyMesh has a scale of 0, so the car has no size. Scale "
                          "the body.");
    return;
  }
  const auto differs = [&](double length) {
    return std::abs(length - lengths.x) > lengths.x * kUniform;
  };
  if (!differs(lengths.y) && !differs(lengths.z)) return;
  Tell(
      "Warning",
      "Nonuniform scaling is not allowed on the body since it would affect children.\nThe "
      "4-wheeler body will now rescale to become uniform.\nScale the meshes that you parent to the "
      "body instead.");
  body.setRowLengths({lengths.z, lengths.z, lengths.z});
  m_body.Place(time, body);
}

void CCarCamObject::ReadGeometry(double time) {
  CarGeometry& geometry = cCarCam.geometry;
  const Matrix body = m_body.ReadMatrix(time);
  const Quat rotation = Quat::fromMatrix(body);
  const double length = body.rowLengths().z;
  geometry.scale = std::isnormal(length) ? length : 1.0;
  for (int i = 0; i < kWheelCount; ++i) {
    const Matrix relocator = m_wheels[i]->relocator.ReadMatrix(time);
    const Vector lengths = relocator.rowLengths();
    Vector place = rotation.conjugate().rotate(relocator.translation() - body.translation());
    // Meant: the sign is tested too, so that every wheel on the left moves out by a hair.
    if (place.x < lengths.y * 1e-5) place.x -= 0.001 * lengths.x;
    geometry.wheels[i] = {lengths.y, lengths.x * car::kWheelWidth, place.x, place.z};
  }
  Vector bottoms[kWheelCount];
  const Transform base = FindBase(time, bottoms);
  geometry.dHeight =
      (body.translation() - base.position).dot(base.rotation.rotate({0.0, 1.0, 0.0}));
}

/// The base below the body at rest: on the plane of the wheel bottoms, at the foot of the body's
/// origin, as the fit of every frame puts it. The plane goes through the crossing of the diagonals.
Transform CCarCamObject::FindBase(double time, Vector bottoms[kWheelCount]) const {
  const Matrix body = m_body.ReadMatrix(time);
  for (int i = 0; i < kWheelCount; ++i) {
    const Matrix relocator = m_wheels[i]->relocator.ReadMatrix(time);
    bottoms[i] =
        relocator.translation() - relocator.axisRow(1).normalized() * cCarCam.GetEffectiveRadius(i);
  }
  Quat rotation = Quat::fromMatrix(body);
  const Vector up = rotation.rotate({0.0, 1.0, 0.0});
  const Vector forward = bottoms[0] + bottoms[1] - bottoms[2] - bottoms[3];
  const Vector left = bottoms[0] + bottoms[2] - bottoms[1] - bottoms[3];
  Vector normal = forward.cross(left).normalized();
  if (normal.dot(up) <= 0.0) normal = up;
  // What only rounding tilts stands straight.
  if ((normal - up).length() > 1e-9) rotation = (rotation * ShortestArc(up, normal)).normalized();
  const Vector origin = body.translation();
  const Vector centre = Diagonals(bottoms);
  return {origin - normal * (origin - centre).dot(normal), rotation};
}

// --- where a car stands when a take begins ---

/// Whether no take has been made.
bool CCarCamObject::IsFresh() const {
  return m_memory.IsEmpty() && m_memory.dStartTime == CarMemory().dStartTime;
}

/// Until the first take the wheels follow the relocators that the animator moves, and the settings.
void CCarCamObject::StandWheelsAtRest(double time) {
  if (!IsFresh()) return;
  for (auto& wheel : m_wheels)
    if (wheel->wheel.IsBound()) wheel->wheel.StandAtRest(time);
}

bool CCarCamObject::FindStand(double time, const Quat& turn, Stand& stand) {
  int open = -1, count = 0;
  m_gravity.BeginFrame(time);
  for (int i = 0; i < kWheelCount; ++i) {
    stand.ground[i] = m_wheels[i]->wheel.FindStand(time, turn, stand.drop[i]);
    if (std::abs(stand.drop[i]) <= cCarCam.GetEffectiveRadius(i) * m_settings.fRelMaxBumperLen)
      continue;
    open = i;
    ++count;
  }
  m_gravity.EndFrame();
  if (count > 1) return false;
  // One over a hole is carried by the other three.
  if (count == 1) {
    const int across = kWheelCount - 1 - open, beside = open == 0 || open == 3 ? 1 : 0;
    stand.drop[open] = 0.0;
    stand.ground[open] =
        stand.ground[beside] + stand.ground[kWheelCount - 1 - beside] - stand.ground[across];
  }
  return true;
}

/// Puts a car that the ground is within reach of where it would come to stand, so that its first
/// frames don't. One that is to drop stays where it is, and so does one that stands: a take that is
/// run again must find what it found.
void CCarCamObject::Settle(double time) {
  constexpr int kRounds = 16;
  constexpr double kStands = 1e-6;   // body scales
  constexpr double kInSight = 1e-4;  // body scales
  ReadGeometry(time);
  Vector bottoms[kWheelCount];
  const Transform from = FindBase(time, bottoms);
  cCarCam.Reset(from);
  const Transform& base = cCarCam.state.base;
  const auto distance = [&](const Transform& other) {
    const Vector turned = (other.rotation.conjugate() * base.rotation).toRotationVector();
    return (base.position - other.position).length() / cCarCam.geometry.scale + turned.length();
  };
  bool stands = false;
  for (int round = 0; round < kRounds && !stands; ++round) {
    Stand stand;
    if (!FindStand(time, from.rotation.conjugate() * base.rotation, stand)) return;
    const Transform before = base;
    cCarCam.StandOn(stand.ground);
    stands = distance(before) <= kStands;
  }
  if (!stands || distance(from) <= kInSight) return;
  Matrix body = m_body.ReadMatrix(time);
  const Quat turn = from.rotation.conjugate() * base.rotation;
  for (int axis = 0; axis < 3; ++axis) body.setAxisRow(axis, turn.rotate(body.axisRow(axis)));
  body.setTranslation(base.position + turn.rotate(body.translation() - from.position));
  m_body.Place(time, body);
}

/// The wheels of a car that is reset, on the ground where that is in reach.
void CCarCamObject::StandWheels(double time) {
  Stand stand;
  const bool stands = FindStand(time, Quat(), stand);
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = cCarCam.state.wheels[i];
    wheel.SetInTheAir(false);
    m_wheels[i]->wheel.Stand(time, stands ? stand.drop[i] : 0.0);
    wheel.lastCompression = cCarCam.GetCompression(i);
  }
  m_turnBase.Place(time, Scaled(PivotOf(cCarCam.state.base)));
  m_bodyBase.Place(time, Scaled(cCarCam.state.base));
}

void CCarCamObject::WarnOfRigging(double time) {
  for (auto& wheel : m_wheels) {
    if (!wheel->center.IsBound() || !wheel->center.GetNode()->IsValid()) continue;
    const Vector apart = wheel->relocator.ReadMatrix(time).translation() -
                         wheel->center.ReadMatrix(time).translation();
    if (apart.length() <= kRelocated * cCarCam.geometry.scale) continue;
    Tell("Warning",
         "In the rigging process the wheels should be moved and scaled with the "
         "WheelRelocatorMesh:es.\nUse the WheelCenterMesh:es for suspension and particles.");
    break;
  }
}

/// Where the car turns about, when its base is at `base`.
Transform CCarCamObject::PivotOf(Transform base) const {
  base.position += base.rotation.rotate({0.0, 0.0, cCarCam.GetPivotZ()});
  return base;
}

void CCarCamObject::MoveTurnBase() {
  if (m_inTake || !m_turnBase.IsBound()) return;
  const double now = m_pInterface->GetTime();
  m_turnBase.Place(now, Scaled(PivotOf(Transform::fromMatrix(m_bodyBase.ReadMatrix(now)))));
}

}  // namespace orv::rws::addon
