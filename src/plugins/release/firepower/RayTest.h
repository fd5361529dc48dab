// What stands in a projectile's way.
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

}  // namespace orv::rws::addon
