#include "gui/component/List.h"

namespace orv::gui::component {

List::List(const util::xml::Element& tag)
    : Element(tag),
      m_horizontal(ReadHorizontal(tag)),
      m_padding(ReadPadding(tag.attribute("padding"), {})),
      m_spacing(ReadInt(tag.attribute("spacing"), kUnset)) {}

bool List::KnowsAttribute(std::string_view name) const {
  return name == "type" || name == "padding" || name == "spacing" || Element::KnowsAttribute(name);
}

void List::SetHorizontal(bool horizontal) {
  m_horizontal = horizontal;
  Changed(kStyleChange);
}

}  // namespace orv::gui::component
