// The path that a carriage runs along.
#pragma once

#include "util/Vector3.h"

namespace orv::rws::addon {

/// A path by its arc parameter u (0 to 1). World: rig space. Raw: the path's own space. What an
/// implementation does not offer is zero, and such a path is not valid.
class SplineInformation {
 public:
  using Vector = util::Vector3<double>;

  /// The raw tangent, carried into the world without the translation; of any length.
  virtual Vector WorldTangent(double /*u*/) { return {}; }
  virtual Vector RawTangent(double /*u*/) { return {}; }  ///< unit
  virtual Vector WorldPosition(double /*u*/) { return {}; }
  virtual Vector RawPosition(double /*u*/) { return {}; }
  virtual double RawLength() { return 0.0; }
  /// The raw length as the scale of the path's node makes it (m).
  virtual double WorldLength() { return 0.0; }
  /// Whether the host has curves and this one can be acquired.
  virtual bool IsValid() { return false; }
  virtual ~SplineInformation() = default;
};

}  // namespace orv::rws::addon
