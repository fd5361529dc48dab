// `menubar`: the menus of a window.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Menubar.h"

namespace orv::gui::component {

class Menubar : public Element<componentinterface::Menubar> {
 public:
  explicit Menubar(const util::xml::Element& tag);
  const char* GetElement() const override { return "menubar"; }
  bool OwnsTag(std::string_view name) const override;

  Menu& GetMenu() override { return m_menu; }

 private:
  Menu m_menu;
};

}  // namespace orv::gui::component
