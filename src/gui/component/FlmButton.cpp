#include "gui/component/FlmButton.h"

#include "gui/GuiMessages.h"

namespace orv::gui::component {

using componentinterface::ButtonImage;

FlmButton::FlmButton(const util::xml::Element& tag) : Element(tag), m_images(tag) {}

bool FlmButton::KnowsAttribute(std::string_view name) const {
  return ButtonImages::KnowsAttribute(name) || Element::KnowsAttribute(name);
}

void FlmButton::Click() {
  if (IsEnabled()) Post(kMsgClicked);
}

void FlmButton::SetImage(ButtonImage which, const std::string& path) {
  m_images.Set(which, path);
  Changed(kImageChange);
}

const std::string& FlmButton::GetImage(ButtonImage which) const {
  return m_images.Get(which);
}

}  // namespace orv::gui::component
