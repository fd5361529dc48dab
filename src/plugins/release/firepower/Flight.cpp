#include "plugins/release/firepower/Flight.h"

#include <algorithm>
#include <cmath>

namespace orv::rws::addon {

using Vector = util::Vector3<double>;

namespace {

/// Hits of one frame after which a projectile waits for the next.
constexpr int kMostHits = 8;
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

void Flight::Bounce(const BounceRules& bounce, const SurfaceHit& hit, const RayTest& surfaces) {
  // On the bent path, or from a surface that moves away, the velocity may lead off it already.
  if (velocity.dot(hit.normal) < 0.0) velocity = Reflected(velocity, hit.normal);
  velocity *= bounce.share;
  position = hit.stop;
  const Vector off = position + hit.normal * bounce.deltaValue;
  SurfaceHit other;
  position = surfaces.Meet(position, off, false, other) ? other.stop : off;
}

int Flight::Sweep(const FlightRules& rules, const BounceRules& bounce, double dt,
                  const RayTest& surfaces) {
  double rest = dt;
  for (int hits = 0; hits < kMostHits; ++hits) {
    Flight next = *this;
    next.Free(rules, rest);
    SurfaceHit hit;
    if (!surfaces.Meet(position, next.position, hits == 0, hit)) {
      *this = next;
      return hits;
    }
    Flight met = *this;
    met.Free(rules, rest * hit.part);
    velocity = met.velocity;
    Bounce(bounce, hit, surfaces);
    rest *= 1.0 - hit.part;
    if (rest <= 0.0) return hits + 1;
  }
  return kMostHits;
}

}  // namespace orv::rws::addon
