#include "plugins/release/splinespeedcontroller/CCarriageNode.h"

#include <algorithm>
#include <cmath>

#include "core/interface/CInterface.h"
#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/splinespeedcontroller/RailMeshes.h"
#include "unidevice/Property.h"
#include "util/FollowFilters.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Quat = util::Quat<double>;
using Transform = util::QTransform<double>;
using Vector = util::Vector3<double>;

namespace {

/// How far short of a stop the carriage lands that comes round the seam (arc parameter).
constexpr double kBesideWaypoint = 1e-05;
/// With nothing ahead and the inputs not alone, the carriage runs ten times as fast: kept, since
/// scenes were made with it.
constexpr double kUnboundFactor = 10.0;
constexpr double kLeastBrake = 0.01;
/// Frames of a stop this close to a whole number are one.
constexpr double kWholeFrames = 1e-6;
/// A sine below which two directions count as parallel.
constexpr double kParallel = 1e-9;

/// `matrix` with its scale taken out.
Matrix Unscaled(Matrix matrix) {
  matrix.normalizeRows();
  return matrix;
}

double SnapFrames(double frames) {
  const double whole = std::round(frames);
  return std::abs(frames - whole) <= kWholeFrames ? whole : frames;
}

/// Carries a direction through a node's matrix without its scale and translation.
Vector Carried(const Matrix& matrix, const Vector& direction) {
  return Unscaled(matrix).transformVector(direction);
}

}  // namespace

CCarriageNode::CCarriageNode(CCamera& rig, RailContext& rail)
    : RigMeshNode(rig, "CarriageNode", nullptr, CarriageMesh()), m_rail(rail) {
  SetWritten();
}

// --- waypoints ---

double CCarriageNode::PositionOf(int index) const {
  return m_rail.waypoints[static_cast<std::size_t>(index)]->values.onSplinePosition;
}

const WaypointSettings& CCarriageNode::SettingsOf(int index) const {
  if (m_rail.settings.useSimpleParameters && !m_rail.waypoints.empty()) index = 0;
  if (index < 0) return m_rail.panel;
  return m_rail.waypoints[static_cast<std::size_t>(index)]->values.settings;
}

bool CCarriageNode::IsStop(int index) const {
  const WaypointSettings& waypoint = SettingsOf(index);
  return waypoint.stopModeOn || waypoint.frameDelay > 0.0;
}

int CCarriageNode::Successor(int index, bool forward) const {
  const int count = static_cast<int>(m_rail.waypoints.size());
  if (index < 0 || count == 0) return -1;
  return (index + (forward ? 1 : count - 1)) % count;
}

/// The waypoint that goes with the position at `time`; -1 when there is none.
int CCarriageNode::Lookup(double time, double before) const {
  const int count = static_cast<int>(m_rail.waypoints.size());
  if (count < 2) return count - 1;
  const double u = memory.onSplinePosition.value(time);
  const double v = memory.onSplinePosition.value(before);
  const bool stopped = memory.stopped.value(time);
  for (int a = 0; a < count; ++a) {
    const bool isLast = a == count - 1;
    const int b = isLast ? 0 : a + 1;
    const double from = PositionOf(a);
    const double to = PositionOf(b) + (isLast ? 1.0 : 0.0);
    if (!(from <= u && u < to)) continue;
    if (memory.directionForward) return !stopped || u < from || from < v ? b : a;
    if (to >= 1.0) return count - 1;
    return stopped && to <= v ? b : a;
  }
  return memory.directionForward ? 0 : count - 1;
}

/// The waypoint to travel to. Backwards, one that the carriage rests exactly on and is about to
/// leave is not ahead.
int CCarriageNode::WaypointAhead(double time, double before) const {
  const int found = Lookup(time, before);
  if (found < 0 || m_rail.waypoints.size() < 2) return found;
  const double u = memory.onSplinePosition.value(time);
  const bool leaving = !memory.directionForward && !memory.stopped.value(time) &&
                       u == PositionOf(found) && u == memory.onSplinePosition.value(before);
  return leaving ? Successor(found, false) : found;
}

