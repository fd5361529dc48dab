// An animated variable that holds each sample until the next.
#pragma once

#include "util/AVar.h"

namespace orv::util {

/// For states and choices: between two samples the earlier one counts.
template <class T>
class AVar_Latest final : public AVar<T> {
 public:
  using Sample = typename AVar<T>::Sample;

  Sample& interpolate(Sample& out, const Sample& a, const Sample& /*b*/,
                      double /*time*/) const override {
    out = a;
    return out;
  }
};

}  // namespace orv::util
