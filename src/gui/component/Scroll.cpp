#include "gui/component/Scroll.h"

#include "gui/GuiMessages.h"

namespace orv::gui::component {

Scroll::Scroll(const util::xml::Element& tag)
    : Element(tag),
      m_padding(ReadPadding(tag.attribute("padding"), {})),
      m_spacing(ReadInt(tag.attribute("spacing"), kUnset)) {}

bool Scroll::KnowsAttribute(std::string_view name) const {
  return name == "padding" || name == "spacing" || Element::KnowsAttribute(name);
}

void Scroll::SetOffset(int x, int y) {
  m_x = x;
  m_y = y;
  Changed(kValueChange);
}

void Scroll::Reveal(Component& component) {
  if (auto* pane = dynamic_cast<Pane*>(GetPeer())) pane->RevealChild(component);
}

void Scroll::ScrollByUser(int x, int y) {
  if (m_x == x && m_y == y) return;
  m_x = x;
  m_y = y;
  Post(kMsgScrolled, y);
}

}  // namespace orv::gui::component
