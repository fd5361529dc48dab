// The menus of a window.
#pragma once

#include "gui/Menu.h"
#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

class Menubar : public Interface {
 public:
  virtual Menu& GetMenu() = 0;
};

}  // namespace orv::gui::componentinterface
