// `slider`: a number on a line.
#pragma once

#include "gui/component/Number.h"
#include "gui/componentinterface/Slider.h"

namespace orv::gui::component {

class Slider : public Number<componentinterface::Slider> {
 public:
  explicit Slider(const util::xml::Element& tag);
  const char* GetElement() const override { return "slider"; }

  // The toolkit's words.

  /// The value of a place on the line, from 0 to 1, and the place of the value.
  double ValueAt(double place) const;
  double PlaceOf(double value) const;
  /// The value that so many key steps from the present one lead to.
  double Stepped(double steps) const;
};

}  // namespace orv::gui::component
