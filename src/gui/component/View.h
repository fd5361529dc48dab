// `view`: a place that a window paints by itself.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/View.h"

namespace orv::gui::component {

class View : public Element<componentinterface::View> {
 public:
  using Element::Element;
  const char* GetElement() const override { return "view"; }

  void SetHandler(Handler* handler) override;
  Handler* GetHandler() const override { return m_handler; }
  void Repaint() override { Changed(kValueChange); }

 private:
  Handler* m_handler = nullptr;
};

}  // namespace orv::gui::component
