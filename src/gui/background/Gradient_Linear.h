// A background that changes along a line.
#pragma once

#include <vector>

#include "gui/Background.h"
#include "gui/Color.h"

namespace orv::gui::background {

/// `type="gradient-linear"`.
class Gradient_Linear : public Background {
 public:
  /// What lies before the start and beyond the end.
  enum class Spread { kPad, kRepeat, kReflect };
  /// What the points count in: pixels at 96 dpi, or the component's size ("object", the default,
  /// where 1 is the whole width or height).
  enum class Coordinates { kPixels, kObject };
  struct Stop {
    double position;  ///< 0 at the start, 1 at the end
    Rgba color;
  };

  explicit Gradient_Linear(const util::xml::Element& tag);

  double startX, startY, endX, endY;
  Spread spread = Spread::kPad;
  Coordinates coordinates = Coordinates::kObject;
  std::vector<Stop> stops;  ///< in order of position
};

}  // namespace orv::gui::background
