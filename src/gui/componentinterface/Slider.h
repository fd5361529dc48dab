// A number on a line.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// Like a spinner it holds the double that was set, also one beyond its range, where it stands at
/// the end. A drag posts kMsgEditBegin, kMsgValueChanged and kMsgEditEnd; keys and the wheel (with
/// the focus) as well.
class Slider : public Interface {
 public:
  virtual void SetValue(double value) = 0;
  virtual double GetValue() const = 0;
  virtual void SetRange(double min, double max) = 0;
  virtual double GetMin() const = 0;
  virtual double GetMax() const = 0;
  /// What a key moves, and what a drag rounds to; 0: a hundredth of the range, and no rounding.
  virtual void SetStep(double step) = 0;
  virtual double GetStep() const = 0;
  virtual bool IsBeingEdited() const = 0;
};

}  // namespace orv::gui::componentinterface
