// An animated variable that reads the nearer of two samples.
#pragma once

#include "util/AVar.h"

namespace orv::util {

/// A tie goes to the later sample. A read gives a stored value, never a mixed one.
template <class T>
class AVar_Nearest final : public AVar<T> {
 public:
  using Sample = typename AVar<T>::Sample;

  Sample& interpolate(Sample& out, const Sample& a, const Sample& b, double time) const override {
    out = time - a.time < b.time - time ? a : b;
    return out;
  }
};

}  // namespace orv::util
