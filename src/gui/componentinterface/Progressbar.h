// How much is done.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// Its label, if any, is shown on it in place of the percentage.
class Progressbar : public Interface {
 public:
  /// 0 to 1; below 0: busy, with no end in sight.
  virtual void SetProgress(double progress) = 0;
  virtual double GetProgress() const = 0;
};

}  // namespace orv::gui::componentinterface
