// A number.
#pragma once

#include <string>

#include "gui/componentinterface/Number.h"

namespace orv::gui::componentinterface {

/// The value passes through text only when the user types.
///
/// Typing posts kMsgValueChanged at Enter and when the focus leaves; a text that is no number is
/// marked, and Escape brings the value back. Arrow keys, the wheel (with the focus), the two arrows
/// and dragging on the number step it, between kMsgEditBegin and kMsgEditEnd; Escape in a drag
/// brings the old value back (`param` 1). Both decimal separators are read.
class Spinner : public Number {
 public:
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
};

}  // namespace orv::gui::componentinterface
