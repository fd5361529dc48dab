#include "gui/component/Menubar.h"

namespace orv::gui::component {

Menubar::Menubar(const util::xml::Element& tag) : Element(tag) {
  m_menu.Read(tag);
  m_menu.SetObserver([this](bool) { Changed(kMenuChange); });
}

bool Menubar::OwnsTag(std::string_view name) const {
  return name == "menu" || name == "item" || name == "separator" || Element::OwnsTag(name);
}

}  // namespace orv::gui::component
