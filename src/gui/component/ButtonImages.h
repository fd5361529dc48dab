// The images of a button's states.
#pragma once

#include <array>
#include <string>

#include "gui/componentinterface/Button.h"
#include "util/xml/Element.h"

namespace orv::gui::component {

class ButtonImages {
 public:
  /// The attributes img_default, img_hover and img_pressed.
  explicit ButtonImages(const util::xml::Element& tag);
  static bool KnowsAttribute(std::string_view name);

  void Set(componentinterface::ButtonImage which, const std::string& path);
  const std::string& Get(componentinterface::ButtonImage which) const;

 private:
  std::array<std::string, 3> m_paths;
};

}  // namespace orv::gui::component
