// The physics of a belt: rigid steps in a chain, wheels that carry it, ground below it.
#pragma once

#include <memory>
#include <vector>

#include "util/QTransform.h"
#include "util/Vector3.h"

namespace orv::rws::addon {

class BeltJoint;
class triMeshStorage;

/// What a user tunes while the belt runs.
struct BeltTuning {
  double flaccid = 0.01;           ///< share of the bend's error that a joint works against
  double trackDamping = 2.0;       ///< of the bend
  double transFlaccid = 1.5;       ///< the same for the joints' gaps
  double trackTransDamping = 1.0;  ///< of the gaps
  double twistFlaccid = 0.5;       ///< the same for the twist
  double trackTwistDamping = 1.0;  ///< of the twist
  double trackFriction = 1.0;      ///< of the steps
  int trackAccuracy = 8;           ///< solver iterations
  int trackIterations = 1;         ///< world steps in the time of one, in which all goes slower

  friend bool operator==(const BeltTuning& a, const BeltTuning& b) {
    return a.flaccid == b.flaccid && a.trackDamping == b.trackDamping &&
           a.transFlaccid == b.transFlaccid && a.trackTransDamping == b.trackTransDamping &&
           a.twistFlaccid == b.twistFlaccid && a.trackTwistDamping == b.trackTwistDamping &&
           a.trackFriction == b.trackFriction && a.trackAccuracy == b.trackAccuracy &&
           a.trackIterations == b.trackIterations;
  }
  friend bool operator!=(const BeltTuning& a, const BeltTuning& b) { return !(a == b); }
};

/// A step of the belt (a shoe) as a body: a box about its middle, X along the axles, Y away from
/// the wheels, Z along the belt.
struct StepBody {
  util::Vector3<double> size;  ///< whole extents
  double mass = 1.0;           ///< kg; 0 or less is a body that nothing moves
  double pitch = 1.0;          ///< distance of its two joints, half of it on each side
};

/// Where a body is and how it moves.
struct BodyState {
  util::QTransform<double> pose;  ///< of the box' middle
  util::Vector3<double> linear;   ///< velocity (lengths a second)
  util::Vector3<double> angular;  ///< rad/s
};

/// A Bullet world (double precision) of one belt. Space: the scene's, its lengths divided by the
/// scale of the belt's Frame. Bodies are made once, in a fixed order, and then stepped; two worlds
/// that were given the same calls hold the same bits. Wheels and ground are moved by the caller.
class BeltWorld {
 public:
  using Vector = util::Vector3<double>;
  using Transform = util::QTransform<double>;

  /// Makes room for this many bodies in all; more are refused. `h` is the length of the world's
  /// steps (s). Wherever else a step is named, it is one of the belt's.
  BeltWorld(int bodies, const BeltTuning& tuning, double h);
  ~BeltWorld();
  BeltWorld(const BeltWorld&) = delete;
  BeltWorld& operator=(const BeltWorld&) = delete;

  /// Triangles with their scale in them; a shape without any is ignored, and -1 then.
  int AddGround(std::shared_ptr<const triMeshStorage> shape, const Transform& pose);
  /// A cylinder about its X axis; the index counts the wheels.
  int AddWheel(double radius, double halfWidth, const Transform& pose);
  /// Appended to the chain; the index counts the steps.
  int AddStep(const StepBody& body, const BodyState& state);
  /// Joins each step to the one before it, and with `closed` the last to the first.
  void Link(bool closed);

  /// The acceleration of what falls, in the scene's time.
  void SetGravity(const Vector& gravity);
  /// `h` as at first.
  void Tune(const BeltTuning& tuning, double h);

  /// Where the next step of the world leads it, at an even speed.
  void MoveGround(int ground, const Transform& pose);
  void MoveWheel(int wheel, const Transform& pose);
  /// Where it is now, as the steps are.
  Transform GetWheel(int wheel) const;
  /// Fixes a step to a wheel at `distance` from its axle, at the angle at which it is now; false
  /// when that fails. Nothing happens when it is fixed already.
  bool Attach(int step, int wheel, double distance);
  /// The same at an angle (rad, from the wheel's Y towards its Z).
  bool AttachAt(int step, int wheel, double distance, double angle);
  /// Of a step that is fixed to a wheel.
  double GetAttachedAngle(int step) const;
  void Detach(int step);
  bool IsAttached(int step) const;
  /// Leads a step, or no longer, in the middle plane of a wheel, as teeth lead a track.
  void Guide(int step, int wheel, bool on);

  /// One step of the world.
  void Advance();

  int GetStepCount() const;
  BodyState GetStep(int step) const;
  /// The middle of a step.
  Vector GetStepPlace(int step) const;
  void SetStep(int step, const BodyState& state);
  /// While on, what comes to touch has all its points at once, and not one in each
  /// step of the world.
  void FillContacts(bool on);
  /// Speeds of all steps die away at this rate (1/s, in the scene's time); 0 lets them be.
  void Calm(double rate);
  /// How many steps are on another side of the ground than at first, by the ways of their middles
  /// from one call to the next.
  int CountStepsThroughGround();
  /// Speed of the fastest step, in the scene's time.
  double GetTopSpeed() const;

 private:
  struct World;
  struct Body;

  void Move(Body& body, const Transform& pose);
  void Lead(Body& body) const;
  void TuneJoints();
  void TuneAttachment(BeltJoint& joint) const;

  BeltTuning m_tuning;
  double m_worldStep;  ///< length of the world's steps (s)
  std::unique_ptr<World> m_world;
};

}  // namespace orv::rws::addon
