#include "plugins/release/4wheelerextended/CWheelNode.h"

#include <algorithm>
#include <cmath>

#include "core/interface/CInterface.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/4wheelerextended/DisplayMeshes.h"
#include "util/Angles.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Vector = CWheelNode::Vector;
using Quat = CWheelNode::Quat;

namespace {

/// How far above a wheel at rest its ray starts, in body scales.
constexpr double kRayStart = 0.96 / 3.5;
/// How far above its first start a ray may climb to find a surface that the wheel has sunk through,
/// in body scales.
constexpr double kMostClimb = 2.0;
/// Length of the centre ray, in longest drops of the wheel.
constexpr double kRayLength = 1000.0;
/// Cosine against the suspension line of the steepest ground that a wheel goes along.
constexpr double kSlantest = 0.5;
/// Sine of the steepest way that is not a wall's.
constexpr double kSteepest = 0.866;
/// At most so many looks at the ground on the way of a falling wheel in one frame, and then so many
/// halvings of what is between two of them.
constexpr double kMostLooks = 60.0;
constexpr int kHalvings = 4;
/// Part of its radius by which a tire may sink in.
constexpr double kMostGive = 0.9;
/// Room round a wheel, in radii, within which it may be lifted before its neighbourhood is taken
/// anew.
constexpr double kNearMargin = 0.25;
/// How far below a wheel without any ground it is thought to be, in body scales.
constexpr double kNoGround = 1e6;
/// Difference of two poses, in radii, that is not rounding.
constexpr double kMoved = 1e-9;
/// Keys of one wheel in one frame; beyond that no eye can follow.
constexpr int kMostSpinKeys = 100;

/// The rotation `part` of the short way from one to the other.
Quat Between(const Quat& from, const Quat& to, double part) {
  const double side = from.x * to.x + from.y * to.y + from.z * to.z + from.w * to.w < 0.0 ? -1 : 1;
  const auto mix = [&](double a, double b) { return a + (side * b - a) * part; };
  return Quat(mix(from.x, to.x), mix(from.y, to.y), mix(from.z, to.z), mix(from.w, to.w))
      .normalized();
}

}  // namespace

CWheelNode::CWheelNode(CCamera& rig, CCarCam& car, const CarSettings& settings,
                       CGravityDirectionNode& ground, RayFan& fan, const RigSceneNode& chassis,
                       const RigSceneNode& relocator, int index)
    : RigMeshNode(rig, std::string("WheelMesh") + kWheelSuffixes[index], &chassis,
                  CMesh_CarWheel()),
      m_car(car),
      m_settings(settings),
      m_ground(ground),
      m_fan(fan),
      m_relocator(relocator),
      m_index(index) {
  SetWritten();
}

double CWheelNode::GetDt() const {
  return Core().GetFrameDuration();
}

// --- contact ---

void CWheelNode::BeginFrame() {
  m_lastCentre = State().centre;
  m_lastYaw = State().yaw;
}

void CWheelNode::Update(double time) {
  CarWheelState& wheel = State();
  FindLine(time);
  const double lastY = wheel.lastCentreY;
  wheel.lastCentreY = wheel.centre.y;
  // Carried onto this frame's line: only the drop along it is filtered, and a fast wheel does not
  // trail behind its car. A wheel in the air goes with the body, one on the ground goes along that.
  const double restHeight = (m_line.rest - m_line.relocator).dot(m_line.y);
  const bool wasInTheAir = wheel.bInTheAir();

  const int surfaces = m_ground.GetSurfaceCount();
  for (int i = 0; i < surfaces; ++i) {
    if (m_ground.IsKnown(i)) continue;
    // Reported by the rig. The wheel finds no ground in this frame, and stays where it is on its
    // suspension: in the world it would be left behind.
    MoveTo(restHeight - wheel.localHeight);
    m_car.groundBelow[m_index] = wheel.bottom;
    return;
  }
  double drop = 0.0;
  if (surfaces == 0) {
    drop = StandOnPlane();
    m_car.groundBelow[m_index] = GroundAt(drop);
  } else {
    double lastDrop =
        wasInTheAir ? restHeight - wheel.localHeight : (m_line.rest - wheel.centre).dot(m_line.y);
    drop = FindDrop(lastDrop, lastY);
    // Below a chassis that falls, the ground need not stand square to the suspension.
    const double slant = m_normal.dot(m_line.y);
    if (!wasInTheAir && wheel.released != 0.0 && slant > kSlantest)
      lastDrop = (m_line.rest - wheel.centre).dot(m_normal) / slant;
    drop = CastExtraRays(drop);
    m_car.groundBelow[m_index] = GroundAt(drop);
    // A tire that comes down out of the air lands; it doesn't hover above the ground.
    if (!wasInTheAir || drop < lastDrop) drop = RespondToEdges(drop, lastDrop);
  }
  if (m_car.ComesDown(m_index)) m_car.closingSpeed[m_index] = FindClosingSpeed();
  MoveTo(Release(drop));
}

