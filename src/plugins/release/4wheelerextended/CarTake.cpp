// A take of a car and its frames.
#include <algorithm>
#include <cmath>

#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Matrix = CCarCamObject::Matrix;
using Vector = CCarCamObject::Vector;
using Quat = util::Quat<double>;
using Transform = util::QTransform<double>;

namespace {

/// First seeds of gravel shake, burnout and steering noise.
constexpr int kFirstSeeds[] = {1000, 10000, 100000};
/// Turn of the steering wheel for one radian of the front wheels (rad).
constexpr double kSteeringWheelTurn = -5.0;
/// Input above which a take starts at the speed that the pedal asks for.
constexpr double kStartInput = 0.01;
/// Distance in body scales by which a user has moved a car, and not rounding.
constexpr double kLeastDrift = 1e-6;
// What a hand on the steering feels in full, for a body scale of 1.
constexpr double kFullPull = 4.0;      ///< m/s² to the side
constexpr double kPullResponse = 0.5;  ///< of a frame
constexpr double kFullShake = 2.0;     ///< m/s of the front wheels up and down, together

}  // namespace

// --- a take begins and ends ---

bool CCarCamObject::KeepsHistories() const {
  return m_settings.bSaveDynamicData || m_settings.bKeyframeOnlyEssential;
}

void CCarCamObject::Start(double time) {
  PushVariableUndo(*m_pInterface, m_memory);
  PushVariableUndo(*m_pInterface, m_gauges);
  m_takeStart = time;
  m_inTake = true;
  m_reportedSurface = false;
  cCarCam.spin.fill(0.0);
  m_pInterface->RecordInputsAtStart();
  ReadInputs();
  if (m_reinitialize || !KeepsHistories()) m_memory.Clear();
  m_reinitialize = false;
  m_gravity.CaptureSurfaces(time);
  if (time <= m_memory.dStartTime || m_memory.IsEmpty())
    Reset(time);
  else
    Resume(time);
  m_memory.Cut(util::frameAfter(time, m_pInterface->GetFrameDuration()));
  if (KeepsHistories()) m_memory.Store(time, cCarCam.state);
  for (std::size_t i = 0; i < m_frontHeights.size(); ++i)
    m_frontHeights[i] = cCarCam.state.wheels[i].CurrDelta;
  WarnOfTarget();
  m_hideModes.Start();
}

void CCarCamObject::Stop() {
  m_gravity.EndFrame();
  m_gravity.ReleaseSurfaces();
  m_hideModes.Stop();
  m_inTake = false;
}

/// The speed at which a take starts, as filtered gas (body scales a second): what the pedal asks
/// for, or else how the body moved before, or else the user's initial velocity.
double CCarCamObject::StartGas(double time) const {
  const double dt = m_pInterface->GetFrameDuration();
  const double maximum = m_settings.channels[kGasPedal].maximum;
  const double pedal = cCarCam.input[kGasPedal];
  if (std::abs(pedal) > kStartInput) return pedal * maximum;
  const Matrix now = m_body.ReadMatrix(time),
               before = m_body.ReadMatrix(util::frameBefore(time, dt));
  // Of the foot: a body that has just been settled leans about that.
  const auto foot = [&](const Matrix& body) {
    return body.translation() - body.axisRow(1).normalized() * cCarCam.geometry.dHeight;
  };
  const double forward = -now.axisRow(2).normalized().dot(foot(now) - foot(before));
  const double moved = forward / dt / cCarCam.geometry.scale;
  return std::abs(moved) > kStartInput ? moved : m_settings.dInitialVelocity / 100.0 * maximum;
}

void CCarCamObject::Reset(double time) {
  m_memory.Clear();
  m_memory.dStartTime = time;
  CheckBodyScale(time);
  Settle(time);
  ReadGeometry(time);
  WarnOfRigging(time);
  Vector bottoms[kWheelCount];
  CarState& state = cCarCam.state;
  state.randomValue_gravelShake = kFirstSeeds[0] + m_settings.iRandomSeedAdder;
  state.randomValue_burnout = kFirstSeeds[1] + m_settings.iRandomSeedAdder;
  state.randomValue_steeringNoise = kFirstSeeds[2] + m_settings.iRandomSeedAdder;
  cCarCam.Reset(FindBase(time, bottoms));
  cCarCam.StartAt(StartGas(time), m_pInterface->GetFrameDuration());
  for (int i = 0; i < kWheelCount; ++i) {
    const Matrix relocator = m_wheels[i]->relocator.ReadMatrix(time);
    state.wheels[i].bottom = bottoms[i];
    state.wheels[i].centre = relocator.translation();
    state.wheels[i].lastCentreY = relocator.translation().y;
  }
  StandWheels(time);
  m_followCam.Reset();
  m_driverCam.Reset(time);
  cCarCam.geometry.steeringWheel =
      m_body.ReadMatrix(time).affineInverse() * m_steeringWheel.ReadMatrix(time);
  m_memory.geometry = cCarCam.geometry;
}

