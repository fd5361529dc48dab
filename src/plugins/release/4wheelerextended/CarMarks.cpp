// What a car shows of its work.
#include <algorithm>
#include <cmath>

#include "core/interface/RigMarks.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "util/Angles.h"

namespace orv::rws::addon {

using Vector = CCarCamObject::Vector;

namespace {

constexpr double kEarthGravity = 9.81;  ///< m/s²
/// Distance in body scales by which a user has moved a car since its take, and not rounding.
constexpr double kMovedSince = 1e-6;

/// Part of the whole that rests on the one of two supports; places count from the load.
double ShareOf(double place, double other) {
  return place == other ? 0.5 : std::clamp(other / (other - place), 0.0, 1.0);
}

}  // namespace

double CCarCam::GetLoad(const CarState& now, const CarState& before, double dt, int wheel) const {
  if (now.wheels[wheel].bInTheAir()) return 0.0;
  const CarWheelGeometry& sizes = geometry.wheels[wheel];
  const double share = ShareOf(sizes.zOffset, geometry.wheels[wheel ^ 2].zOffset) *
                       ShareOf(sizes.xOffset, geometry.wheels[wheel ^ 1].xOffset);
  const double length = GetCompression(now, wheel);
  const double rate = (length - GetCompression(before, wheel)) / dt;
  const double stiffness = IsFront(wheel) ? m_settings.fStiffness : m_settings.fStiffnessBack;
  const double damping = IsFront(wheel) ? m_settings.fDamping : m_settings.fDampingBack;
  return std::max(0.0, share - (stiffness * length + damping * rate) / (Mass() * kEarthGravity));
}

/// In a take the present frame's own; out of one what the memory holds, where the ground below is
/// taken for the plane that the wheels stand on.
std::intptr_t CCarCamObject::TellMarks(RigMarks& marks) const {
  const CarState* before = nullptr;
  const CarState* now = m_memory.Find(marks.time, before);
  if (m_inTake) now = &cCarCam.state;
  if (!now) return 1;
  const Vector place = m_bodyBase.ReadMatrix(marks.time).translation();
  if (!m_inTake && (place - now->base.position).length() > kMovedSince * cCarCam.geometry.scale)
    return 1;
  for (int i = 0; i < kWheelCount; ++i) TellWheel(*now, before ? *before : *now, i, marks);
  if (m_settings.bAutonomousMode)
    marks.targets.push_back({place, m_target.ReadMatrix(marks.time).translation()});
  return 1;
}

void CCarCamObject::TellWheel(const CarState& now, const CarState& before, int index,
                              RigMarks& marks) const {
  const CarWheelState& wheel = now.wheels[index];
  const CWheelNode& node = m_wheels[index]->wheel;
  const Vector normal = m_inTake ? node.GetNormal() : now.base.rotation.rotate({0.0, 1.0, 0.0});
  marks.rays.push_back(
      {wheel.centre, m_inTake ? node.GetHitPoint() : wheel.bottom, !wheel.bInTheAir()});
  if (wheel.bInTheAir()) return;
  const double dt = m_pInterface->GetFrameDuration();
  const Vector travel = wheel.bottom - before.wheels[index].bottom;
  Vector ahead = now.base.rotation.rotate(
      util::Quat<double>::fromRotationVector({0.0, wheel.yaw, 0.0}).rotate({0.0, 0.0, -1.0}));
  ahead -= normal * ahead.dot(normal);
  const double length = ahead.length();
  if (length > 0.0) ahead /= length;
  // The memory has angles within a turn: of the turns that may lie between two, those count that
  // come nearest to the way.
  const double radius = cCarCam.GetEffectiveRadius(index), way = travel.dot(ahead);
  double roll = -cCarCam.spin[index] * radius;
  if (!m_inTake) {
    const double turned = before.wheels[index].pfTotalPitch - wheel.pfTotalPitch;
    roll = way +
           std::remainder(turned - (radius > 0.0 ? way / radius : 0.0), 2.0 * util::kPi) * radius;
  }
  marks.contacts.push_back({wheel.bottom, normal, cCarCam.GetLoad(now, before, dt, index),
                            &now == &before ? Vector() : (travel - ahead * roll) / dt});
}

}  // namespace orv::rws::addon
