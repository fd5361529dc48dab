// The car model: its state, where its parts are, and the order of a frame.
#include "plugins/release/4wheelerextended/CCarCam.h"

#include <algorithm>
#include <cmath>

namespace orv::rws::addon {

using Vector = CCarCam::Vector;
using Quat = CCarCam::Quat;

Quat ShortestArc(const Vector& from, const Vector& to) {
  const Vector axis = from.cross(to);
  Quat arc(axis.x, axis.y, axis.z, 1.0 + from.dot(to));
  arc.normalize();
  return arc;
}

double CCarCam::SubStepLength(double dt) {
  return dt / std::max(std::trunc(dt / car::kSubStep), 1.0);
}

void CCarCam::Reset(const util::QTransform<double>& base) {
  const CarState fresh;
  const int seeds[] = {state.randomValue_gravelShake, state.randomValue_burnout,
                       state.randomValue_steeringNoise};
  state = fresh;
  state.randomValue_gravelShake = seeds[0];
  state.randomValue_burnout = seeds[1];
  state.randomValue_steeringNoise = seeds[2];
  state.base = base;
  state.steeringResponse = m_settings.channels[kSteeringWheel].responseFactor;
  for (int i = 0; i < kWheelCount; ++i) {
    CarWheelState& wheel = state.wheels[i];
    const CarWheelGeometry& sizes = geometry.wheels[i];
    wheel.bottom = base.position + base.rotation.rotate({sizes.xOffset, 0.0, sizes.zOffset});
    wheel.centre = wheel.bottom + base.rotation.rotate({0.0, GetEffectiveRadius(i), 0.0});
    wheel.lastCentreY = wheel.centre.y;
  }
}

void CCarCam::StandOn(const Vector ground[kWheelCount]) {
  const Vector up = state.base.rotation.rotate({0.0, 1.0, 0.0});
  LayBase(ground, up, GetChassisPosition(), up);
}

void CCarCam::StartAt(double gas, double dt) {
  state.filtered[kGasPedal] = state.dFollowAccMem = gas;
  state.gasRawPrevious = gas / Maximum(kGasPedal);
  state.gasPedalPrevious = input[kGasPedal];
  const Vector ahead = state.base.rotation.rotate({0.0, 0.0, -1.0});
  state.qTransCarAbsIncr.position = ahead * (geometry.scale * gas * SubStepLength(dt));
}

void CCarCam::Carry(const Quat& turn, const Vector& from, const Vector& to) {
  const auto carry = [&](Vector& point) { point = to + turn.rotate(point - from); };
  for (util::QTransform<double>* pose :
       {&state.base, &state.followCamFirst, &state.followCamSecond}) {
    carry(pose->position);
    pose->rotation = pose->rotation * turn;
  }
  state.gravityFilterMem.rotation = state.gravityFilterMem.rotation * turn;
  for (Vector* direction :
       {&state.qTransCarAbsIncr.position, &state.vSkidBrakePosIncr, &state.skidIncrement})
    *direction = turn.rotate(*direction);
  for (CarWheelState& wheel : state.wheels) {
    carry(wheel.centre);
    carry(wheel.bottom);
    wheel.lastCentreY = wheel.centre.y;
  }
}

double CCarCam::GetEffectiveRadius(int wheel) const {
  return geometry.wheels[wheel].radius * m_settings.dWheelRadiusMult;
}

double CCarCam::Maximum(CarChannel channel) const {
  return std::max(m_settings.channels[channel].maximum, 1e-9);
}

double CCarCam::Mass() const {
  return std::max(m_settings.dMassMult, car::kLeastMassMult) * 25.0;
}

double CCarCam::GetFallAcceleration() const {
  return car::kJumpGravity * m_settings.dJumpGravity * geometry.scale * 0.25;
}

CCarCam::Quat CCarCam::GetBodyRotation() const {
  const CarBodyState& body = state.cCarBody;
  return Quat::fromRotationVector({body.fRelXAng, 0.0, 0.0}) *
         Quat::fromRotationVector({0.0, 0.0, body.fRelZAng}) * state.base.rotation;
}

CCarCam::Vector CCarCam::GetChassisPosition() const {
  return state.base.position + state.base.rotation.rotate({0.0, geometry.dHeight, 0.0});
}

/// The foot of the chassis over a wheel (world).
CCarCam::Vector CCarCam::GetCorner(int wheel) const {
  const CarWheelGeometry& sizes = geometry.wheels[wheel];
  return state.base.position + state.base.rotation.rotate({sizes.xOffset, 0.0, sizes.zOffset});
}

CCarCam::Vector CCarCam::GetBodyPosition() const {
  // Along the body's own up, so that projecting back along it gives the base again exactly: a
  // leaning car that stands must not creep.
  const Vector up = GetBodyRotation().rotate({0.0, 1.0, 0.0});
  double height = state.cCarBody.fRelYPos + geometry.dHeight;
  if (geometry.dHeight > 0.1 * GetEffectiveRadius(0)) {
    // Over the wheels as they stood against the base one frame back, since they meet the ground
    // only when the body is there. Against the base: in a fall both move on together.
    double wheels = 0.0;
    for (const CarWheelState& wheel : state.wheels) wheels += wheel.CurrDelta / kWheelCount;
    height = std::max(height, wheels + car::dMinGroundDistance * geometry.dHeight);
  }
  return state.base.position + up * height;
}

double CCarCam::GetLateralOffset(int wheel) const {
  const double x = geometry.wheels[wheel].xOffset;
  return x + std::abs(std::sin(state.cCarBody.fRelZAng)) * x / 6.0;
}

CCarCam::Quat CCarCam::GetWheelTurn(int wheel) const {
  const CarWheelState& w = state.wheels[wheel];
  return Quat::fromRotationVector({w.pfTotalPitch, 0.0, 0.0}) *
         Quat::fromRotationVector({0.0, w.yaw, 0.0});
}

void CCarCam::Update(double dt) {
  const double h = SubStepLength(dt);
  m_raw = input;
  m_lastGas = m_settings.bAutonomousMode ? m_lastGas : state.filtered[kGasPedal];
  spin.fill(0.0);
  for (int i = 0; i < kWheelCount; ++i) m_lastBottom[i] = state.wheels[i].bottom;
  HandleAir(dt);
  HandleSkidBrake(dt);
  LatchSkidding();
  FilterInputs(dt);
  ApplyBooster(dt);
  ApplyAbs(dt);
  UpdateGravelNoise(dt);
  HoldSprings(h);
  Fall(dt);
  // As many as fill the frame: dividing dt by h again could lose one to rounding.
  const int count = std::max(static_cast<int>(dt / car::kSubStep), 1);
  for (int i = 0; i < count; ++i) SubStep(dt, h);
  state.gasPedalPrevious = input[kGasPedal];
}

}  // namespace orv::rws::addon