/// Stands the wheel at `drop` on this frame's line.
void CWheelNode::MoveTo(double drop) {
  CarWheelState& wheel = State();
  const util::QTransform<double>& base = m_car.state.base;
  const Vector contact = m_line.At(drop);
  wheel.CurrDelta = base.rotation.conjugate().rotate(contact - base.position).y - m_line.radius;
  wheel.localHeight = (contact - m_line.relocator).dot(m_line.y);
  wheel.centre = contact;
  if (!wheel.bInTheAir()) wheel.centre += m_line.y * wheel.gravelNoise;
  wheel.bottom = wheel.centre - m_line.y * m_line.radius;
}

Vector CWheelNode::FindStand(double time, const Quat& turn, double& drop) {
  FindLine(time, turn);
  if (m_ground.GetSurfaceCount() == 0) {
    drop = StandOnPlane();
  } else {
    const double found = CastExtraRays(FindDrop(0.0, m_line.rest.y));
    drop = State().bInTheAir() ? m_groundDrop : found;
  }
  return m_line.At(drop) - m_line.y * m_line.radius;
}

void CWheelNode::Stand(double time, double drop) {
  MoveTo(drop);
  State().lastCentreY = State().centre.y;
  Place(time, Pose(m_line.rotation, State().centre));
}

void CWheelNode::FindLine(double time, const Quat& turn) {
  Matrix pose = m_relocator.ReadMatrix(time);
  m_line.relocator = pose.translation();
  pose.normalizeRows();
  m_line.x = turn.rotate(pose.axisRow(0));
  m_line.y = turn.rotate(pose.axisRow(1));
  m_line.z = turn.rotate(pose.axisRow(2));
  m_line.rotation = Quat::fromMatrix(pose) * turn;
  m_line.radius = m_car.GetEffectiveRadius(m_index);
  m_line.reach = m_line.radius * m_settings.fRelMaxBumperLen;
  // The wheels hang on the chassis and not on the body that leans on it.
  m_line.rest = m_car.GetChassisPosition() + m_line.x * m_car.GetLateralOffset(m_index) +
                m_line.z * m_car.geometry.wheels[m_index].zOffset +
                m_line.y * (m_line.radius - m_car.geometry.dHeight);
}

/// Where the wheel's bottom would be on the ground below it, if it stands at `drop` else.
Vector CWheelNode::GroundAt(double drop) const {
  return m_line.At(State().bInTheAir() ? m_groundDrop : drop) - m_line.y * m_line.radius;
}

/// Without any ground the plane y = 0 is one, whichever way the vehicle stands.
double CWheelNode::StandOnPlane() {
  const double slope = -m_line.y.y;
  const double drop = slope == 0.0 ? 0.0 : -m_line.rest.y / slope - m_line.radius;
  State().SetInTheAir(false);
  m_normal = {0.0, 1.0, 0.0};
  m_hitPoint = m_line.At(drop) - Vector(0.0, m_line.radius, 0.0);
  return drop;
}

