// A number on a line.
#pragma once

#include "gui/componentinterface/Number.h"

namespace orv::gui::componentinterface {

/// A value beyond the range stands at the end. A drag posts kMsgEditBegin, kMsgValueChanged and
/// kMsgEditEnd; keys and the wheel (with the focus) as well. A step is what a key moves and what a
/// drag rounds to; 0: a hundredth of the range, and no rounding.
class Slider : public Number {};

}  // namespace orv::gui::componentinterface
