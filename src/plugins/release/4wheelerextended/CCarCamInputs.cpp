// What a frame of the car model makes of the inputs: brakes, pedals, wheel and noise.
#include "plugins/release/4wheelerextended/CCarCam.h"

#include <algorithm>
#include <cmath>

#include "plugins/release/4wheelerextended/CarRandom.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using util::lowPass;
using util::lowPassClamped;
using util::sign;
using Vector = CCarCam::Vector;
using Quat = CCarCam::Quat;

namespace {

/// Frames a second that the brakes' maxima are written against.
constexpr double kBrakeRate = 30.0;
/// Part of its speed at the start that a locked wheel takes away in a brake frame.
constexpr double kSkidStop = 0.001;

/// Gas after a frame of braking from `gas`: it never passes zero.
double Brake(double gas, double strength, double latched, double dt) {
  const double left = gas - strength * latched * dt * kBrakeRate;
  return sign(left) == sign(latched) ? left : 0.0;
}

}  // namespace

// --- skid brake ---

void CCarCam::HandleSkidBrake(double dt) {
  if (state.bCarInTheAir || state.bJustLanded) return;
  if (m_raw[kSkidBrake] <= 0.0) {
    if (!state.bSkidFirstTime) ReleaseSkidBrake(SubStepLength(dt));
    return;
  }
  // What this frame's filter will make of the pedal: waiting for it would lose a frame, in which
  // the car, its gas already cleared, would stop dead.
  double pressed = state.filtered[kSkidBrake];
  const double maximum = Maximum(kSkidBrake);
  lowPassClamped(pressed, maximum * m_raw[kSkidBrake],
                 m_settings.channels[kSkidBrake].responseFactor, 0.0, dt);
  state.bSkidBreakingOn = pressed / maximum > 0.0001;
  if (!state.bSkidBreakingOn) return;
  if (state.bSkidFirstTime) LatchSkidBrake(dt);
  for (const CarChannel cleared : {kGasPedal, kSkidding, kBurnout, kBooster})
    state.filtered[cleared] = 0.0;
  state.dWantedSkiddingValue = 1.0;
  SlideOnLockedWheels(dt);
}

void CCarCam::LatchSkidBrake(double dt) {
  state.bSkidFirstTime = false;
  state.bSkidBreakingOnDisableFeatures = true;
  state.skidIncrement = state.qTransCarAbsIncr.position;
  state.vSkidBrakePosIncr = state.skidIncrement / dt;
  state.dSkidBrakeLocalYawIncr = state.qTransCarAbsIncr.rotation.toRotationVector().y;
  state.skidYawRate = state.dSkidBrakeLocalYawIncr / dt;
}

/// Meant: the latched increments are over dt, and dt comes in again here, so that a stop takes as
/// many frames at every frame rate.
void CCarCam::SlideOnLockedWheels(double dt) {
  const double part = kSkidStop * m_settings.channels[kSkidBrake].maximum * dt * kBrakeRate;
  state.skidIncrement -= state.vSkidBrakePosIncr * part;
  double& yaw = state.dSkidBrakeLocalYawIncr;
  const double turned = yaw - state.skidYawRate * m_settings.dSkidBrakeRotBrakeMult * part;
  yaw = turned * state.skidYawRate > 0.0 ? turned : 0.0;
  if (state.skidIncrement.dot(state.vSkidBrakePosIncr) <= 0.0) StopAll();
}

void CCarCam::StopAll() {
  state.skidIncrement = {};
  state.qTransCarAbsIncr = {};
  state.fCarLocalYawIncr = 0.0;
  state.dSkidBrakeLocalYawIncr = 0.0;
  for (const CarChannel cleared : {kGasPedal, kSkidding, kBurnout, kBooster})
    state.filtered[cleared] = 0.0;
  state.dWantedSkiddingValue = 1.0;
  state.gasRawPrevious = 0.0;
}

