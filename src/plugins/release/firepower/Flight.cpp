#include "plugins/release/firepower/Flight.h"

#include <algorithm>
#include <cmath>

namespace orv::rws::addon {

using Vector = util::Vector3<double>;

namespace {

/// Hits of one frame after which a projectile waits for the next.
constexpr int kMostHits = 8;
/// Distance that is kept from a surface (m), so that rounding never puts a projectile through it.
constexpr double kSkin = 1e-5;
/// Product of drag and time below which the exact form loses its digits and a series does not.
constexpr double kSmallDrag = 1e-3;

Vector Reflected(const Vector& velocity, const Vector& normal) {
  return velocity - normal * (2.0 * velocity.dot(normal));
}

}  // namespace

void Flight::Free(const FlightRules& rules, double dt) {
  const Vector gravity(0.0, -rules.gravity, 0.0);
  const double k = rules.airResistance, kt = k * dt;
  double left = 1.0, way = dt, fall = 0.5 * dt * dt;
  if (k > 0.0) {
    left = std::exp(-kt);
    way = -std::expm1(-kt) / k;
    fall = kt < kSmallDrag ? dt * dt * (0.5 - kt / 6.0 + kt * kt / 24.0) : (dt - way) / k;
  }
  position += velocity * way + gravity * fall;
  velocity = velocity * left + gravity * way;
}

void Flight::Bounce(const BounceRules& bounce, Vector normal, const RayTest& surfaces) {
  // On the bent path the velocity may already lead away from what the straight line met.
  if (velocity.dot(normal) < 0.0) velocity = Reflected(velocity, normal);
  velocity *= bounce.share;
  double step = bounce.deltaValue, distance = 0.0;
  Vector other;
  if (surfaces.Cast(position, normal, step + kSkin, distance, other))
    step = std::max(0.0, distance - kSkin);
  position += normal * step;
}

int Flight::Sweep(const FlightRules& rules, const BounceRules& bounce, double dt,
                  const RayTest& surfaces) {
  double rest = dt;
  for (int hits = 0; hits < kMostHits; ++hits) {
    Flight next = *this;
    next.Free(rules, rest);
    const Vector way = next.position - position;
    const double length = way.length();
    double distance = 0.0;
    Vector normal;
    const Vector direction = way / length;
    if (!(length > 0.0) || !surfaces.Cast(position, direction, length + kSkin, distance, normal)) {
      *this = next;
      return hits;
    }
    const double part = std::min(distance / length, 1.0);
    Flight met = *this;
    met.Free(rules, rest * part);
    velocity = met.velocity;
    position += direction * std::max(0.0, distance - kSkin);
    Bounce(bounce, direction.dot(normal) > 0.0 ? -normal : normal, surfaces);
    rest *= 1.0 - part;
    if (rest <= 0.0) return hits + 1;
  }
  return kMostHits;
}

}  // namespace orv::rws::addon
