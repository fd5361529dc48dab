// What spinners and sliders have in common.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// The value is the double that was set, to the bit.
class Number : public Interface {
 public:
  /// Not cut to the range: what a file holds beyond it is shown as it is.
  virtual void SetValue(double value) = 0;
  virtual double GetValue() const = 0;
  /// For what the user enters.
  virtual void SetRange(double min, double max) = 0;
  virtual double GetMin() const = 0;
  virtual double GetMax() const = 0;
  virtual void SetStep(double step) = 0;
  virtual double GetStep() const = 0;
  /// Whether the user is typing or dragging right now: a value that is set meanwhile waits until
  /// the user has done, and is lost when the user enters another.
  virtual bool IsBeingEdited() const = 0;
};

}  // namespace orv::gui::componentinterface
