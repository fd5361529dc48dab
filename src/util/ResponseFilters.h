// Response filters: how rigs smooth inputs and motion, independent of the frame rate.
#pragma once

#include <algorithm>
#include <cmath>

#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::util {

/// Nominal time step that all response factors are written against (s).
inline constexpr double kNominalStep = 0.04;

/// -1 for negative x and 1 otherwise, so 1 for 0 too.
template <class T>
constexpr T sign(T x) {
  return x < T(0) ? T(-1) : T(1);
}

/// How a filter divides one call.
struct ResponseSubsteps {
  int n;     ///< number of sub-steps; 0 or less for a dt of -0.04 s or below
  double k;  ///< part of a nominal step that one sub-step stands for, in [0.5, 1) from 0.02 s on
};

/// The sub-steps of `dt` seconds: one below 0.04 s, two at 0.04 s, three at 0.08 s.
inline ResponseSubsteps responseSubsteps(double dt) {
  const int n = 1 - static_cast<int>(dt / -kNominalStep);
  return {n, dt / kNominalStep / n};
}

namespace detail {

template <class V>
void step(V& value, const V& target, double ratio, int n) {
  for (int i = 0; i < n; ++i) value += (target - value) * ratio;
}

template <class T>
void step(Quat<T>& value, const Quat<T>& target, double ratio, int n) {
  for (int i = 0; i < n; ++i) {
    value.x += (target.x - value.x) * ratio;
    value.y += (target.y - value.y) * ratio;
    value.z += (target.z - value.z) * ratio;
    value.w += (target.w - value.w) * ratio;
  }
}

template <class V>
void lowPass(V& value, const V& target, double factor, double dt) {
  // A factor of exactly 1 is "no filter", as 0 is: users' profiles rely on both ends.
  if (factor == 0.0 || factor == 1.0) {
    value = target;
    return;
  }
  const auto [n, k] = responseSubsteps(dt);
  step(value, target, k * factor, n);
}

template <class V>
void lowPassClamped(V& value, const V& target, double factor, double dt) {
  const auto [n, k] = responseSubsteps(dt);
  if (k * factor >= 1.0 || factor == 0.0)
    value = target;
  else
    step(value, target, k * factor, n);
}

template <class T>
T distanceSquared(const Quat<T>& a, const Quat<T>& b) {
  return Quat<T>(a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w).lengthSquared();
}

template <class T>
void makeWPositive(Quat<T>& q) {
  if (q.w < T(0)) q = -q;
}

/// Gives both a w at or above 0, then turns the value so that the straight walk is the short one.
template <class T>
void alignSigns(Quat<T>& value, Quat<T>& target) {
  makeWPositive(target);
  makeWPositive(value);
  if (distanceSquared(target, value) > distanceSquared(target, -value)) value = -value;
}

template <class T>
void limitLength(Vector3<T>& v, double limit) {
  const T length = v.length();
  // A maximum of 0 is "no limit".
  if (length > limit && limit != 0.0) v *= limit / length;
}

}  // namespace detail

/// Moves `value` towards `target` by `factor` per nominal step. Factors of exactly 0 and exactly 1
/// land on the target at once. `rate` is not read.
inline void lowPass(double& value, double target, double factor, double /*rate*/, double dt) {
  detail::lowPass(value, target, factor, dt);
}
template <class T>
void lowPass(Vector3<T>& value, const Vector3<T>& target, double factor, double /*rate*/,
             double dt) {
  detail::lowPass(value, target, factor, dt);
}
/// For rotations the walk is on the four components, the short way, and the result is normalised.
/// A target with a negative w is negated in place, and so is the value: the same rotations.
template <class T>
void lowPass(Quat<T>& value, Quat<T>& target, double factor, double /*rate*/, double dt) {
  detail::alignSigns(value, target);
  detail::lowPass(value, target, factor, dt);
  value.normalize();
}
template <class T>
void lowPass(Quat<T>& value, const Quat<T>& target, double factor, double rate, double dt) {
  Quat<T> copy = target;
  lowPass(value, copy, factor, rate, dt);
}

