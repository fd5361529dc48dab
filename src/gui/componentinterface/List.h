// A row or column of components.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

class List : public Interface {
 public:
  virtual bool IsHorizontal() const = 0;
  virtual void SetHorizontal(bool horizontal) = 0;
};

}  // namespace orv::gui::componentinterface
