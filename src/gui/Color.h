// A colour.
#pragma once

namespace orv::util::xml {
class Element;
}

namespace orv::gui {

/// Channels from 0 to 255, not multiplied by the opacity `a`.
struct Rgba {
  int r = 0, g = 0, b = 0, a = 255;
};

inline bool operator==(const Rgba& x, const Rgba& y) {
  return x.r == y.r && x.g == y.g && x.b == y.b && x.a == y.a;
}
inline bool operator!=(const Rgba& x, const Rgba& y) {
  return !(x == y);
}

/// Attributes r, g, b and a, cut to their range; opaque black where they are missing.
Rgba ReadColor(const util::xml::Element& tag);

}  // namespace orv::gui
