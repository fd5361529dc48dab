// Lengths of vectors whose squares leave the range of a double.
#pragma once

#include <limits>

namespace orv::util::detail {

/// Whether a sum of squares has neither overflowed nor lost anything to underflow, so that its root
/// is the length. Not so for zero either, which is rare enough to be looked at with the others.
constexpr bool isWholeSquare(double sum) {
  using Limits = std::numeric_limits<double>;
  return sum >= Limits::min() / Limits::epsilon() && sum <= Limits::max();
}

/// The power of two by which the components of any other sum are scaled to give a whole one.
constexpr double wholeSquareScale(double sum) {
  return sum > 1.0 ? 0x1p-600 : 0x1p600;
}

}  // namespace orv::util::detail
