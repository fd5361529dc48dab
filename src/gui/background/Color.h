// A plain background.
#pragma once

#include "gui/Background.h"
#include "gui/Color.h"

namespace orv::gui::background {

/// `type="color"`: the tag's first `color` child.
class Color : public Background {
 public:
  explicit Color(const util::xml::Element& tag);
  explicit Color(const Rgba& color) : m_color(color) {}

  const Rgba& GetColor() const { return m_color; }

 private:
  Rgba m_color;
};

}  // namespace orv::gui::background
