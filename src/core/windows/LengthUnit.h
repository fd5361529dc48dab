// The user's unit of lengths.
#pragma once

#include "core/services/Preferences.h"

namespace orv::rws::core::windows {

struct LengthUnit {
  double perMetre;
  const char* name;
  int decimals;  ///< so many of a length are worth a look
};

inline LengthUnit UnitOf(Preferences::LengthUnit unit) {
  switch (unit) {
    case Preferences::LengthUnit::kCentimetres:
      return {100.0, "cm", 1};
    case Preferences::LengthUnit::kMillimetres:
      return {1000.0, "mm", 0};
    case Preferences::LengthUnit::kFeet:
      return {1.0 / 0.3048, "ft", 3};
    case Preferences::LengthUnit::kInches:
      return {1.0 / 0.0254, "in", 2};
    default:
      return {1.0, "m", 3};
  }
}

}  // namespace orv::rws::core::windows