/// The waypoint that lies exactly at `u`, the ends of the path being one place; -1 without one.
int CCarriageNode::StandingAt(double u) const {
  for (std::size_t i = 0; i < m_rail.waypoints.size(); ++i) {
    const double w = PositionOf(static_cast<int>(i));
    if (w == u || std::abs(w - u) == 1.0) return static_cast<int>(i);
  }
  return -1;
}

bool CCarriageNode::HasPassed(double u, double v, double w) const {
  // A single waypoint is strict on both sides, so that a carriage that leaves it does not stop.
  if (m_rail.waypoints.size() == 1)
    return memory.directionForward ? w <= u && v < w : u < w && w < v;
  return memory.directionForward ? w <= u && v <= w : u < w && w <= v;
}

// --- the take's start ---

void CCarriageNode::Start(double time) {
  const double dt = Core().GetFrameDuration();
  const double before = util::frameBefore(time, dt), after = util::frameAfter(time, dt);
  CarriageMemory& m = memory;
  const Matrix pose = ReadMatrix(time);
  m_started = time;
  m_scale = ScaleOf(pose);
  m.initialized = true;
  if (m.qTransMem.samples.empty()) m.qTransMem.set(time, Transform::fromMatrix(pose));

  // A later start at this time finds what this one settled on, whatever stood around it.
  const auto settle = [&](auto& history) {
    const auto value = history.value(time);
    CutHistory(history, after);
    history.set(time, value);
  };
  settle(m.currentSpeed);
  settle(m.dCurrentCarriageSpeed_Avar);
  settle(m.speedMem);
  settle(m.qTransMem);
  settle(m.onSplinePosition);
  settle(m.framesAtWaypoint);
  settle(m.stopped);

  m.directionForward = m.currentSpeed.value(time) >= 0.0;
  m.current = WaypointAhead(time, before);
  if (m.stopped.value(time)) {
    // At the seam of the path the waypoint stood at is not the one that the position leads to.
    const int here = StandingAt(m.onSplinePosition.value(time));
    if (here >= 0 && (m.current < 0 || StandingAt(PositionOf(m.current)) != here)) m.current = here;
  }
  m.next = Successor(m.current, m.directionForward);
  if (!m.stopped.value(before)) {
    m.stopTime = m.delay = 0.0;
    m.stopped.set(time, false);  // a stop that begins here begins anew
    Arrive(time, before, false);
    return;
  }
  m.delay = m.current < 0 ? 0.0 : SettingsOf(m.current).frameDelay;
  if (m.delay > 0.0)
    m.stopTime = time - m.framesAtWaypoint.value(time) / Core().GetFrameRate();
  else if (m.current >= 0 && SettingsOf(m.current).stopModeOn)
    m.delay = -1.0;
}

void CCarriageNode::Initialize(Path path, double u, double time) {
  memory = CarriageMemory();
  memory.initialized = true;
  memory.onSplinePosition.set(time, u);
  Frame frame = BeginFrame(time);
  frame.path = path;
  const Matrix before = ReadMatrix(time);
  Matrix pose =
      Orientation(frame.up, SettingsOf(-1).yawMode, AimTangent(frame), Quat::fromMatrix(before))
          .toMatrix();
  pose.setRowLengths(ScaleOf(before));
  pose.setTranslation(PathPosition(path, u, time));
  Place(time, pose);
}

// --- a frame ---

void CCarriageNode::Step(double time) {
  Frame frame = BeginFrame(time);
  if (frame.path == Path::kNone) {
    Stand(frame);
    return;
  }
  const Leg leg = ChooseLeg(frame);
  if (m_rail.settings.bInputMode) memory.current = -1;
  MeasurePath(frame);
  const double fall = -frame.tangent.dot(frame.up) * m_rail.settings.gravityStrength;
  const double target = (fall + leg.inputSpeed + leg.wantedSpeed) * m_rail.settings.speedMult;
  memory.currentSpeed.set(time, target);
  const Braking braking = Brake(frame, leg);
  TurnRound(target, frame);
  FilterSpeed(frame, leg, m_rail.inputs.forcedStop->read() != 0.0 ? 0.0 : target);
  Advance(frame, braking.factor);
  if (!frame.wasStopped) Arrive(time, frame.before, frame.startPressed);
  HandleStop(frame);
  HoldAtWaypoint(frame);
  HandleEnds(frame);
  Aim(frame, leg, braking);
}