void CCarCam::ReleaseSkidBrake(double h) {
  state.bSkidFirstTime = true;
  state.bSkidBreakingOn = false;
  state.bSkidBreakingOnDisableFeatures = false;
  if (state.skidIncrement != Vector()) {
    // Still sliding: the tires take hold again little by little.
    state.filtered[kSkidding] = 1.0;
    state.dWantedSkiddingValue = 0.0;
    const double speed =
        -state.base.rotation.conjugate().rotate(state.qTransCarAbsIncr.position).z / h;
    const double pedal = m_raw[kGasPedal];
    double kept = pedal * speed > 0.0 ? std::abs(pedal) : 0.0;
    if (m_raw[kBooster] > 0.0 && speed > 0.0) kept = 1.0;
    state.fSkidWantedGasPedalValue = kept * speed / geometry.scale;
    state.filtered[kGasPedal] = state.fSkidWantedGasPedalValue;
    state.fCarLocalYawIncr = state.dSkidBrakeLocalYawIncr;
  }
  state.skidIncrement = {};
  state.dSkidBrakeLocalYawIncr = 0.0;
}

void CCarCam::LatchSkidding() {
  const double raw = m_raw[kSkidding];
  if (raw == 0.0) state.bSkiddingArmed = true;
  if (raw != 0.0 && state.bSkiddingArmed) {
    state.bSkiddingOn = true;
    state.bSkiddingArmed = false;
  }
  if (raw == 0.0 && state.filtered[kSkidding] / Maximum(kSkidding) <= 0.05)
    state.bSkiddingOn = false;
}

// --- inputs ---

bool CCarCam::IsAbsActing() const {
  return state.bIsReverseVelAbsBraking || input[kAbsBrake] > 0.0;
}

double CCarCam::GasRaw(double dt) {
  const CarChannelSettings& channel = m_settings.channels[kGasPedal];
  const double maximum = Maximum(kGasPedal);
  double& filtered = state.filtered[kGasPedal];
  double raw = m_raw[kGasPedal];
  if (m_settings.bAutonomousMode) {
    lowPass(state.dGasPedalInputFilterMem, raw * maximum, channel.responseFactor, 0.0, dt);
    filtered += state.dGasPedalInputFilterMem;
    raw = filtered / maximum;
  }
  if (!m_settings.bUseReverseAsAbsBrake) {
    const double slope = state.base.rotation.rotate({0.0, 0.0, 1.0}).y;
    raw += geometry.scale * m_settings.fGravity * slope;
  }
  if (!IsAbsActing() && m_raw[kBooster] == 0.0) {
    // Only the side that the car's speed moves to is limited.
    const double most = m_settings.dGasPedalMaxRateOfChange * dt / maximum;
    const double error = maximum * raw - filtered;
    if (error > 0.0) raw = std::min(raw, state.gasRawPrevious + most);
    if (error < 0.0) raw = std::max(raw, state.gasRawPrevious - most);
  }
  state.gasRawPrevious = raw;
  return raw;
}

double CCarCam::SteeringRaw(double dt) {
  const CarChannelSettings& channel = m_settings.channels[kSteeringWheel];
  double raw = m_raw[kSteeringWheel];
  raw /= std::abs(state.filtered[kGasPedal]) * m_settings.dSpeedDependentTurnRadiusReductionFactor +
         1.0;
  const double sphere = m_settings.dWorldAvoidanceSphereRadius;
  const Vector& position = state.base.position;
  if (!m_settings.bAutonomousMode && sphere > 0.0 && position.length() > sphere * geometry.scale) {
    const double outwards = -state.base.rotation.rotate({0.0, 0.0, 1.0}).dot(position);
    const double right = state.base.rotation.rotate({1.0, 0.0, 0.0}).dot(position);
    if (outwards > 0.0) raw -= 2.0 * outwards * sign(right);
  }
  double most = m_settings.dVelRelMaxSteeringChangeVel * dt;
  if (raw == 0.0) most *= 2.0;
  raw = std::clamp(raw, state.steeringRawPrevious - most, state.steeringRawPrevious + most);
  state.steeringRawPrevious = raw;
  if (m_settings.dSteeringNoise > 0.0)
    raw += std::sqrt(std::abs(GetSpeed())) * (DrawRandom(state.randomValue_steeringNoise) - 0.5) *
           m_settings.dSteeringNoise;
  if (m_settings.bAutonomousMode) {
    const double maximum = Maximum(kSteeringWheel);
    double& filtered = state.filtered[kSteeringWheel];
    lowPass(state.dInputFilterMem, raw * maximum, channel.responseFactor, 0.0, dt);
    filtered += state.dInputFilterMem;
    raw = filtered / maximum;
  }
  return raw;
}

