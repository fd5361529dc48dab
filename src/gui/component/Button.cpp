#include "gui/component/Button.h"

#include <utility>

#include "gui/GuiMessages.h"
#include "gui/Style.h"

namespace orv::gui::component {

using componentinterface::ButtonImage;

namespace {

/// "r g b" or "r g b a".
std::optional<Rgba> ReadColorAttribute(const std::string& text) {
  const std::vector<std::string> words = Words(text);
  if (words.size() != 3 && words.size() != 4) return ReadStyle("color:" + text).color;
  int channels[4] = {0, 0, 0, 255};
  for (std::size_t i = 0; i < words.size(); ++i) {
    channels[i] = ReadInt(words[i], -1);
    if (channels[i] < 0 || channels[i] > 255) return {};
  }
  return Rgba{channels[0], channels[1], channels[2], channels[3]};
}

}  // namespace

Button::Button(const util::xml::Element& tag)
    : Element(tag),
      m_images(tag),
      m_flat(ReadFlag(tag.attribute("flat"), false)),
      m_default(ReadFlag(tag.attribute("default"), false)),
      m_toggle(ReadFlag(tag.attribute("toggle"), false)),
      m_hover(ReadColorAttribute(tag.attribute("flatcolor_hover"))),
      m_pressed(ReadColorAttribute(tag.attribute("flatcolor_pressed"))) {}

bool Button::KnowsAttribute(std::string_view name) const {
  return ButtonImages::KnowsAttribute(name) || name == "flat" || name == "default" ||
         name == "toggle" || name == "flatcolor_hover" || name == "flatcolor_pressed" ||
         Element::KnowsAttribute(name);
}

void Button::Click() {
  if (!IsEnabled()) return;
  if (m_toggle) SetDown(!m_down);
  if (Post(kMsgClicked) && m_toggle) Post(kMsgValueChanged, m_down);
}

void Button::SetImage(ButtonImage which, const std::string& path) {
  m_images.Set(which, path);
  Changed(kImageChange);
}

const std::string& Button::GetImage(ButtonImage which) const {
  return m_images.Get(which);
}

void Button::SetDown(bool down) {
  if (std::exchange(m_down, down) != down) Changed(kValueChange);
}

}  // namespace orv::gui::component
