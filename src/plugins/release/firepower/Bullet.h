// One projectile of a gun.
#pragma once

#include <string>

#include "core/interface/RigMarks.h"
#include "plugins/release/firepower/Flight.h"
#include "plugins/release/firepower/VelocityMemory.h"
#include "plugins/release/firepower/firepower_Firepower.h"
#include "util/Quat.h"

namespace orv::rws::addon {

/// A value: the scene node that it stands for belongs to the core. What follows from its birth is
/// kept once; by time there is its velocity here and its pose in the node's keys, by both of which
/// a take may go on from any frame.
class Firepower::Bullet : public CInterface::Callback {
 public:
  /// What a discharge gives a projectile.
  struct Birth {
    Matrix pose;                   ///< of the template (world)
    Vector aim;                    ///< unit, along which the gun fires (world)
    Vector direction;              ///< unit, along which this one leaves, within the spread
    Vector velocity;               ///< of its own and the gun's (m/s)
    double angularVelocity = 0.0;  ///< revolutions a second; below 0 the other way round
    double axisCosine = 1.0;       ///< of the angle from its axis to the one that it spins about
    double axisTurn = 0.0;         ///< in which direction that one leans (rad)
    double length = 0.0;           ///< of the barrel (m)
  };

  Bullet() = default;
  Bullet(int number, CNode* node, double time, const Birth& birth);

  void OnCallback(std::string) override {}

  static std::string NameOf(int number);
  /// Its node still stands in the scene.
  bool HasNode() const;
  /// The first keys: in its place, and so small that it can't be seen until then at `before`
  /// (s), or at the take's start.
  void Appear(CInterface& core, double before, const GunSettings& settings,
              const FlightRules& rules, double dt);
  /// Reads what the frames up to the one at `before` have left.
  void Resume(CInterface& core, double before, const FlightRules& rules, double dt);
  /// Whether an earlier take has flown it behind `time`.
  bool IsFlownBehind(double time) const { return velocity.GetLast() > time; }
  /// Stays from the frame at `time` on where it was in the one at `before`.
  void Rest(CInterface& core, double before, double time);
  /// Flies on to the frame at `time`, `dt` (s) behind the one before. `surfaces` is null where
  /// there are none. False, with the projectile at rest where it was, when it can't.
  bool Step(CInterface& core, double time, double dt, const GunSettings& settings,
            const FlightRules& rules, const RayTest* surfaces);

  /// Its way up to `time` (s).
  RigMarks::Shot TellShot(CInterface& core, double time) const;

  util::DataChunk Save() const;
  void Load(SaveReader& reader, const util::DataChunk& chunk);

  int number = 0;
  CNode* node = nullptr;
  double creationTime = 0.0;  ///< s

 private:
  util::Quat<double> RotationAt(double time, const GunSettings& settings) const;

  util::Quat<double> m_rotation;       ///< at birth (world)
  Vector m_direction;                  ///< its axis at birth, unit (world)
  Vector m_scale{1.0, 1.0, 1.0};       ///< of its node; one below 0 mirrors it
  Vector rotationAxis{0.0, 0.0, 1.0};  ///< that it spins about, unit, in its own space
  double rotationDirection = 1.0;      ///< 1 or -1
  double angularVelocity = 0.0;        ///< revolutions a second, at or above 0
  double length = 0.0;                 ///< of the barrel that fired it (m)
  VelocityMemory velocity;
  Flight m_flight;  ///< in the present frame of a take
};

}  // namespace orv::rws::addon
