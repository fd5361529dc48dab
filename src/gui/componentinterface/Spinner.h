// A number.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// The value is the double that was set, to the bit: it passes through text only when the user
/// types.
///
/// Typing posts kMsgValueChanged at Enter and when the focus leaves; a text that is no number is
/// marked, and Escape brings the value back. Arrow keys, the wheel (with the focus), the two arrows
/// and dragging on the number step it, between kMsgEditBegin and kMsgEditEnd; Escape in a drag
/// brings the old value back (`param` 1). Both decimal separators are read.
class Spinner : public Interface {
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
  /// Digits behind the separator; more are shown where these would hide some of the value's.
  virtual void SetDecimals(int decimals) = 0;
  virtual int GetDecimals() const = 0;
  /// Shown behind the number, such as "m/s".
  virtual void SetUnit(const std::string& unit) = 0;
  virtual const std::string& GetUnit() const = 0;
  virtual bool IsReadOnly() const = 0;
  virtual void SetReadOnly(bool readOnly) = 0;
  /// What the user enters is rounded to a whole number.
  virtual void SetWhole(bool whole) = 0;
  virtual bool IsWhole() const = 0;
  /// The number as it is shown, without unit.
  virtual std::string GetShownText() const = 0;
  /// Whether the user is typing or dragging right now: a value that is set meanwhile waits until
  /// the user has done, and is lost when the user enters another.
  virtual bool IsBeingEdited() const = 0;
};

}  // namespace orv::gui::componentinterface
