#include "plugins/release/firepower/Bullet.h"

#include <cmath>

#include "core/interface/CNode.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/SnapshotGuard.h"
#include "plugins/release/firepower/Turns.h"
#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::rws::addon {

using Bullet = Firepower::Bullet;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

namespace {

/// Size of a projectile before its birth, of its own: too small to be seen, and not 0, since hosts
/// can't turn a matrix without a size back into a pose.
constexpr double kUnborn = 1e-4;
/// Speed under which a projectile has no direction to follow (m/s).
constexpr double kStill = 1e-9;
constexpr int kNameDigits = 5;

Matrix PoseOf(const Vector& position, const Quat& rotation, const Vector& scale) {
  Matrix pose = rotation.toMatrix();
  ScaleRows(pose, scale);
  pose.setTranslation(position);
  return pose;
}

/// A mirrored pose is a turned one of which the first axis is upside down.
double MirrorOf(const Matrix& pose) {
  return pose.axisRow(0).dot(pose.axisRow(1).cross(pose.axisRow(2))) < 0.0 ? -1.0 : 1.0;
}

Quat RotationOf(Matrix pose) {
  ScaleRows(pose, {MirrorOf(pose), 1.0, 1.0});
  return Quat::fromMatrix(pose);
}

bool IsUnit(double lengthSquared) {
  return std::abs(lengthSquared - 1.0) < 1e-6;
}

}  // namespace

Bullet::Bullet(int bulletNumber, CNode* bulletNode, double time, const Birth& birth)
    : number(bulletNumber),
      node(bulletNode),
      creationTime(time),
      m_rotation(RotationOf(birth.pose) * ArcBetween(birth.aim, birth.direction)),
      m_direction(birth.direction),
      m_scale(ScaleOf(birth.pose)),
      rotationDirection(birth.angularVelocity < 0.0 ? -1.0 : 1.0),
      angularVelocity(std::abs(birth.angularVelocity)),
      length(birth.length),
      m_flight{birth.pose.translation(), birth.velocity} {
  m_scale.x *= MirrorOf(birth.pose);
  const Vector axis = m_rotation.conjugate().rotate(birth.direction);
  rotationAxis = Deviated(axis, birth.axisCosine, birth.axisTurn);
}

std::string Bullet::NameOf(int number) {
  std::string digits = std::to_string(number);
  if (digits.size() < kNameDigits) digits.insert(0, kNameDigits - digits.size(), '0');
  return "bullet_" + digits;
}

bool Bullet::HasNode() const {
  return node && node->IsValid();
}

/// Axis along the velocity, then spin about the own axis. Both follow from the birth, the velocity
/// and the age, so no rounding adds up.
Quat Bullet::RotationAt(double time, const GunSettings& settings) const {
  Quat rotation = m_rotation;
  if (settings.pitchBullet && m_flight.velocity.length() > kStill)
    rotation = rotation * ArcBetween(m_direction, m_flight.velocity.normalized());
  if (!settings.rotateBullet) return rotation;
  double turns = rotationDirection * angularVelocity * (time - creationTime);
  turns -= std::floor(turns);
  return TurnAbout(rotationAxis, 2.0 * util::kPi * turns) * rotation;
}

void Bullet::Appear(CInterface& core, double before, const GunSettings& settings,
                    const FlightRules& rules, double dt) {
  velocity.Mark(creationTime, m_flight.velocity, rules, dt);
  const Quat rotation = RotationAt(creationTime, settings);
  if (before < creationTime) {
    const SnapshotGuard unborn(core, node, before);
    if (unborn) unborn->SetKey(PoseOf(m_flight.position, rotation, m_scale * kUnborn).data());
  }
  const SnapshotGuard born(core, node, creationTime);
  if (born) born->SetKey(PoseOf(m_flight.position, rotation, m_scale).data());
}

