// The car model after the ground contact: the base on the wheels, and what a landing does to it.
#include "plugins/release/4wheelerextended/CCarCam.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using util::sign;
using Vector = CCarCam::Vector;
using Quat = CCarCam::Quat;

namespace {

/// Height below the ground, in body scales, that is rounding.
constexpr double kTouch = 1e-9;

}  // namespace

void CCarCam::FinishWheels() {
  const Vector forward = state.base.rotation.rotate({0.0, 0.0, -1.0});
  const double speed = GetSpeed();
  const bool rolls = std::abs(speed) > geometry.scale * 0.001;
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = state.wheels[i];
    const Vector travel = wheel.bottom - m_lastBottom[i];
    const bool steered = geometry.wheels[i].zOffset != GetPivotZ();
    const double way = travel.length() * (steered ? sign(speed) : sign(travel.dot(forward)));
    const double radius = GetEffectiveRadius(i);
    if (rolls && radius > 0.0) spin[i] -= way / radius;
    if (state.bSkidBreakingOn) spin[i] = 0.0;
    wheel.pfTotalPitch = std::fmod(wheel.pfTotalPitch + spin[i], 2.0 * util::kPi);
  }
}

void CCarCam::FitBase(double dt) {
  if (!IsFlying()) {
    const Vector up = state.base.rotation.rotate({0.0, 1.0, 0.0});
    const Vector bodyUp = GetBodyRotation().rotate({0.0, 1.0, 0.0});
    const Vector origin = GetBodyPosition();
    Vector corner[kWheelCount], before[kWheelCount];
    m_falls = {};
    for (int i = 0; i < kWheelCount; ++i) before[i] = GetCorner(i);
    FindCorners(dt, up, corner);
    LayBase(corner, up, origin, bodyUp);
    for (int i = 0; i < kWheelCount; ++i)
      if (m_falls[i]) KeepFalling(i, (before[i] - GetCorner(i)).dot(up));
  } else {
    // A hanging wheel hangs loose: its spring doesn't pull the body.
    for (CarWheelState& wheel : state.wheels) wheel.CurrDelta = std::max(wheel.CurrDelta, 0.0);
  }
  // What the next frame takes for a wheel's height one frame back. It counts from the chassis as
  // the fit has left it, not from the relocator as it was keyed before that: what lifts the chassis
  // doesn't pull the wheels off the ground.
  const Quat toBase = state.base.rotation.conjugate();
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = state.wheels[i];
    wheel.localHeight = toBase.rotate(wheel.centre - state.base.position).y - GetEffectiveRadius(i);
    wheel.clearance = std::max(0.0, -toBase.rotate(groundBelow[i] - state.base.position).y);
  }
}

/// Puts the base on the plane through the middles of the sides of `corner`, where the line from
/// `origin` along `axis` meets it.
void CCarCam::LayBase(const Vector corner[kWheelCount], const Vector& up, const Vector& origin,
                      const Vector& axis) {
  const Vector front = (corner[0] + corner[1]) * 0.5, back = (corner[2] + corner[3]) * 0.5;
  const Vector left = (corner[0] + corner[2]) * 0.5;
  const Vector centre = (front + back) * 0.5;
  const Vector across = (front - back).cross(left - centre);
  if (across.lengthSquared() == 0.0) return;
  const Vector normal = across.normalized();
  const double slant = axis.dot(normal);
  if (slant <= 0.0 || up.dot(normal) <= -0.999) return;  // overturned by damaged ground
  state.base.rotation = state.base.rotation * ShortestArc(up, normal);
  state.base.rotation.normalize();
  state.base.position = origin - axis * ((origin - centre).dot(normal) / slant);
}

/// Where the plane of the base is to lie at each wheel: on the tire's bottom, but above a wheel
/// that hangs, which carries nothing. A single corner without ground is carried by the other three,
/// and two across from each other by the other two; else the chassis falls there, until the ground
/// holds it.
void CCarCam::FindCorners(double dt, const Vector& up, Vector corner[kWheelCount]) {
  double height[kWheelCount];
  unsigned open = 0;  // bits of the corners that nothing holds
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = state.wheels[i];
    const bool hangs = m_settings.cCarCambGravityOn && wheel.bInTheAir();
    if (hangs) wheel.released = 1.0;
    corner[i] = wheel.released != 0.0 ? groundBelow[i] : wheel.bottom;
    height[i] = (corner[i] - state.base.position).dot(up);
    if (wheel.released != 0.0 && !IsCarried(i, height[i])) open |= 1u << i;
  }
  if (!m_settings.cCarCambGravityOn) return;
  // Wheels 0 and 3 lie across from each other, as 1 and 2 do.
  const bool rests = (open & (open - 1)) == 0 || open == 9 || open == 6;
  Landing landing;
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = state.wheels[i];
    if (wheel.released == 0.0) continue;
    const bool isOpen = (open >> i & 1u) != 0;
    m_falls[i] = isOpen && !rests;
    if (m_falls[i]) {
      Raise(i, up, 0.0, height, corner);
      wheel.fallSpeed += GetFallAcceleration() * dt;
      continue;
    }
    if (wheel.fallSpeed > 0.0) {
      landing.speed[i] = isOpen ? wheel.fallSpeed : closingSpeed[i];
      landing.braked[i] = -landing.speed[i] * (1.0 - m_drops[i].speedLeft);
      landing.lifted[i] = std::max(0.0, height[i]);
    }
    wheel.fallSpeed = 0.0;
    if (!isOpen && !wheel.bInTheAir()) wheel.released = 0.0;
  }
  for (int i = 0; rests && i < kWheelCount; ++i)
    if ((open >> i & 1u) != 0) Hold(i, open, dt, up, height, corner);
  Squat(landing);
}

