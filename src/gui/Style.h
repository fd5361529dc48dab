// The `style` attribute: CSS-like text, or the name of a border.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "gui/Attributes.h"
#include "gui/Color.h"

namespace orv::gui {

enum class BorderStyle { kNone, kThin, kSunken, kNormal };

/// What a style asks for; what it does not name is left to the toolkit. Words that are not
/// understood are passed over.
struct Style {
  std::string fontFamily;   ///< empty: the system's
  double fontEm = 1.0;      ///< size over the system font's
  double fontPixels = 0.0;  ///< at 96 dpi; 0 without
  std::optional<bool> bold, italic, underline;
  std::optional<Rgba> color, background;
  std::optional<Align> textAlign;
  Padding padding;  ///< padding-left, -right, -top, -bottom (px at 96 dpi)
  Padding margin;   ///< margin-left, -right, -top, -bottom (px at 96 dpi)
};

Style ReadStyle(std::string_view text);
/// "none", "thin", "sunken", "normal"; anything else gives the default.
BorderStyle ReadBorderStyle(std::string_view text, BorderStyle byDefault);

}  // namespace orv::gui