void CCarCamObject::Resume(double time) {
  cCarCam.geometry = m_memory.geometry;
  cCarCam.state = m_memory.At(time);
  // A user who has moved the whole car since finds the take going on from where it is now.
  const Transform here = Transform::fromMatrix(m_bodyBase.ReadMatrix(time));
  const Transform there = cCarCam.state.base;
  if ((here.position - there.position).length() > kLeastDrift * cCarCam.geometry.scale)
    cCarCam.Carry(there.rotation.conjugate() * here.rotation, there.position, here.position);
}

// --- a frame ---

void CCarCamObject::ReadInputs() {
  for (std::size_t i = 0; i < kChannelCount; ++i)
    if (m_inputs[i]) cCarCam.input[i] = m_inputs[i]->read();
}

void CCarCamObject::ReadGravity(double before) {
  // As the base node was keyed one frame back.
  cCarCam.gravityAttitude = cCarCam.state.base.rotation;
  cCarCam.down = -m_gravity.ReadMatrix(before).axisRow(1).normalized();
}

void CCarCamObject::ReadExternalForce(double before) {
  if (cCarCam.state.filtered[kExternalForce] == 0.0 && m_settings.dForceOffset == 0.0 &&
      cCarCam.input[kExternalForce] == 0.0)
    return;
  const Matrix local = m_body.ReadMatrix(before).affineInverse() * m_force.ReadMatrix(before);
  cCarCam.externalForce = {local.translation(), local.axisRow(1).normalized()};
}

void CCarCamObject::Step(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  const double back = util::frameBefore(time, dt);
  // A take that began between two frames has keyed nothing earlier.
  const bool isShort = m_takeStart > back + util::kFrameTolerance;
  const double before = isShort ? m_takeStart : back;
  ReadInputs();
  if (m_settings.bAutonomousMode)
    cCarCam.SteerTowards(m_target.ReadMatrix(before).translation(), dt);
  ReadGravity(before);
  ReadExternalForce(before);
  for (auto& wheel : m_wheels) wheel->wheel.BeginFrame();
  cCarCam.Update(dt);
  WriteBody(time);
  MeetGround(time);
  if (!m_settings.bKeyframeOnlyEssential) WriteWheelHelpers(time);
  cCarCam.FinishWheels();
  for (auto& wheel : m_wheels) wheel->wheel.Finish(before, time, isShort ? time - before : dt);
  cCarCam.FitBase(dt);
  WriteBaseNodes(time);
  if (!m_settings.bKeyframeOnlyEssential) {
    m_followCam.Update(time, dt);
    m_driverCam.Update(time);
    m_topViewCam.Update(time);
  }
  if (KeepsHistories()) m_memory.Store(time, cCarCam.state);
  ShowGauges();
  TellHands(dt);
}

/// The front wheels' grip draws the steering back, and the ground shakes it.
void CCarCamObject::TellHands(double dt) {
  if (!m_inputs[kSteeringWheel]) return;
  unidevice::Feel& feel = m_inputs[kSteeringWheel]->feel;
  double onGround = 0.0, shaken = 0.0;
  for (std::size_t i = 0; i < m_frontHeights.size(); ++i) {
    const CarWheelState& wheel = cCarCam.state.wheels[i];
    if (!wheel.bInTheAir()) {
      onGround += 1.0 / static_cast<double>(m_frontHeights.size());
      shaken += std::abs(wheel.CurrDelta - m_frontHeights[i]) / dt;
    }
    m_frontHeights[i] = wheel.CurrDelta;
  }
  const double scale = cCarCam.geometry.scale;
  const double pull =
      -std::clamp(cCarCam.state.vAcceleration.x / (kFullPull * scale), -1.0, 1.0) * onGround;
  feel.push += (pull - feel.push) * kPullResponse;
  feel.road = std::min(shaken / (kFullShake * scale), 1.0);
}

