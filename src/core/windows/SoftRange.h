// The part of a parameter's range that a slider covers.
#pragma once

#include "core/config/ConfigElement.h"

namespace orv::rws::core::windows {

/// Ends of a slider; finite, `from` below `to`.
struct SoftRange {
  double from = 0.0;
  double to = 1.0;
};

/// Ranges reach to 1e18, where a slider would be of no use. A range of up to 2,000 steps is taken
/// whole; of a longer one what lies within a round number (1, 2 or 5 times a power of ten) that is
/// at least a hundred steps and twice as far from 0 as `value` and `usual`, the value that the
/// parameter comes with.
SoftRange SoftRangeOf(const ConfigElement::Range& range, double value, double usual);

}  // namespace orv::rws::core::windows
