// A frame around components.
#pragma once

#include "gui/Style.h"
#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

class Border : public Interface {
 public:
  virtual BorderStyle GetBorderStyle() const = 0;
  virtual void SetBorderStyle(BorderStyle style) = 0;
};

}  // namespace orv::gui::componentinterface
