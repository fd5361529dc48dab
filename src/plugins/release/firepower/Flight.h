// The flight of a projectile through one frame.
#pragma once

#include "plugins/release/firepower/RayTest.h"
#include "util/Vector3.h"

namespace orv::rws::addon {

struct FlightRules {
  double gravity = 0.0;        ///< along -Y (m/s²)
  double airResistance = 0.0;  ///< of the velocity, lost a second (1/s), at or above 0

  friend bool operator==(const FlightRules& a, const FlightRules& b) {
    return a.gravity == b.gravity && a.airResistance == b.airResistance;
  }
};

/// What a hit does.
struct BounceRules {
  double share = 0.001;     ///< of the speed, left after a hit
  double deltaValue = 0.2;  ///< step off the surface (m), above 0

  /// Meant: an elasticity (%) of 0 still leaves a thousandth, and not nothing.
  static double ShareOf(double elasticity) {
    return elasticity <= 0.0 ? 0.001 : elasticity / 100.0;
  }
};

/// Position (m) and velocity (m/s) in world space. Both follow the exact solution for gravity with
/// a drag that is proportional to the velocity, whatever the length of the step.
struct Flight {
  util::Vector3<double> position;
  util::Vector3<double> velocity;

  /// `dt` seconds with nothing in the way.
  void Free(const FlightRules& rules, double dt);
  /// `dt` seconds among `surfaces`; the straight line of each step is swept, so nothing thin is
  /// passed. After eight hits it waits for the next frame. Returns the number of hits.
  int Sweep(const FlightRules& rules, const BounceRules& bounce, double dt,
            const RayTest& surfaces);

 private:
  void Bounce(const BounceRules& bounce, const SurfaceHit& hit, const RayTest& surfaces);
};

}  // namespace orv::rws::addon
