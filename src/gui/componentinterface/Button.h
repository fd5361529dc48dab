// A push button.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

enum class ButtonImage { kDefault, kHover, kPressed };

/// Posts kMsgPressed, kMsgReleased and kMsgClicked. With the attribute `toggle` it stays down until
/// the next click, and kMsgValueChanged follows.
class Button : public Interface {
 public:
  virtual void Click() = 0;
  /// Path of an image; hover and pressed fall back to the default one.
  virtual void SetImage(ButtonImage which, const std::string& path) = 0;
  virtual const std::string& GetImage(ButtonImage which) const = 0;
  virtual bool IsFlat() const = 0;
  /// Enter anywhere in the dialog presses it.
  virtual bool IsDefault() const = 0;
  virtual bool IsToggle() const = 0;
  virtual void SetDown(bool down) = 0;
  virtual bool IsDown() const = 0;
};

}  // namespace orv::gui::componentinterface