/// The ray starts above the wheel and climbs until it hits, so that a wheel that has sunk through
/// the surface comes out again. `drop` is that of a wheel on the surface.
bool CWheelNode::CastCentreRay(int surface, double start, double lastDrop, double lastY,
                               GroundHit& hit, double& drop) const {
  const double scale = m_car.geometry.scale;
  // A body lower than its own wheels' radius would leave no climb at all.
  const double climb = std::max(start, scale * 0.01);
  double raised = start;
  const double fall = lastY - m_line.At(lastDrop).y;
  if (fall > 2.0 * m_line.radius) raised += 2.0 * fall;
  const double length = (m_settings.fRelMaxBumperLen + 1.0) * m_line.radius * kRayLength;
  for (;; raised += climb) {
    if (m_ground.Cast(surface, m_line.rest + m_line.y * raised, -m_line.y, length, hit)) break;
    if (raised >= kMostClimb * scale) return false;
  }
  drop = hit.distance - raised - m_line.radius;
  return true;
}

double CWheelNode::FindDrop(double lastDrop, double lastY) {
  const double start = m_car.geometry.scale * kRayStart + m_car.geometry.dHeight - m_line.radius;
  bool found = false;
  double least = 0.0;
  for (int surface = 0; surface < m_ground.GetSurfaceCount(); ++surface) {
    GroundHit hit;
    double drop = 0.0;
    if (!CastCentreRay(surface, start, lastDrop, lastY, hit, drop)) continue;
    if (found && drop >= least) continue;
    found = true;
    least = drop;
    m_normal = hit.normal;
    m_hitPoint = hit.point;
  }
  const double reach = m_line.reach;
  State().SetInTheAir(true);
  m_groundDrop = found ? least : m_car.geometry.scale * kNoGround;
  if (!found) {
    m_normal = m_line.y;
    m_hitPoint = m_line.At(reach) - m_line.y * m_line.radius;
    return reach;
  }
  if (!m_settings.cCarCambGravityOn || least < reach) {
    State().SetInTheAir(false);
    return least;
  }
  // In the air, and falling to meet the ground.
  const double most = m_line.radius * m_settings.dMaximumSpringChangeVelocityRel * GetDt();
  return most == 0.0 ? reach : std::min(lastDrop + most, reach);
}

double CWheelNode::CastExtraRays(double drop) {
  if (m_settings.iRayMultiplier <= 1) return drop;
  m_fan.Plan(m_settings.iRayMultiplier, m_settings.dDegsPerRay);
  const double found = CastRaysRound(drop);
  const double higher = drop - 0.5 * m_line.radius;
  if (!State().bInTheAir() || higher <= 0.0) return found;
  // All rays go through the centre: where that hangs within a gap, level with the ground beside it,
  // they go through the gap too. A wheel that is a little higher sees what it would stand on.
  const double stands = CastRaysRound(higher);
  return State().bInTheAir() ? drop : stands;
}

/// Rays round the wheel, at its middle and its side edges. Each that finds ground within the wheel
/// lifts it, and the next one starts from the lifted centre.
double CWheelNode::CastRaysRound(double drop) {
  const double width = m_car.geometry.wheels[m_index].width;
  const double margin = m_line.radius * kNearMargin;
  const double radius = std::hypot(m_line.radius, width * 0.5) + margin;
  double prepared = drop;
  const auto prepare = [&] {
    return m_ground.PrepareNear(m_line.At(drop), radius + std::max(drop, 0.0));
  };
  bool anyGround = prepare();
  const int edge = m_settings.bAddRaysAtWheelEdges ? 1 : 0;
  for (int surface = 0; anyGround && surface < m_ground.GetSurfaceCount(); ++surface) {
    for (int e = -edge; e <= edge; ++e) {
      for (const RayFan::Angle& angle : m_fan.GetAngles()) {
        if (e == 0 && angle.IsCentre()) continue;
        double lift = 0.0;
        if (!CastExtraRay(surface, drop, m_line.x * (width * 0.5 * e), angle, lift)) continue;
        drop -= lift;
        if (prepared - drop <= margin) continue;
        anyGround = prepare();
        prepared = drop;
      }
    }
  }
  return drop;
}