CCarriageNode::Path CCarriageNode::ChoosePath() const {
  if (!m_rail.settings.useCCurve && m_rail.nodeSpline.IsValid()) return Path::kHost;
  return m_rail.curveInformation.IsUsable() ? Path::kOwn : Path::kNone;
}

CCarriageNode::Frame CCarriageNode::BeginFrame(double time) const {
  Frame frame{};
  frame.time = time;
  frame.dt = Core().GetFrameDuration();
  frame.before = std::max(util::frameBefore(time, frame.dt), m_started);
  m_rail.nodeSpline.SetTime(time);
  frame.path = ChoosePath();
  frame.reference = m_rail.referenceFrame.ReadMatrix(time);
  frame.previous = ReadMatrix(frame.before);
  frame.up = m_rail.downDirection.ReadMatrix(time).axisRow(1).normalized();
  frame.wasStopped = memory.stopped.value(frame.before);
  frame.startPressed = m_rail.inputs.start && m_rail.inputs.start->read() != 0.0;
  return frame;
}

/// No path: the carriage keeps its place, its histories and the pose that it had.
void CCarriageNode::Stand(const Frame& frame) {
  memory.currentSpeed.set(frame.time, 0.0);
  memory.speedMem.set(frame.time, 0.0);
  memory.dCurrentCarriageSpeed_Avar.set(frame.time, 0.0);
  memory.onSplinePosition.set(frame.time, memory.onSplinePosition.value(frame.before));
  memory.framesAtWaypoint.set(frame.time, memory.framesAtWaypoint.value(frame.before));
  memory.stopped.set(frame.time, frame.wasStopped);
  memory.qTransMem.set(frame.time, Transform::fromMatrix(frame.previous));
  WriteKey(frame.time, frame.previous);
}

CCarriageNode::Leg CCarriageNode::ChooseLeg(const Frame& frame) const {
  Leg leg;
  const int c = memory.current;
  int from = c;
  if (!frame.wasStopped) {
    if (c >= 0) {
      from = Successor(c, !memory.directionForward);
      const double here = PositionOf(from), there = PositionOf(c);
      const int last = static_cast<int>(m_rail.waypoints.size()) - 1;
      if (memory.directionForward)
        leg.length = std::abs(c == 0 ? (1.0 - here) + there : there - here);
      else
        leg.length = c == last ? std::abs((1.0 - there) + here) : here - there;
      leg.wantedSpeed = m_rail.settings.MetresPerSecond(SettingsOf(from).speed);
    }
    leg.inputSpeed =
        m_rail.settings.MetresPerSecond(m_rail.inputs.speed->read() * m_rail.settings.maxSpeed);
  }
  if (m_rail.settings.bInputMode) leg.wantedSpeed = 0.0;
  if (from >= 0) leg.waypoint = m_rail.waypoints[static_cast<std::size_t>(from)].get();
  leg.settings = &SettingsOf(from);
  return leg;
}

/// Gravity and banking go by the rig's own curve, also where the carriage runs on the host's: a
/// host's curve has no curvature to ask for. Without a curve of its own, the rig takes the slope of
/// the host's and does not bank.
void CCarriageNode::MeasurePath(Frame& frame) const {
  const double u = memory.onSplinePosition.value(frame.before);
  if (!m_rail.curveInformation.IsUsable()) {
    frame.tangent = m_rail.nodeSpline.WorldTangent(u).normalized();
    return;
  }
  Vector position, tangent, curvature;
  m_rail.curveInformation.curve.PositionTangentAndCurvature(OnOwnCurve(u), position, tangent,
                                                            curvature);
  frame.tangent = Carried(frame.reference, tangent);
  frame.curvature = Carried(frame.reference, curvature);
}

