// A text to be typed.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// One line, unless its height is that of two or more. kMsgTyped comes at each letter,
/// kMsgValueChanged at Enter (of one line) and when the focus leaves a changed text, kMsgEntered at
/// Enter. Escape brings back the text that was there when the focus came.
class TextBox : public Interface {
 public:
  virtual void SetText(const std::string& text) = 0;
  /// With what is being typed.
  virtual const std::string& GetText() const = 0;
  virtual void SetEditable(bool editable) = 0;
  virtual bool IsEditable() const = 0;
  /// Shown while it is empty.
  virtual void SetHint(const std::string& hint) = 0;
  virtual std::string GetShownHint() const = 0;
  virtual bool IsMultiLine() const = 0;
  virtual void SelectAll() = 0;
};

}  // namespace orv::gui::componentinterface