/// `side` leads from the wheel's middle to the ray's plane.
bool CWheelNode::CastExtraRay(int surface, double drop, const Vector& side,
                              const RayFan::Angle& angle, double& lift) {
  // Meant: the ray stands at twice its step's angle, and the lift counts with the step's.
  const double sine2 = 2.0 * angle.sine * angle.cosine;
  const double cosine2 = angle.cosine * angle.cosine - angle.sine * angle.sine;
  const Vector direction = m_line.y * -cosine2 - m_line.x.cross(m_line.y) * sine2;
  const double r = m_line.radius;
  // A wheel that hangs into a gap may be below the surface beside it: the ray comes from as far up
  // as the wheel has dropped, and still counts from the wheel's centre.
  const double raised = cosine2 > 0.0 ? std::max(drop, 0.0) : 0.0;
  const Vector origin = m_line.At(drop) + side - direction * raised;
  GroundHit hit;
  // Ground beyond the wheel can't lift it, so the ray ends at the tire.
  if (!m_ground.CastNear(surface, origin, direction, raised + r, hit)) return false;
  const double h = hit.distance - raised;
  if (h >= r) return false;
  const double across = std::abs(angle.sine) * h;
  lift = std::sqrt(std::max(r * r - across * across, 0.0)) - std::abs(angle.cosine) * h;
  m_normal = hit.normal;
  m_hitPoint = hit.point;
  State().SetInTheAir(false);
  return true;
}

double CWheelNode::RespondToEdges(double drop, double lastDrop) const {
  if (State().bInTheAir()) return drop;
  double followed = lastDrop;
  util::lowPassClamped(followed, drop, m_settings.fSurfaceEdgeResponseFactor, 0.0, GetDt());
  // However soft, a tire gives by no more than there is of it.
  return std::min(followed, drop + kMostGive * m_line.radius);
}

/// Height of a point over the ground that is below it against `up`.
double CWheelNode::HeightOver(const Vector& point, const Vector& up) const {
  const double slope = up.y;
  if (m_ground.GetSurfaceCount() == 0) return slope == 0.0 ? 0.0 : point.y / slope;
  // From where the ground is still below that the point has entered.
  const double raised = m_car.geometry.scale;
  const double length = (m_settings.fRelMaxBumperLen + 1.0) * m_line.radius * kRayLength;
  double height = m_car.geometry.scale * kNoGround;
  for (int surface = 0; surface < m_ground.GetSurfaceCount(); ++surface) {
    GroundHit hit;
    if (m_ground.Cast(surface, point + up * raised, -up, length, hit))
      height = std::min(height, hit.distance - raised);
  }
  return height;
}

/// Speed against the ground (m/s) at which the corner of the chassis meets it: that of its fall
/// and of the car's own way to the ground that rises or sinks below it. In one frame that way may
/// lead over many slopes, so it is followed down to the one of the contact, from where
/// sqrt(v² + 2 g d) holds.
double CWheelNode::FindClosingSpeed() const {
  const double dt = GetDt(), g = m_car.GetFallAcceleration();
  const Vector& up = m_car.GetFallUp();
  struct Look {
    double time;
    Vector point;
    double height;
  };
  const auto look = [&](double time) {
    const Vector point = m_car.GetFallPoint(m_index, time, dt);
    return Look{time, point, HeightOver(point, up)};
  };
  Look above = look(0.0), below = look(dt);
  // No farther apart than the tire is wide: between two looks it rolls over what is there.
  const Vector way = below.point - above.point;
  const double length = (way - up * way.dot(up)).length();
  const int looks = static_cast<int>(std::min(length / m_line.radius, kMostLooks));
  for (int i = 1; i <= looks; ++i) {
    const Look next = look(dt * i / (looks + 1));
    if (above.height <= 0.0 || next.height <= 0.0) {
      below = next;
      break;
    }
    above = next;
  }
  for (int i = 0; i < kHalvings && looks > 0 && above.height > 0.0; ++i) {
    const Look middle = look((above.time + below.time) * 0.5);
    (middle.height > 0.0 ? above : below) = middle;
  }
  const double part = below.time - above.time;
  double speed = (above.height - below.height) / part - g * part * 0.5;
  // A wall is not what it falls on.
  const Vector along = (below.point - up * below.height) - (above.point - up * above.height);
  if (along.dot(up) > along.length() * kSteepest)
    speed = m_car.state.wheels[m_index].fallSpeed + g * above.time;
  speed = std::max(0.0, speed);
  return std::min(std::sqrt(speed * speed + 2.0 * g * std::max(0.0, above.height)),
                  speed + g * part);
}