Matrix CCarCamObject::Scaled(const Transform& pose) const {
  Matrix matrix = pose.toMatrix();
  const double scale = cCarCam.geometry.scale;
  ScaleRows(matrix, {scale, scale, scale});
  return matrix;
}

void CCarCamObject::WriteBody(double time) {
  m_body.WriteKey(time, Scaled({cCarCam.GetBodyPosition(), cCarCam.GetBodyRotation()}));
  m_chassisRelocator.WriteKey(time,
                              Scaled({cCarCam.GetChassisPosition(), cCarCam.state.base.rotation}));
}

void CCarCamObject::MeetGround(double time) {
  m_gravity.BeginFrame(time);
  for (auto& wheel : m_wheels) wheel->wheel.Update(time);
  for (int i = 0; i < m_gravity.GetSurfaceCount(); ++i)
    if (!m_gravity.IsKnown(i)) ReportUnknownSurface();
  m_gravity.EndFrame();
}

/// Once a take: a box for each wheel of each frame would end no take.
void CCarCamObject::ReportUnknownSurface() {
  if (m_reportedSurface) return;
  m_reportedSurface = true;
  Tell("Error",
       "1024 !(parent->cGravityDirectionNode.mParentMesh_inv.size() > iSurface) meaning "
       "mParentMesh_inv[ iSurface] would crash.\n\n4wheelerextended_CCarCamObject",
       kIconCritical);
}

/// The center follows the wheel and its steering without its spin; the suspension moves along the
/// suspension line alone.
void CCarCamObject::WriteWheelHelpers(double time) {
  for (int i = 0; i < kWheelCount; ++i) {
    WheelNodes& nodes = *m_wheels[i];
    const CarWheelState& wheel = cCarCam.state.wheels[i];
    const Matrix relocator = nodes.relocator.ReadMatrix(time);
    const Quat rest = nodes.wheel.GetRelocatorRotation();
    Vector place = wheel.centre;
    if (m_settings.bFixateWheelBottomNodes) place = relocator.translation();
    if (m_settings.bMoveWheelCenterNodeToGroundHitPoint) place = nodes.wheel.GetHitPoint();
    Quat rotation = Quat::fromRotationVector({0.0, wheel.yaw, 0.0}) * rest;
    if (m_settings.bAlignWheelCenterToGroundNormal)
      rotation = rotation * ShortestArc(rotation.rotate({0.0, 1.0, 0.0}), nodes.wheel.GetNormal());
    const auto write = [&](RigMeshNode& node, const Quat& turn, const Vector& at) {
      Matrix pose = turn.toMatrix();
      ScaleRows(pose, relocator.rowLengths());
      pose.setTranslation(at);
      node.WriteKey(time, pose);
    };
    write(nodes.center, rotation, place);
    write(nodes.suspension, rest, wheel.centre);
  }
}

void CCarCamObject::WriteBaseNodes(double time) {
  const Transform& base = cCarCam.state.base;
  m_turnBase.WriteKey(time, Scaled(PivotOf(base)));
  m_bodyBase.WriteKey(time, Scaled(base));
  const double turn = cCarCam.state.filtered[kSteeringWheel] * kSteeringWheelTurn *
                      m_settings.dSteeringWheelRotMult;
  m_steeringWheel.WriteKey(time, m_body.ReadMatrix(time) * cCarCam.geometry.steeringWheel *
                                     Quat::fromRotationVector({0.0, 0.0, turn}).toMatrix());
}

void CCarCamObject::ShowGauges() {
  const double gas = cCarCam.state.filtered[kGasPedal];
  const double scale = cCarCam.geometry.scale;
  m_gauges.velocity = std::abs(gas) < 1e-4 ? 0.0 : scale * m_settings.dVelocityConversionMult * gas;
  const double percent = 100.0 * gas / m_settings.channels[kGasPedal].maximum;
  m_gauges.velocityPercent = std::abs(percent) >= 0.01 ? percent : 0.0;
  // An output is a property that no control drives: what it reads is its offset.
  m_outputs[kVelocity]->offset = m_gauges.velocity;
  m_outputs[kVelocityPercent]->offset = m_gauges.velocityPercent;
  m_outputs[kSteeringAngle]->offset = cCarCam.state.filtered[kSteeringWheel];
  for (int i = 0; i < kWheelCount; ++i)
    m_outputs[kFirstWheelInTheAir + i]->offset = cCarCam.state.wheels[i].inTheAir;
}

}  // namespace orv::rws::addon
