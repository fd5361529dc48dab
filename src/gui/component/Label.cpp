#include "gui/component/Label.h"

#include <utility>

#include "gui/GuiMessages.h"

namespace orv::gui::component {

Label::Label(const util::xml::Element& tag)
    : Element(tag),
      m_links(ReadFlag(tag.attribute("hyperlinks"), false)),
      m_wraps(ReadFlag(tag.attribute("wrap"), false)),
      m_image(tag.attribute("imagepath")) {
  if (const std::string text = tag.text(); !text.empty()) m_attributes.label = text;
}

bool Label::KnowsAttribute(std::string_view name) const {
  return name == "hyperlinks" || name == "wrap" || name == "imagepath" ||
         Element::KnowsAttribute(name);
}

void Label::SetText(const std::string& text) {
  Element::SetLabel(text);
}

void Label::SetImage(const std::string& path) {
  if (std::exchange(m_image, path) != path) Changed(kImageChange | kLabelChange);
}

void Label::ClickLink(const std::string& link) {
  LinkClicked clicked{link};
  Post(kMsgClicked, 0, &clicked);
}

}  // namespace orv::gui::component