void Bullet::Resume(CInterface& core, double before, const FlightRules& rules, double dt) {
  Matrix pose;
  const SnapshotGuard snapshot(core, node, before);
  if (snapshot) snapshot->GetMatrix(pose.data());
  velocity.CutBehind(before);
  m_flight = {pose.translation(), velocity.At(before)};
  // No take has flown it up to here: it hung in the air and flies on.
  if (velocity.GetLast() != before) velocity.Mark(before, m_flight.velocity, rules, dt);
}

void Bullet::Rest(CInterface& core, double before, double time) {
  Matrix pose;
  const SnapshotGuard last(core, node, before);
  if (last) last->GetMatrix(pose.data());
  const SnapshotGuard snapshot(core, node, time);
  if (last && snapshot) snapshot->SetKey(pose.data());
  velocity.CutBehind(before);
}

bool Bullet::Step(CInterface& core, double time, double dt, const GunSettings& settings,
                  const FlightRules& rules, const RayTest* surfaces) {
  const Flight last = m_flight;
  int hits = 0;
  if (surfaces)
    hits = m_flight.Sweep(rules, {BounceRules::ShareOf(settings.elasticity), settings.deltaValue},
                          dt, *surfaces);
  else
    m_flight.Free(rules, dt);
  const SnapshotGuard snapshot(core, node, time);
  if (!snapshot || !IsFinite(m_flight.position) || !IsFinite(m_flight.velocity)) {
    m_flight = last;
    return false;
  }
  snapshot->SetKey(PoseOf(m_flight.position, RotationAt(time, settings), m_scale).data());
  // A step that no mark foretells needs one of its own.
  if (hits > 0 || !velocity.Covers(rules, dt))
    velocity.Mark(time, m_flight.velocity, rules, dt);
  else
    velocity.Reach(time);
  return true;
}

RigMarks::Shot Bullet::TellShot(CInterface& core, double time) const {
  const auto placeAt = [&](double t) {
    Matrix pose;
    const SnapshotGuard snapshot(core, node, t);
    if (snapshot) snapshot->GetMatrix(pose.data());
    return pose.translation();
  };
  return {placeAt(creationTime), placeAt(time), m_direction, velocity.IsTurnedUntil(time)};
}

// --- saving ---

util::DataChunk Bullet::Save() const {
  util::DataChunk chunk(NameOf(number));
  chunk.addValue("number", number);
  chunk.addValue("creationTime", creationTime);
  velocity.Save(chunk, "velocity");
  chunk.addValue("rotationAxis", rotationAxis);
  chunk.addValue("rotationDirection", rotationDirection);
  chunk.addValue("angularVelocity", angularVelocity);
  chunk.addValue("length", length);
  chunk.addValue("rotation", m_rotation);
  chunk.addValue("direction", m_direction);
  chunk.addValue("scale", m_scale);
  return chunk;
}

void Bullet::Load(SaveReader& reader, const util::DataChunk& chunk) {
  constexpr double kHuge = 1e18;
  reader.ReadStruct("number", number);
  reader.Read("creationTime", creationTime, -kHuge, kHuge);
  velocity.Load(reader, chunk, "velocity");
  reader.ReadStruct("rotationAxis", rotationAxis);
  reader.Read("rotationDirection", rotationDirection, -1.0, 1.0);
  reader.Read("angularVelocity", angularVelocity, 0.0, kHuge);
  reader.Read("length", length, 0.0, kHuge);
  reader.ReadStruct("rotation", m_rotation);
  reader.ReadStruct("direction", m_direction);
  reader.ReadStruct("scale", m_scale);
  const bool turns = IsUnit(rotationAxis.lengthSquared()) && IsUnit(m_direction.lengthSquared()) &&
                     IsUnit(m_rotation.lengthSquared()) && std::abs(rotationDirection) == 1.0;
  if (number < 1 || chunk.name != NameOf(number) || !turns || !(m_scale.length() < kHuge))
    reader.Refuse();
}

}  // namespace orv::rws::addon