/// At a speed of exactly 0 the direction stays. A new direction has another waypoint ahead.
void CCarriageNode::TurnRound(double speed, const Frame& frame) {
  const bool forward = speed > 0.0 || (speed == 0.0 && memory.directionForward);
  if (forward == memory.directionForward) return;
  memory.directionForward = forward;
  if (memory.current >= 0 && !frame.wasStopped)
    memory.current = WaypointAhead(frame.before, frame.before);
  memory.next = Successor(memory.current, forward);
}

CCarriageNode::Braking CCarriageNode::Brake(const Frame& frame, const Leg& leg) const {
  Braking braking;
  if (memory.current < 0) {
    braking.factor = m_rail.settings.bInputMode ? 1.0 : kUnboundFactor;
    return braking;
  }
  const WaypointSettings& waypoint = SettingsOf(memory.current);
  if (!(!frame.wasStopped && waypoint.stopModeOn) && !(waypoint.frameDelay > 0.0)) return braking;
  const double v = memory.onSplinePosition.value(frame.before);
  const double w = PositionOf(memory.current);
  const bool ahead = memory.directionForward ? w >= v : w <= v;
  const double distance = ahead ? std::abs(w - v) : 1.0 - std::abs(w - v);
  const double part = waypoint.brakePercentage / 100.0;
  if (distance / leg.length < part) {
    braking.factor = std::pow(distance / (part * leg.length), waypoint.brakeSoftner);
    braking.on = true;
  }
  braking.factor = std::clamp(braking.factor, kLeastBrake, 1.0);
  return braking;
}

void CCarriageNode::FilterSpeed(const Frame& frame, const Leg& leg, double target) {
  const WaypointSettings& settings = memory.current < 0 ? SettingsOf(-1) : *leg.settings;
  const auto before = [&](const util::AVar_Linear<double>& history) {
    return frame.wasStopped ? 0.0 : history.value(frame.before);
  };
  double first = before(memory.speedMem);
  double second = before(memory.dCurrentCarriageSpeed_Avar);
  util::ExpFollowScalar(first, target, settings.accelSoftner, settings.maxAccel, frame.dt);
  util::ExpFollowScalar(second, first, settings.accelSoftner, settings.maxAccel, frame.dt);
  memory.speedMem.set(frame.time, first);
  memory.dCurrentCarriageSpeed_Avar.set(frame.time, second);
}

double CCarriageNode::PathLength(const Frame& frame) const {
  if (frame.path == Path::kHost) return m_rail.nodeSpline.WorldLength();
  return m_rail.curveInformation.RawLength() * ScaleOf(frame.reference).z;
}

/// Braking acts on the way alone and not on the filtered speed, which can so recover at once.
void CCarriageNode::Advance(const Frame& frame, double brake) {
  const double u = memory.onSplinePosition.value(frame.before);
  const double way = frame.dt * memory.dCurrentCarriageSpeed_Avar.value(frame.time) * brake;
  const double moved = u + way / PathLength(frame);
  memory.onSplinePosition.set(frame.time, std::isfinite(moved) ? moved : u);
}

// --- stops ---

/// Passes what lies between the two positions: several waypoints in one frame at most up to the
/// first stop. A press of Start on the move passes a waypoint without its stop.
void CCarriageNode::Arrive(double time, double before, bool startPressed) {
  const double u = memory.onSplinePosition.value(time);
  double v = memory.onSplinePosition.value(before);
  memory.stopped.set(time, false);
  memory.delay = 0.0;
  for (std::size_t i = 0; i < m_rail.waypoints.size(); ++i) {
    if (memory.current < 0 || !HasPassed(u, v, PositionOf(memory.current))) return;
    if (!startPressed && IsStop(memory.current)) {
      const WaypointSettings& waypoint = SettingsOf(memory.current);
      BeginStop(time, waypoint.stopModeOn ? -1.0 : waypoint.frameDelay);
      return;
    }
    v = PositionOf(memory.current);
    GoOn();
  }
}

/// Travels to the waypoint behind the present one.
void CCarriageNode::GoOn() {
  memory.current = memory.next;
  memory.next = Successor(memory.current, memory.directionForward);
}