/// Whether the ground holds a released corner that stands `height` (m) below it: also where only
/// rounding or the stiffness of the chassis keeps it from having come down.
bool CCarCam::IsCarried(int wheel, double height) const {
  const Drop& drop = m_drops[wheel];
  return height + std::max(0.0, drop.free - drop.made) >= -kTouch * geometry.scale;
}

/// Keeps a corner without ground on the plane of those that carry the chassis. Where the ground is
/// twisted that is another plane than the one of all four: the chassis takes as long to get there
/// as a wheel does that drops.
void CCarCam::Hold(int wheel, unsigned open, double dt, const Vector& up,
                   double height[kWheelCount], Vector corner[kWheelCount]) {
  const int across = kWheelCount - 1 - wheel;
  const double beside =
      (height[0] + height[1] + height[2] + height[3] - height[wheel] - height[across]) * 0.5;
  double held = (open >> across & 1u) != 0 ? beside : 2.0 * beside - height[across];
  const double most = GetEffectiveRadius(wheel) * m_settings.dMaximumSpringChangeVelocityRel * dt;
  // Across from its neighbours' mean a corner leaves the plane as it is.
  if (most > 0.0) held = std::min(held, most - beside);
  if (height[wheel] < held) Raise(wheel, up, held, height, corner);
}

/// A corner that the rest of the chassis has held back doesn't fall on as if it were free.
/// `lowered` is what the fit of the base adds to this frame's fall (m).
void CCarCam::KeepFalling(int wheel, double lowered) {
  const Drop& drop = m_drops[wheel];
  if (drop.planned <= 0.0) return;
  state.wheels[wheel].fallSpeed *= std::clamp((drop.made + lowered) / drop.planned, 0.0, 1.0);
}

void CCarCam::Raise(int wheel, const Vector& up, double to, double height[kWheelCount],
                    Vector corner[kWheelCount]) {
  corner[wheel] += up * (to - height[wheel]);
  height[wheel] = to;
  state.wheels[wheel].CurrDelta = std::max(state.wheels[wheel].CurrDelta, to);
}

/// Where the ground stops the falling chassis the body goes on into its springs, from where it is
/// and as fast as it was. Springs and dampers don't take that for a bump.
void CCarCam::Squat(const Landing& landing) {
  double before[kWheelCount];
  for (int i = 0; i < kWheelCount; ++i) before[i] = GetCompression(i);
  CarBodyState& body = state.cCarBody;
  Sink(landing.speed, body.fRelYVel, body.fRelXAngVel, body.fRelZAngVel);
  Sink(landing.braked, body.fRelYVel, body.fRelXAngVel, body.fRelZAngVel);
  Sink(landing.lifted, body.fRelYPos, body.fRelXAng, body.fRelZAng);
  for (int i = 0; i < kWheelCount; ++i) {
    state.wheels[i].CurrDelta -= landing.lifted[i];
    state.wheels[i].lastCompression += GetCompression(i) - before[i];
  }
}

/// Takes the mean, the pitch and the roll of what the four corners do out of three numbers.
void CCarCam::Sink(const double corner[kWheelCount], double& y, double& pitch, double& roll) const {
  double sum = 0.0, byZ = 0.0, byX = 0.0, zz = 0.0, xx = 0.0;
  for (int i = 0; i < kWheelCount; ++i) {
    const CarWheelGeometry& wheel = geometry.wheels[i];
    sum += corner[i];
    byZ += corner[i] * wheel.zOffset;
    byX += corner[i] * wheel.xOffset;
    zz += wheel.zOffset * wheel.zOffset;
    xx += wheel.xOffset * wheel.xOffset;
  }
  if (sum == 0.0 || zz == 0.0 || xx == 0.0) return;
  y -= sum / kWheelCount;
  pitch += byZ / zz;
  roll -= byX / xx;
}

}  // namespace orv::rws::addon
