// Falls, flights and landings of the car model.
#include "plugins/release/4wheelerextended/CCarCam.h"

#include <algorithm>
#include <cmath>

#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using util::lowPass;
using Vector = CCarCam::Vector;
using Quat = CCarCam::Quat;

void CCarCam::HandleAir(double dt) {
  const double h = SubStepLength(dt);
  const bool allInTheAir = std::all_of(state.wheels.begin(), state.wheels.end(),
                                       [](const CarWheelState& w) { return w.bInTheAir(); });
  const bool lands = !allInTheAir || FallsToGround(dt);
  state.bJustLanded = lands && state.bCarInTheAir;
  if (lands) {
    if (state.bJustLanded) Land(h);
    state.bCarInTheAir = false;
    return;
  }
  if (!state.bCarInTheAir) TakeOff(h);
  Fly(dt, h);
}

/// Whether a car that flies, or would now, comes down to the ground within this frame.
bool CCarCam::FallsToGround(double dt) const {
  if (!m_settings.cCarCambGravityOn) return false;
  double speed = state.qTransCarAbsIncr.position.dot(down) / SubStepLength(dt);
  if (!state.bCarInTheAir) speed += GetMeanFallSpeed();
  const double fall = (speed + GetFallAcceleration() * dt) * dt;
  return std::any_of(state.wheels.begin(), state.wheels.end(),
                     [fall](const CarWheelState& wheel) { return wheel.clearance < fall; });
}

double CCarCam::GetMeanFallSpeed() const {
  double speed = 0.0;
  for (const CarWheelState& wheel : state.wheels) speed += wheel.fallSpeed / kWheelCount;
  return speed;
}

/// The tires touch, but the chassis goes on falling through its suspension until FitBase finds it
/// on the ground: its fall changes hands.
void CCarCam::Land(double h) {
  if (!m_settings.cCarCambGravityOn) return;
  Vector& increment = state.qTransCarAbsIncr.position;
  const double fall = std::max(0.0, increment.dot(down) / h);
  increment -= down * (fall * h);
  for (CarWheelState& wheel : state.wheels) {
    wheel.fallSpeed = fall;
    wheel.released = 1.0;
  }
}

/// How a corner falls from `clearance` (m) above the ground in this frame, which it enters with
/// `speed` (m/s). What is left of the frame behind the contact goes into the springs.
CCarCam::Drop CCarCam::PlanDrop(double speed, double clearance, double dt) const {
  const double g = GetFallAcceleration();
  Drop drop;
  drop.free = drop.planned = (speed + g * dt * 0.5) * dt;
  if (drop.free <= clearance) return drop;
  drop.planned = clearance;
  const double closing = std::sqrt(speed * speed + 2.0 * g * clearance);
  const double left = dt - 2.0 * clearance / (speed + closing);
  const double stiffness = 2.0 * (m_stiffness[0] + m_stiffness[1]) / Mass();
  const double damping = 2.0 * (m_damping[0] + m_damping[1]) / Mass();
  const double h = SubStepLength(dt);
  double deep = 0.0, part = 1.0;
  for (double t = h * 0.5; t < left; t += h) {
    part -= (stiffness * deep + damping * part) * h;
    deep += part * h;
  }
  drop.planned += deep * closing;
  drop.speedLeft = part;
  return drop;
}

/// Moves the chassis down where it has left the ground.
void CCarCam::Fall(double dt) {
  m_drops = {};
  if (IsFlying()) return;
  const Vector up = state.base.rotation.rotate({0.0, 1.0, 0.0});
  m_fallUp = up;
  Vector fallen[kWheelCount];
  bool falls = false;
  for (int i = 0; i < kWheelCount; ++i) {
    const CarWheelState& wheel = state.wheels[i];
    closingSpeed[i] = wheel.fallSpeed;
    m_lastCorner[i] = fallen[i] = GetCorner(i);
    if (wheel.fallSpeed <= 0.0) continue;
    falls = true;
    m_drops[i] = PlanDrop(wheel.fallSpeed, wheel.clearance, dt);
    fallen[i] -= up * m_drops[i].planned;
  }
  if (!falls) return;
  LayBase(fallen, up, state.base.position, up);
  // The chassis is stiff: what it makes of four falls is not each of them.
  for (int i = 0; i < kWheelCount; ++i) m_drops[i].made = (m_lastCorner[i] - GetCorner(i)).dot(up);
}

void CCarCam::TakeOff(double h) {
  state.bCarInTheAir = true;
  state.gravityFilterMem.rotation = state.base.rotation;
  const double fall = GetMeanFallSpeed();
  for (CarWheelState& wheel : state.wheels) wheel.fallSpeed = 0.0;
  if (m_settings.cCarCambGravityOn) state.qTransCarAbsIncr.position += down * (fall * h);
}

void CCarCam::Fly(double dt, double h) {
  Vector& increment = state.qTransCarAbsIncr.position;
  if (m_settings.cCarCambGravityOn) increment += down * (GetFallAcceleration() * h * dt);
  const double limit = car::dScaleRelMaxJumpVelocity * geometry.scale * h / dt;
  const double length = increment.length();
  if (length > limit) increment *= limit / length;
  Quat& memory = state.gravityFilterMem.rotation;
  lowPass(memory, gravityAttitude, car::dHorizontalRestoringFactor, 0.0, dt);
  lowPass(state.base.rotation, memory, car::dHorizontalRestoringFactor, 0.0, dt);
  if (car::dLandingSkiddingFactor > m_raw[kSkidding] + m_settings.dSkiddingOffset)
    state.dWantedSkiddingValue = car::dLandingSkiddingFactor;
}

bool CCarCam::ComesDown(int wheel) const {
  if (IsFlying() || state.wheels[wheel].fallSpeed <= 0.0) return false;
  const Vector up = state.base.rotation.rotate({0.0, 1.0, 0.0});
  return IsCarried(wheel, (groundBelow[wheel] - state.base.position).dot(up));
}

CCarCam::Vector CCarCam::GetFallPoint(int wheel, double time, double dt) const {
  const Vector& from = m_lastCorner[wheel];
  const Vector moved = GetCorner(wheel) + m_fallUp * m_drops[wheel].made - from;
  const double speed = state.wheels[wheel].fallSpeed + GetFallAcceleration() * time * 0.5;
  return from + moved * (time / dt) - m_fallUp * (speed * time);
}

}  // namespace orv::rws::addon