void CCarriageNode::BeginStop(double time, double delay) {
  memory.delay = delay;
  memory.stopTime = time;
  memory.framesAtWaypoint.set(time, 0.0);
  memory.stopped.set(time, true);
}

void CCarriageNode::EndStop(double time) {
  memory.delay = memory.stopTime = 0.0;
  memory.stopped.set(time, false);
  memory.framesAtWaypoint.set(time, 0.0);
  GoOn();
}

/// A stop of n frames ends n + 1 frames after it began: the count is looked at before it rises.
void CCarriageNode::HandleStop(const Frame& frame) {
  if (!memory.stopped.value(frame.time)) {
    memory.framesAtWaypoint.set(frame.time, 0.0);
    return;
  }
  const double stood = memory.framesAtWaypoint.value(frame.before);
  if (frame.startPressed || (memory.delay >= 0.0 && frame.wasStopped && memory.delay <= stood)) {
    EndStop(frame.time);
    return;
  }
  const double frames = (frame.time - memory.stopTime) * Core().GetFrameRate();
  memory.framesAtWaypoint.set(frame.time, memory.delay < 0.0 ? 0.0 : SnapFrames(frames));
  memory.stopped.set(frame.time, true);
}

void CCarriageNode::HoldAtWaypoint(const Frame& frame) {
  if (memory.current < 0 || !memory.stopped.value(frame.time) || !IsStop(memory.current)) return;
  const double u = memory.onSplinePosition.value(frame.time);
  const double w = PositionOf(memory.current);
  if (memory.directionForward ? u >= w : u <= w) memory.onSplinePosition.set(frame.time, w);
}

/// A carriage that stands at a waypoint is not carried over the seam.
void CCarriageNode::HandleEnds(const Frame& frame) {
  const double u = memory.onSplinePosition.value(frame.time);
  const bool forward = memory.directionForward;
  if (memory.stopped.value(frame.time) || (forward ? u < 1.0 : u > 0.0)) return;
  if (!m_rail.settings.loop) {
    memory.onSplinePosition.set(frame.time, forward ? 1.0 : 0.0);
    memory.dCurrentCarriageSpeed_Avar.set(frame.time, 0.0);
    memory.currentSpeed.set(frame.time, 0.0);
    memory.speedMem.set(frame.time, 0.0);
    return;
  }
  PassSeam(frame, forward ? u - 1.0 : u + 1.0);
}

/// Comes to `u` from the path's other end. Waypoints that lie on the way are passed as elsewhere;
/// right before the first one that is a stop the carriage lands, to stop there in the next frame.
void CCarriageNode::PassSeam(const Frame& frame, double u) {
  const bool forward = memory.directionForward;
  for (std::size_t i = 0; memory.current >= 0 && i < m_rail.waypoints.size(); ++i) {
    const double w = PositionOf(memory.current);
    if (forward ? u <= w : u >= w) break;
    if (IsStop(memory.current) && !frame.startPressed) {
      memory.onSplinePosition.set(frame.time, forward ? w - kBesideWaypoint : w + kBesideWaypoint);
      return;
    }
    GoOn();
  }
  const bool laps = u < 0.0 || u > 1.0;  // in one frame
  memory.onSplinePosition.set(frame.time, laps ? u - std::floor(u) : u);
  if (!laps || memory.current < 0) return;
  memory.current = WaypointAhead(frame.time, frame.time);
  memory.next = Successor(memory.current, forward);
}

// --- the pose ---

/// Short of a stop at the seam lies before the beginning of an open curve or behind its end, where
/// the curve has no direction but "up".
double CCarriageNode::OnOwnCurve(double u) const {
  return m_rail.curveInformation.curve.IsClosed() ? u : std::clamp(u, 0.0, 1.0);
}

Vector CCarriageNode::PathPosition(Path path, double u, double time) const {
  if (path == Path::kHost) return m_rail.nodeSpline.WorldPosition(u);
  const Matrix reference = m_rail.referenceFrame.ReadMatrix(time);
  return reference.transformPoint(m_rail.curveInformation.curve.Position(u));
}