double CCarCam::SkiddingRaw(double dt) const {
  double raw = m_raw[kSkidding];
  if (raw == 1.0) return raw;
  raw += m_settings.dSkiddingOffset;
  const double lateral = std::abs(state.vAcceleration.x) * dt / geometry.scale / Maximum(kGasPedal);
  if (lateral > m_settings.dSkiddingReleaseThresh) raw += 1.0 - m_settings.dSkiddingOffset;
  return raw;
}

void CCarCam::FilterInputs(double dt) {
  m_raw[kGasPedal] = GasRaw(dt);
  for (std::size_t i = 0; i < kChannelCount; ++i) {
    // The rules of a channel see what the channels before it have become.
    if (i == kSteeringWheel) m_raw[i] = SteeringRaw(dt);
    if (i == kSkidding) m_raw[i] = SkiddingRaw(dt);
    if (i == kGravel) m_raw[i] += m_settings.dGravelShakeOffset;
    if (i == kExternalForce) m_raw[i] += m_settings.dForceOffset;
    const CarChannelSettings& channel = m_settings.channels[i];
    const bool burning = i == kSteeringWheel && state.bBurnoutOn;
    lowPassClamped(state.filtered[i], channel.maximum * m_raw[i],
                   burning ? state.steeringResponse : channel.responseFactor, 0.0, dt);
  }
}

void CCarCam::ApplyBooster(double dt) {
  const CarChannelSettings& channel = m_settings.channels[kBooster];
  const double maximum = m_settings.channels[kGasPedal].maximum;
  double& gas = state.filtered[kGasPedal];
  const bool acts = m_raw[kBooster] != 0.0 && !state.bSkidBreakingOnDisableFeatures;
  if (acts) lowPass(gas, channel.maximum * maximum, channel.responseFactor, 0.0, dt);
  double stiffer = 1.0;
  if (acts && gas > maximum * 1.001) stiffer += (gas - maximum) * m_settings.dBoosterStiffnessMult;
  m_stiffness[0] = m_settings.fStiffness * stiffer;
  m_stiffness[1] = m_settings.fStiffnessBack * stiffer;
  m_damping[0] = m_settings.fDamping * stiffer;
  m_damping[1] = m_settings.fDampingBack * stiffer;
}

void CCarCam::ApplyAbs(double dt) {
  double& gas = state.filtered[kGasPedal];
  const double maximum = m_settings.channels[kAbsBrake].maximum;
  const double abs = m_raw[kAbsBrake];
  if (abs > 0.0 && !state.bAbsOn) state.absLatchedGas = m_lastGas;
  state.bAbsOn = abs > 0.0;
  if (state.bAbsOn) gas = Brake(m_lastGas, std::abs(abs * maximum), state.absLatchedGas, dt);

  // The pedal as it stands, not what the rate limit makes of it: a foot on reverse brakes at once.
  const double pedal = input[kGasPedal];
  bool& reverse = state.bIsReverseVelAbsBraking;
  if (!m_settings.bUseReverseAsAbsBrake || m_settings.bAutonomousMode) {
    reverse = false;
  } else if (!reverse) {
    reverse = pedal * m_lastGas < 0.0 && std::abs(m_lastGas) > car::kStandingGas;
    if (reverse) state.reverseAbsLatchedGas = m_lastGas;
  } else if (pedal == 0.0 || pedal * state.gasPedalPrevious < 0.0) {
    reverse = false;
  }
  if (reverse) gas = Brake(m_lastGas, std::abs(maximum * pedal), state.reverseAbsLatchedGas, dt);
  // The rate limit goes on from where the brake has brought the car, not from the pedal: released
  // after a stop, it would else drive on by itself.
  if (reverse || state.bAbsOn) state.gasRawPrevious = gas / Maximum(kGasPedal);
}

