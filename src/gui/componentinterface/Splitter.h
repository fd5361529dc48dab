// Components whose shares of the room the user moves.
#pragma once

#include <vector>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// A moved handle posts kMsgValueChanged.
class Splitter : public Interface {
 public:
  virtual bool IsHorizontal() const = 0;
  /// Pixels at 96 dpi, one a child; 0 is closed. Empty: as the children wish.
  virtual void SetSizes(const std::vector<int>& sizes) = 0;
  virtual std::vector<int> GetSizes() const = 0;
};

}  // namespace orv::gui::componentinterface
