// A sub-step of the car model: the physics.
#include <algorithm>
#include <cmath>

#include "plugins/release/4wheelerextended/CCarCam.h"
#include "plugins/release/4wheelerextended/CarRandom.h"
#include "util/Angles.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using util::lowPass;
using util::sign;
using Vector = CCarCam::Vector;
using Quat = CCarCam::Quat;

namespace {

constexpr double kSteeringLimit = 1.5707649108683606;  ///< rad, just short of a right angle
constexpr double kStraight = 1e45;                     ///< turn radius of a straight line (m)
constexpr double kStraightWheel = 1e16;  ///< the same where a wheel's yaw is found (m)
constexpr double kLeastGas = 1e-8;       ///< keeps radius and steering defined at rest
/// Grip of a car that slides freely. Not 0, which a filter takes for "no filter".
constexpr double kLeastGrip = 1e-6;
constexpr double kGripCatch = 0.2;  ///< response with which a good grip becomes a full one

/// A grip that is almost full becomes full.
void Catch(double& grip, double from, double h) {
  if (grip > from) lowPass(grip, 1.0, kGripCatch, 0.0, h);
  if (grip > 0.99) grip = 1.0;
}

}  // namespace

double CCarCam::GetPivotZ() const {
  const double halfScale = geometry.scale * 0.5;
  const double pivot = m_settings.dTurnBase - geometry.wheels[2].zOffset / halfScale;
  return pivot * geometry.HalfBase();
}

double CCarCam::GetTurnRadius(double steering) const {
  const double tangent = std::tan(std::clamp(steering, -kSteeringLimit, kSteeringLimit));
  const double rho = tangent == 0.0 ? -kStraight : (geometry.HalfBase() - GetPivotZ()) / tangent;
  return sign(rho) * std::clamp(std::abs(rho), geometry.scale * 0.01, kStraight);
}

void CCarCam::SubStep(double frameDt, double h) {
  double& gas = state.filtered[kGasPedal];
  if (std::abs(gas) < kLeastGas) gas = sign(gas) * kLeastGas;
  const double rho = GetTurnRadius(state.filtered[kSteeringWheel]);
  const Vector lastIncrement = state.qTransCarAbsIncr.position;
  if (!IsFlying()) Drive(frameDt, h, rho);

  util::QTransform<double>& base = state.base;
  base.rotation = state.qTransCarAbsIncr.rotation * base.rotation;
  base.rotation.normalize();
  const Vector increment = state.qTransCarAbsIncr.position;
  state.vAcceleration = base.rotation.conjugate().rotate((increment - lastIncrement) / h / h);
  base.position += increment;

  TurnSteeredWheels(h, rho);
  if (IsFlying())
    MoveBodyInTheAir();
  else
    MoveBody(h);
}

void CCarCam::Drive(double frameDt, double h, double rho) {
  const double speed = GetSpeed();
  const double burnoutYaw = -state.filtered[kBurnout] * state.filtered[kSteeringWheel] * h;
  const double skidYaw = state.dSkidBrakeLocalYawIncr;
  const double yaw = state.bSkidBreakingOn ? skidYaw : speed * h / rho + burnoutYaw + skidYaw;
  double grip = std::max(1.0 - state.filtered[kSkidding], kLeastGrip);
  Catch(grip, 0.7, h);
  double& yawIncrement = state.fCarLocalYawIncr;
  lowPass(yawIncrement, yaw, grip, 0.0, h);

  Burn(frameDt, h);

  const Quat& q = state.base.rotation;
  state.qTransCarAbsIncr.rotation = Quat::fromRotationVector({0.0, yawIncrement, 0.0});
  Vector step = state.skidIncrement;
  if (!state.bSkidBreakingOn)
    step = q.rotate({-std::tan(yawIncrement) * GetPivotZ(), 0.0, -speed * h});
  const Vector ahead(0.0, 0.0, -1.0);
  const Vector swing = Quat::fromRotationVector({0.0, burnoutYaw * 0.5, 0.0}).rotate(ahead) - ahead;
  step += q.rotate(swing) * (geometry.wheels[0].zOffset + geometry.wheels[1].zOffset);
  HoldDown(step);
  Step(step, grip, h);
}

