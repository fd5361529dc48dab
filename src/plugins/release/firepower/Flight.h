// The flight of a projectile through one frame.
#pragma once

#include "util/Vector3.h"

namespace orv::rws::addon {

/// What a projectile meets on a straight way. World space.
struct SurfaceHit {
  double part = 1.0;             ///< of the way up to there, in [0, 1]
  util::Vector3<double> stop;    ///< the place right before the surface
  util::Vector3<double> normal;  ///< unit, on the side that the projectile comes from
};

/// Finds what projectiles meet in the present frame.
class RayTest {
 public:
  /// The first surface on the way from `from` to `to`. With `frame` the way is that of a frame, in
  /// which surfaces move too: one that sweeps over a projectile meets it.
  virtual bool Meet(const util::Vector3<double>& from, const util::Vector3<double>& to, bool frame,
                    SurfaceHit& hit) const = 0;

 protected:
  ~RayTest() = default;
};

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

  /// An elasticity (%) of 0 still leaves a thousandth: a projectile that lies on a surface keeps
  /// meeting it.
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
