// `slider`: a number on a line.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Slider.h"

namespace orv::gui::component {

/// Attributes min, max, step and defaultvalue, as a spinner's.
class Slider : public Element<componentinterface::Slider> {
 public:
  explicit Slider(const util::xml::Element& tag);
  const char* GetElement() const override { return "slider"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetValue(double value) override;
  double GetValue() const override { return m_value; }
  void SetRange(double min, double max) override;
  double GetMin() const override { return m_min; }
  double GetMax() const override { return m_max; }
  void SetStep(double step) override;
  double GetStep() const override { return m_step; }
  bool IsBeingEdited() const override { return m_dragging; }

  // The toolkit's words. Each returns false when a listener destroyed the component.

  /// The value of a place on the line, from 0 to 1, and the place of the value.
  double ValueAt(double place) const;
  double PlaceOf(double value) const;
  /// The value that so many key steps from the present one lead to.
  double Stepped(double steps) const;
  bool EnterByUser(double value);
  bool BeginDrag();
  bool EndDrag(bool cancelled);

 private:
  double m_value, m_min, m_max, m_step;
  double m_before = 0.0;  ///< when the drag began
  bool m_dragging = false;
};

}  // namespace orv::gui::component
