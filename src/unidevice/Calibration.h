// How the value that hardware gives becomes that of a control.
#pragma once

#include "util/Sentence.h"

namespace orv::unidevice {

/// Brings what a pedal, trigger or axis gives to the range of a control. Values of the hardware are
/// those of the driver, for an axis -1 to 1. They may rise or fall: `full` may lie below `rest`.
struct Calibration {
  enum class Kind {
    kNone,   ///< the hardware's value as it stands
    kPedal,  ///< 0 at `rest`, 1 at `full`, and nothing beyond
    kAxis,   ///< -1 at `low`, 0 at `rest`, 1 at `full`, and nothing beyond
  };
  /// How far apart two of its values must lie to be told from noise.
  static constexpr double kLeastTravel = 0.2;

  Kind kind = Kind::kNone;
  double rest = 0.0;  ///< hardware's value of a pedal that nobody touches, or of an axis' centre
  double full = 1.0;  ///< hardware's value that is to read 1
  double low = -1.0;  ///< of an axis: hardware's value that is to read -1

  /// The control's value. Exact at `rest`, `full` and `low`.
  double apply(double hardware) const;
  /// Why these numbers make no calibration; empty when they do.
  util::Sentence problem() const;
};

bool operator==(const Calibration& a, const Calibration& b);

}  // namespace orv::unidevice
