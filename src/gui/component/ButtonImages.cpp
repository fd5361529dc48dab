#include "gui/component/ButtonImages.h"

#include <iterator>

namespace orv::gui::component {

using componentinterface::ButtonImage;

static constexpr const char* kNames[] = {"img_default", "img_hover", "img_pressed"};

ButtonImages::ButtonImages(const util::xml::Element& tag) {
  for (std::size_t i = 0; i < m_paths.size(); ++i) m_paths[i] = tag.attribute(kNames[i]);
}

bool ButtonImages::KnowsAttribute(std::string_view name) {
  for (const char* known : kNames)
    if (name == known) return true;
  return false;
}

void ButtonImages::Set(ButtonImage which, const std::string& path) {
  m_paths[static_cast<std::size_t>(which)] = path;
}

const std::string& ButtonImages::Get(ButtonImage which) const {
  const std::string& path = m_paths[static_cast<std::size_t>(which)];
  return path.empty() ? m_paths[0] : path;
}

}  // namespace orv::gui::component
