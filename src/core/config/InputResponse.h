// How an input answers its control.
#pragma once

#include "unidevice/Property.h"

namespace orv::rws::core {

/// The numbers of unidevice::Property.
struct InputResponse {
  double multiplier = 1.0;
  double exponent = 1.0;
  double deadzone = 0.1;
  double offset = 0.0;

  static InputResponse Of(const unidevice::Property& input) {
    return {input.multiplier, input.exponent, input.deadzone, input.offset};
  }
  void WriteTo(unidevice::Property& input) const {
    input.multiplier = multiplier;
    input.exponent = exponent;
    input.deadzone = deadzone;
    input.offset = offset;
  }
};

inline bool operator==(const InputResponse& a, const InputResponse& b) {
  return a.multiplier == b.multiplier && a.exponent == b.exponent && a.deadzone == b.deadzone &&
         a.offset == b.offset;
}

}  // namespace orv::rws::core
