// Follow filters of cameras, the rail and vehicles: the response filters by the names and argument
// orders of the follow rigs. All are pure; dt is in seconds, factors are per nominal step.
#pragma once

#include "util/Quat.h"
#include "util/ResponseFilters.h"
#include "util/Vector3.h"

namespace orv::util {

/// Moves position `p` with velocity `v` (units/s) towards `x` like a damped spring: response in
/// 1/s², smoothing in 1/s. A response of 0 puts p on x and leaves v alone; a maximum velocity of 0
/// is no limit.
template <class T>
void SpringFollowPosition(Vector3<T>& p, Vector3<T>& v, const Vector3<T>& x, double response,
                          double smoothing, double maxVelocity, double dt) {
  springDamper(p, v, x, response, smoothing, maxVelocity, dt);
}

/// The same for rotation `q` with angular velocity `w` (rad/s, own frame), in ten sub-steps.
template <class T>
void SpringFollowRotation(Quat<T>& q, Vector3<T>& w, const Quat<T>& x, double response,
                          double smoothing, double maxVelocity, double dt) {
  springDamper(q, w, x, response, smoothing, maxVelocity, dt);
}

/// Moves `c` towards `x`. A factor of 0, or one whose sub-step would reach x, lands on x.
template <class T>
void ExpFollowVector(Vector3<T>& c, const Vector3<T>& x, double factor, double dt) {
  lowPassClamped(c, x, factor, 0.0, dt);
}

/// The same for rotations, the short way; the result is normalised. A non-const `x` with a negative
/// w is negated in place, the same rotation.
template <class T>
void ExpFollowQuaternion(Quat<T>& q, Quat<T>& x, double factor, double dt) {
  lowPassClamped(q, x, factor, 0.0, dt);
}
template <class T>
void ExpFollowQuaternion(Quat<T>& q, const Quat<T>& x, double factor, double dt) {
  lowPassClamped(q, x, factor, 0.0, dt);
}

/// For callers that pass a strength and not a rate: lands on `x` when `strength` is exactly 1 or 0,
/// else blends, also beyond x: a sub-step is not tested against reaching it.
template <class T>
void ExpFollowQuaternionByStrength(Quat<T>& q, Quat<T>& x, double strength, double dt) {
  lowPass(q, x, strength, 0.0, dt);
}
template <class T>
void ExpFollowQuaternionByStrength(Quat<T>& q, const Quat<T>& x, double strength, double dt) {
  lowPass(q, x, strength, 0.0, dt);
}

/// Moves `c` towards `x`, by at most `maxRate` per second (0 is no limit). With a limit, a factor
/// of 0 or one that saturates leaves c alone, which is meant.
inline void ExpFollowScalar(double& c, double x, double factor, double maxRate, double dt) {
  lowPassLimited(c, x, factor, maxRate, dt);
}

/// Turns `q` towards `x` about their common axis by at most `maxRate` rad/s (0 is no limit). A
/// larger factor turns less, which is meant.
template <class T>
void ExpFollowQuaternionLimited(Quat<T>& q, Quat<T>& x, double factor, double maxRate, double dt) {
  lowPassLimited(q, x, factor, maxRate, dt);
}
template <class T>
void ExpFollowQuaternionLimited(Quat<T>& q, const Quat<T>& x, double factor, double maxRate,
                                double dt) {
  lowPassLimited(q, x, factor, maxRate, dt);
}

}  // namespace orv::util
