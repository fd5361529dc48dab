// A view on components that need more room.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// The offset, in pixels at 96 dpi, is kept while the content changes and while it is not realised.
class Scroll : public Interface {
 public:
  virtual void SetOffset(int x, int y) = 0;
  virtual int GetOffsetX() const = 0;
  virtual int GetOffsetY() const = 0;
  /// Scrolls as little as needed to show a component inside it.
  virtual void Reveal(Component& component) = 0;
};

}  // namespace orv::gui::componentinterface
