// A frame of the car model: what the inputs ask for.
#include "plugins/release/4wheelerextended/CCarCam.h"

#include <algorithm>
#include <cmath>

#include "plugins/release/4wheelerextended/CarRandom.h"
#include "util/Angles.h"
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
/// Height below the ground, in body scales, that is rounding.
constexpr double kTouch = 1e-9;

/// Gas after a frame of braking from `gas`: it never passes zero.
double Brake(double gas, double strength, double latched, double dt) {
  const double left = gas - strength * latched * dt * kBrakeRate;
  return sign(left) == sign(latched) ? left : 0.0;
}

}  // namespace

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

// --- in the air ---

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

// --- after the ground contact ---

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