/// As `lowPass`, but it lands on the target when a sub-step would reach or pass it, or when
/// `factor` is 0; a factor of 1 is an ordinary one. `rate` is not read.
inline void lowPassClamped(double& value, double target, double factor, double /*rate*/,
                           double dt) {
  detail::lowPassClamped(value, target, factor, dt);
}
template <class T>
void lowPassClamped(Vector3<T>& value, const Vector3<T>& target, double factor, double /*rate*/,
                    double dt) {
  detail::lowPassClamped(value, target, factor, dt);
}
template <class T>
void lowPassClamped(Quat<T>& value, Quat<T>& target, double factor, double /*rate*/, double dt) {
  detail::alignSigns(value, target);
  detail::lowPassClamped(value, target, factor, dt);
  value.normalize();
}
template <class T>
void lowPassClamped(Quat<T>& value, const Quat<T>& target, double factor, double rate, double dt) {
  Quat<T> copy = target;
  lowPassClamped(value, copy, factor, rate, dt);
}

/// As `lowPassClamped`, with the way to go limited to `rate` per second; a rate of 0 is no limit.
inline void lowPassLimited(double& value, double target, double factor, double rate, double dt) {
  const auto [n, k] = responseSubsteps(dt);
  const double s = k * factor;
  if (s >= 1.0 || factor == 0.0) {
    // Meant: with a rate, a saturated or a zero factor leaves the value where it is.
    if (rate == 0.0) value = target;
    return;
  }
  if (rate != 0.0) {
    const double way = target - value;
    target = value + sign(way) * std::min(std::abs(way), rate * dt);
  }
  detail::step(value, target, s, n);
}

/// Turns `value` towards `target` about their common axis, by at most `rate` radians per second (0
/// is no limit). Unlike in its siblings a larger factor turns less: the factor eats up the angle
/// that is turned. Both quaternions are given a w at or above 0 in place.
template <class T>
void lowPassLimited(Quat<T>& value, Quat<T>& target, double factor, double rate, double dt) {
  const auto [n, k] = responseSubsteps(dt);
  const double s = k * factor;
  // Meant: with a rate, a factor of 0 does not land here but turns at that rate.
  if (s >= 1.0 || (factor == 0.0 && rate == 0.0)) {
    value = target;
    return;
  }
  detail::makeWPositive(target);
  detail::makeWPositive(value);
  Quat<T> rel = target * value.conjugate();
  detail::makeWPositive(rel);
  Vector3<T> axis = rel.toRotationVector();
  T theta = axis.length();
  if (rate != 0.0 && theta > rate * dt) theta = rate * dt;
  // Meant: theta is the angle that this call turns, and shrinks as the factor grows.
  if (s < 1.0 && factor != 0.0)
    for (int i = 0; i < n; ++i) theta -= s * theta;
  axis.normalize();
  value = Quat<T>::fromRotationVector(axis * theta) * value;
  detail::makeWPositive(value);
  value.normalize();
}
template <class T>
void lowPassLimited(Quat<T>& value, const Quat<T>& target, double factor, double rate, double dt) {
  Quat<T> copy = target;
  lowPassLimited(value, copy, factor, rate, dt);
}

/// A damped spring, in one step of `dt` seconds: the position moves first, and the spring sees the
/// moved one. `stiffness` in 1/s², `damping` in 1/s, `maxSpeed` in units/s (0 is no limit).
/// A stiffness of 0 puts the position on the target and leaves the velocity alone.
template <class T>
void springDamper(Vector3<T>& position, Vector3<T>& velocity, const Vector3<T>& target,
                  double stiffness, double damping, double maxSpeed, double dt) {
  if (stiffness == 0.0) {
    position = target;
    return;
  }
  position += velocity * dt;
  velocity += ((target - position) * stiffness - velocity * damping) * dt;
  detail::limitLength(velocity, maxSpeed);
}

/// The same for a rotation, in ten sub-steps whatever `dt` is. `angularVelocity` is a rotation
/// vector per second in the rotation's own frame; `maxSpeed` in rad/s.
template <class T>
void springDamper(Quat<T>& rotation, Vector3<T>& angularVelocity, const Quat<T>& target,
                  double stiffness, double damping, double maxSpeed, double dt) {
  if (stiffness == 0.0) {
    rotation = target;
    return;
  }
  Quat<T>& q = rotation;
  Vector3<T>& w = angularVelocity;
  const double h = dt / 10;
  for (int i = 0; i < 10; ++i) {
    // Products of Quat read from left to right in time, so the own-frame turn stands on the left.
    const Quat<T> rate = Quat<T>(w.x, w.y, w.z, 0) * q;
    q = {q.x + h / 2 * rate.x, q.y + h / 2 * rate.y, q.z + h / 2 * rate.z, q.w + h / 2 * rate.w};
    if (q.lengthSquared() != T(0)) q.normalize();
    Quat<T> error = target * q.conjugate();
    w += (error.toRotationVector() * stiffness - w * damping) * h;
    detail::limitLength(w, maxSpeed);
  }
}

}  // namespace orv::util
