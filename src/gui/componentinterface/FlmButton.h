// A button that consists of its images.
#pragma once

#include "gui/componentinterface/Button.h"

namespace orv::gui::componentinterface {

/// No frame and no text: an image a state. Components inside it lie over the image and are moved
/// with it. Posts as Button does.
class FlmButton : public Interface {
 public:
  virtual void Click() = 0;
  virtual void SetImage(ButtonImage which, const std::string& path) = 0;
  virtual const std::string& GetImage(ButtonImage which) const = 0;
};

}  // namespace orv::gui::componentinterface