/// A wheel drops no farther than its suspension, and no faster than it extends. It may rise as fast
/// as it likes.
double CWheelNode::Release(double drop) {
  if (!m_settings.bGroundReleaseOn) return drop;
  CarWheelState& wheel = State();
  const double restHeight = (m_line.rest - m_line.relocator).dot(m_line.y);
  double height = restHeight - drop;
  if (m_settings.fRelMaxBumperLen != 0.0 && height < -m_line.reach) {
    height = -m_line.reach;
    wheel.SetInTheAir(true);
  }
  const double rate = m_settings.dMaximumSpringChangeVelocityRel;
  const double most = m_line.radius * rate * GetDt();
  if (rate != 0.0 && height < wheel.localHeight - most) {
    height = wheel.localHeight - most;
    wheel.SetInTheAir(true);
  }
  return restHeight - height;
}

bool CWheelNode::CastRay(const Vector& origin, const Vector& direction, double maxDistance,
                         double& distance, Vector& normal) const {
  GroundHit hit;
  for (int surface = 0; surface < m_ground.GetSurfaceCount(); ++surface) {
    if (!m_ground.Cast(surface, origin, direction, maxDistance, hit)) continue;
    distance = hit.distance;
    normal = hit.normal;
    return true;
  }
  return false;
}

// --- the node ---

Matrix CWheelNode::Pose(const Quat& rotation, const Vector& centre) const {
  Matrix pose = rotation.toMatrix();
  ScaleRows(pose, {m_car.geometry.wheels[m_index].width, m_line.radius, m_line.radius});
  pose.setTranslation(centre);
  return pose;
}

void CWheelNode::Finish(double before, double time, double length) {
  const CarWheelState& wheel = State();
  const double spin = m_car.spin[m_index];
  const double turns =
      std::min(std::floor(std::abs(spin) / car::kSpinPerKey), static_cast<double>(kMostSpinKeys));
  if (turns > 0.0) {
    const Quat from = Quat::fromMatrix(m_relocator.ReadMatrix(before));
    for (int k = 1; k <= static_cast<int>(turns); ++k) {
      const double part = k * car::kSpinPerKey / std::abs(spin);
      if (part >= 1.0) break;
      const Quat carried = Between(from, m_line.rotation, part);
      const Quat turn =
          Quat::fromRotationVector({wheel.pfTotalPitch - spin * (1.0 - part), 0.0, 0.0}) *
          Quat::fromRotationVector({0.0, m_lastYaw + (wheel.yaw - m_lastYaw) * part, 0.0});
      WriteKey(before + length * part,
               Pose(turn * carried, m_lastCentre + (wheel.centre - m_lastCentre) * part));
    }
  }
  WriteKey(time, Pose(m_car.GetWheelTurn(m_index) * m_line.rotation, wheel.centre));
}

void CWheelNode::StandAtRest(double time) {
  const Matrix place = m_relocator.ReadMatrix(time);
  const Vector scale = place.rowLengths();
  // As large as in a take: what hangs on the wheel keeps its size when one begins.
  const double radius = scale.y * m_settings.dWheelRadiusMult;
  Matrix pose = Quat::fromMatrix(place).toMatrix();
  ScaleRows(pose, {scale.x * car::kWheelWidth, radius, radius});
  pose.setTranslation(place.translation());
  // Only what a user has moved is written: looking at a scene doesn't change it.
  const Matrix now = ReadMatrix(time);
  double apart = 0.0;
  for (int i = 0; i < 16; ++i) apart = std::max(apart, std::abs(pose[i] - now[i]));
  if (apart > kMoved * scale.y) Place(time, pose);
}

}  // namespace orv::rws::addon
