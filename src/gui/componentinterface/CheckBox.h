// A box to be ticked.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

enum class CheckState { kOff = 0, kOn = 1, kUndetermined = 2 };

/// A user's click posts kMsgChecked and kMsgValueChanged; it leads from undetermined to on. Boxes
/// of one `paintgroup` take the state of the one that the mouse was pressed on while it is dragged
/// over them.
class CheckBox : public Interface {
 public:
  virtual void SetState(CheckState state) = 0;
  virtual CheckState GetState() const = 0;
  virtual int GetPaintGroup() const = 0;  ///< 0 without
  /// Image for a state, empty for the toolkit's box.
  virtual const std::string& GetIcon(CheckState state) const = 0;

  void SetOn(bool on) { SetState(on ? CheckState::kOn : CheckState::kOff); }
  bool IsOn() const { return GetState() == CheckState::kOn; }
};

}  // namespace orv::gui::componentinterface