/// While a corner of the chassis still falls to its wheel, the car's nose doesn't tell where it
/// goes: only the ground may push it up, and that is what the fit of the base does. Else a car that
/// lands on its back wheels would take off again along its nose.
void CCarCam::HoldDown(Vector& step) const {
  if (!m_settings.cCarCambGravityOn) return;
  if (std::none_of(state.wheels.begin(), state.wheels.end(),
                   [](const CarWheelState& wheel) { return wheel.released != 0.0; }))
    return;
  const double rise = -step.dot(down);
  const double most = std::max(0.0, -state.qTransCarAbsIncr.position.dot(down));
  if (rise > most) step += down * (rise - most);
}

/// A burnout spins the back wheels, shakes the body and slows the steering until it has died.
void CCarCam::Burn(double frameDt, double h) {
  double& burnout = state.filtered[kBurnout];
  m_burnoutTilt = 0.0;
  if (burnout <= 0.001) {
    state.bBurnoutOn = false;
    return;
  }
  if (!state.bBurnoutOn) {
    state.bBurnoutOn = true;
    state.steeringResponse = m_settings.channels[kSteeringWheel].responseFactor;
  }
  if (m_raw[kBurnout] == 0.0)
    burnout *= m_settings.dBurnoutFadeoutFactor;
  else
    lowPass(state.steeringResponse, 0.05, 0.1, 0.0, h);
  for (const int back : {2, 3}) spin[back] -= burnout * util::kPi * 0.49 * h / frameDt;
  const double w = DrawRandom(state.randomValue_burnout) * 20.0;
  m_burnoutTilt = (w * w * w * w * w * m_settings.dBurnoutShake + 1.0) * burnout *
                  m_settings.dBurnoutTiltForce * geometry.scale * geometry.scale / 46875.0;
}

/// Takes the wanted step as far as the tires hold.
void CCarCam::Step(const Vector& step, double grip, double h) {
  Vector& increment = state.qTransCarAbsIncr.position;
  double& memory = state.dWantedSkiddingValue;
  if (m_raw[kSkidding] != 0.0 && !state.bSkidBreakingOn) {
    if (!state.bCarInTheAir) lowPass(increment, step, grip, 0.0, h);
    memory = grip;
    return;
  }
  const double stop = state.bSkidBreakingOn ? m_settings.dSkidBrakeStopFactor : 1.0;
  lowPass(memory, grip, stop * m_settings.dSkiddingReleaseRespFact, 0.0, h);
  memory = std::clamp(memory, kLeastGrip, 1.0);
  Catch(memory, 0.5, h);
  lowPass(increment, step, memory, 0.0, h);
}

void CCarCam::TurnSteeredWheels(double h, double rho) {
  const double half = GetSpeed() * h / rho / 2.0;
  const double around = half == 0.0 ? kStraightWheel : GetSpeed() * h / 2.0 / std::tan(half);
  const double side = sign(around);
  const double pivot = GetPivotZ();
  for (int i = 0; i < kWheelCount; ++i) {
    const CarWheelGeometry& wheel = geometry.wheels[i];
    if (wheel.zOffset == pivot) continue;
    state.wheels[i].yaw =
        std::atan2((pivot - wheel.zOffset) * side, (around + wheel.xOffset) * side);
  }
}

// --- the body ---

void CCarCam::MoveBodyInTheAir() {
  CarBodyState& body = state.cCarBody;
  for (double* place : {&body.fRelYPos, &body.fRelXAng, &body.fRelZAng})
    *place *= car::dLandingNeutralizer;
  for (double* velocity : {&body.fRelYVel, &body.fRelXAngVel, &body.fRelZAngVel}) *velocity *= 0.5;
  // So that the dampers don't take the landing for a blow.
  for (int i = 0; i < kWheelCount; ++i) state.wheels[i].lastCompression = GetCompression(i);
}

