#include "gui/component/Border.h"

namespace orv::gui::component {

Border::Border(const util::xml::Element& tag)
    : Element(tag),
      m_padding(ReadPadding(tag.attribute("padding"), {})),
      m_spacing(ReadInt(tag.attribute("spacing"), kUnset)) {}

bool Border::KnowsAttribute(std::string_view name) const {
  return name == "padding" || name == "spacing" || Element::KnowsAttribute(name);
}

BorderStyle Border::GetBorderStyle() const {
  return ReadBorderStyle(GetAttributes().style, BorderStyle::kNormal);
}

void Border::SetBorderStyle(BorderStyle style) {
  static constexpr const char* kNames[] = {"none", "thin", "sunken", "normal"};
  SetStyle(kNames[static_cast<int>(style)]);
}

}  // namespace orv::gui::component