Vector CCarriageNode::AimTangent(const Frame& frame) const {
  const double u = memory.onSplinePosition.value(frame.time);
  // The tangent as the host hands it out is in the world: on a turned curve too the carriage looks
  // along it.
  if (frame.path == Path::kHost) return m_rail.nodeSpline.WorldTangent(u).normalized();
  Vector position, tangent;
  m_rail.curveInformation.curve.PositionAndTangent(OnOwnCurve(u), position, tangent);
  return Carried(frame.reference, tangent).normalized();
}

/// False when the carriage is to look along the path.
bool CCarriageNode::LookDirection(const Frame& frame, const Leg& leg, const Braking& braking,
                                  Vector& direction) const {
  if (!leg.waypoint) return false;
  if (!leg.settings->lookAtTarget && m_rail.inputs.lookAtTarget->read() == 0.0) return false;
  const CWaypointNode* looked = leg.waypoint;
  if (braking.on && memory.next >= 0 && leg.settings->lookWhenBraking)
    looked = m_rail.waypoints[static_cast<std::size_t>(memory.next)].get();
  if (!looked->target.IsBound()) return false;
  const Vector way =
      looked->target.ReadMatrix(frame.time).translation() - frame.previous.translation();
  direction = way == Vector() ? -frame.previous.axisRow(2).normalized() : way.normalized();
  return true;
}

/// Looks along `direction`. Where that is the vertical, the side axis stays as in `kept`.
Quat CCarriageNode::Orientation(const Vector& up, bool upright, const Vector& direction,
                                const Quat& kept) const {
  const Vector pole = upright ? up : direction;
  Vector side = direction.cross(up);
  if (side.length() < kParallel) side = kept.toMatrix().axisRow(0);
  side -= pole * side.dot(pole);
  if (side.length() < kParallel) side = pole.cross(kept.toMatrix().axisRow(2));
  side.normalize();
  Matrix axes;
  axes.setAxisRow(0, side);
  axes.setAxisRow(1, upright ? up : side.cross(direction));
  axes.setAxisRow(2, upright ? side.cross(up) : -direction);
  return Quat::fromMatrix(axes);
}

/// The lean into the curve: about the axis that points backwards along the path. A carriage that
/// brakes leans less, by the speed that braking leaves.
Quat CCarriageNode::Bank(const Frame& frame, const Braking& braking) const {
  const Vector right = frame.tangent.cross(frame.up).normalized();
  const double speed =
      memory.dCurrentCarriageSpeed_Avar.value(frame.time) * (braking.on ? braking.factor : 1.0);
  const double angle = -m_rail.settings.bankingFactor * speed * frame.curvature.dot(right);
  return Quat::fromRotationVector(-frame.tangent * angle);
}

void CCarriageNode::Aim(const Frame& frame, const Leg& leg, const Braking& braking) {
  const WaypointSettings& settings = *leg.settings;
  Quat own = Quat::fromMatrix(frame.previous);
  Quat first = memory.qTransMem.value(frame.before).rotation;
  if (settings.gyroMode) {
    first = own;  // what comes after begins from here
  } else {
    Vector direction;
    const bool looks = LookDirection(frame, leg, braking, direction);
    if (!looks) direction = AimTangent(frame);
    Quat wanted = Orientation(frame.up, settings.yawMode, direction, first);
    if (m_rail.settings.bankingFactor != 0.0 && !looks) wanted = wanted * Bank(frame, braking);
    util::ExpFollowQuaternionLimited(first, wanted, settings.rotRespFactor,
                                     settings.maxRateOfChange, frame.dt);
    util::ExpFollowQuaternion(own, first, settings.rotRespFactor, frame.dt);
  }
  memory.qTransMem.set(frame.time, {{}, first});
  Matrix pose = own.toMatrix();
  pose.setRowLengths(m_scale);
  pose.setTranslation(
      PathPosition(frame.path, memory.onSplinePosition.value(frame.time), frame.time));
  WriteKey(frame.time, pose);
}

}  // namespace orv::rws::addon