double CCarCam::GetCompression(const CarState& of, int wheel) const {
  const CarBodyState& body = of.cCarBody;
  const CarWheelGeometry& sizes = geometry.wheels[wheel];
  return body.fRelYPos - std::sin(body.fRelXAng) * sizes.zOffset +
         std::sin(body.fRelZAng) * sizes.xOffset - of.wheels[wheel].CurrDelta;
}

/// Sum of the springs' forces (kg m/s²), and their torques about the body's axes.
double CCarCam::MeasureSprings(double h, double& pitchTorque, double& rollTorque) {
  double sum = 0.0;
  pitchTorque = rollTorque = 0.0;
  for (int i = 0; i < kWheelCount; ++i) {
    double& last = state.wheels[i].lastCompression;
    const double y = GetCompression(i);
    const int axle = IsFront(i) ? 0 : 1;
    const double force = -m_stiffness[axle] * y - (y - last) / h * m_damping[axle];
    last = y;
    sum += force;
    pitchTorque += force * geometry.wheels[i].zOffset;
    rollTorque += force * geometry.wheels[i].xOffset;
  }
  return sum;
}

/// One velocity Verlet step of an angle.
void CCarCam::MoveAngle(double& angle, double& velocity, double& acceleration, double limit,
                        double newAcceleration, double h) const {
  const double moved = angle + velocity * h + acceleration / 2.0 * h * h;
  velocity += (acceleration + newAcceleration) / 2.0 * h;
  acceleration = newAcceleration;
  angle = std::clamp(moved, -limit, limit);
  if (angle != moved) velocity = 0.0;
}

void CCarCam::MoveBody(double h) {
  CarBodyState& body = state.cCarBody;
  const double scale = geometry.scale;
  const double mass = Mass();
  const double inertia = (mass / 12.0 + mass / 12.0) * scale * scale;
  const double gravity = m_settings.fGravity * 10.0;
  const double force = state.filtered[kExternalForce];
  const Vector& r = externalForce.position;
  const Vector& e = externalForce.direction;
  double meanRadius = 0.0;
  for (int i = 0; i < kWheelCount; ++i) meanRadius += GetEffectiveRadius(i) / kWheelCount;
  const double lever = body.fRelYPos + geometry.dHeight + scale / 6.0 - meanRadius;
  const Vector bodyDown = GetBodyRotation().conjugate().rotate(down);
  const double weight = mass * gravity * scale / 4.0 * lever;
  const Vector& a = state.vAcceleration;

  double pitchTorque = 0.0, rollTorque = 0.0;
  const double springs = MeasureSprings(h, pitchTorque, rollTorque);
  // Meant: the body rises where the base is lifted, and the force's lever turns the pitch the other
  // way round than the roll.
  const double lift = (springs + force * e.y + mass * a.y) / mass;
  const double pitch =
      -(pitchTorque + m_burnoutTilt + (r.y * e.z - r.z * e.y) * force * scale * scale) +
      weight * bodyDown.z - mass * a.z * lever;
  const double roll = rollTorque + (r.x * e.y - r.y * e.x) * force * scale * scale -
                      weight * bodyDown.x + mass * a.x * lever;

  const double travel =
      0.9 * geometry.wheels[0].radius * m_settings.fRelMaxBumperLen * m_settings.dWheelRadiusMult;
  MoveAngle(body.fRelYPos, body.fRelYVel, body.fRelYAcc, travel, lift, h);
  MoveAngle(body.fRelXAng, body.fRelXAngVel, body.fRelXAngAcc, m_settings.dMaximumForwardTiltAngle,
            pitch / inertia, h);
  MoveAngle(body.fRelZAng, body.fRelZAngVel, body.fRelZAngAcc, m_settings.dMaximumSideTiltAngle,
            roll / inertia, h);
}

}  // namespace orv::rws::addon
