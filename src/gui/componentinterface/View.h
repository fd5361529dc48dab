// A place that a window paints by itself.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

class View : public Interface {
 public:
  /// Who paints and takes events; the toolkit has a class for it, such as
  /// component::qt::ViewHandler.
  class Handler {
   public:
    virtual ~Handler() = default;
  };

  /// Not owned: null it before the handler dies.
  virtual void SetHandler(Handler* handler) = 0;
  virtual Handler* GetHandler() const = 0;
  /// Paints anew, soon.
  virtual void Repaint() = 0;
};

}  // namespace orv::gui::componentinterface