void CCarCam::UpdateGravelNoise(double dt) {
  const double gravel = std::abs(state.filtered[kGravel]);
  for (CarWheelState& wheel : state.wheels) {
    double target = 0.0;
    if (gravel > 1e-5) {
      const double n = std::sqrt(std::abs(GetSpeed())) *
                       (DrawRandom(state.randomValue_gravelShake) - 0.5) * gravel;
      target = sign(n) * n * n;
    }
    lowPass(wheel.gravelNoise, target, m_settings.dGravelRoughness, 0.0, dt);
  }
}

/// A sub-step holds only so much stiffness and damping against the mass that it moves; beyond that
/// an explicit spring feeds itself. What is too much is taken back, for both axles alike.
void CCarCam::HoldSprings(double h) {
  constexpr double kMostStiffness = 0.5;  ///< of mass over sub-step squared
  constexpr double kMostDamping = 0.5;    ///< of mass over sub-step
  const double mass = Mass();
  const double inertia = mass / 6.0 * geometry.scale * geometry.scale;
  double stiffest = 0.0, mostDamped = 0.0;
  double k[3] = {}, c[3] = {};
  for (int i = 0; i < kWheelCount; ++i) {
    const int axle = IsFront(i) ? 0 : 1;
    const CarWheelGeometry& wheel = geometry.wheels[i];
    const double lever[3] = {1.0 / mass, wheel.zOffset * wheel.zOffset / inertia,
                             wheel.xOffset * wheel.xOffset / inertia};
    for (int freedom = 0; freedom < 3; ++freedom) {
      k[freedom] += m_stiffness[axle] * lever[freedom];
      c[freedom] += m_damping[axle] * lever[freedom];
      stiffest = std::max(stiffest, k[freedom] * h * h);
      mostDamped = std::max(mostDamped, c[freedom] * h);
    }
  }
  for (int axle = 0; axle < 2; ++axle) {
    if (stiffest > kMostStiffness) m_stiffness[axle] *= kMostStiffness / stiffest;
    if (mostDamped > kMostDamping) m_damping[axle] *= kMostDamping / mostDamped;
  }
}

// --- autonomous ---

void CCarCam::SteerTowards(const Vector& target, double dt) {
  m_lastGas = state.filtered[kGasPedal];
  const double scale = geometry.scale;
  const double gasMaximum = Maximum(kGasPedal);
  const Quat rotation = GetBodyRotation();
  const Vector front = GetBodyPosition() + rotation.rotate({0.0, 0.0, geometry.HalfBase()});
  Vector way = rotation.conjugate().rotate(target - front);
  way.y = 0.0;
  double distance = way.length();
  if (distance > scale * gasMaximum) {
    way *= scale * gasMaximum / distance;
    distance = scale * gasMaximum;
  }
  const Vector direction = distance > 0.0 ? way / distance : Vector();
  double radius = scale * m_settings.dIgnoreSphereRadius;
  const bool inside = distance < radius;
  if (inside) {
    input[kAbsBrake] = 1.0;
    distance = radius = 0.0;
  }
  double wanted =
      -direction.z * m_settings.dFollowAccelerationMult * (distance - radius) / scale * 3.5;
  if (wanted < 0.0) wanted *= m_settings.dReverseMaxVelMult;
  wanted = std::clamp(wanted, -gasMaximum, gasMaximum);
  lowPass(state.dFollowAccMem, wanted, m_settings.dFollowAccRespFact, 0.0, dt);
  state.filtered[kGasPedal] = state.dFollowAccMem;

  const double reduction =
      std::abs(state.dFollowAccMem) * m_settings.dSpeedDependentTurnRadiusReductionFactor * 0.5 +
      1.0;
  double goal =
      sign(wanted) * direction.x * m_settings.channels[kSteeringWheel].maximum / reduction;
  const double most = m_settings.dVelRelMaxSteeringChangeVel * dt;
  double& memory = state.dAutoSteeringValueMem;
  goal = std::clamp(goal, memory - most, memory + most);
  lowPass(memory, goal, m_settings.dAutoSteeringValueRespFact, 0.0, dt);
  if (!inside) state.filtered[kSteeringWheel] = memory;
}

}  // namespace orv::rws::addon
