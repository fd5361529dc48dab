// What spinners and sliders have in common.
#pragma once

#include <cmath>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/StdComponent.h"

namespace orv::gui::component {

/// The attributes min, max, step and defaultvalue, and edits by the user. `Interface` derives from
/// componentinterface::Number.
template <class Interface>
class Number : public Element<Interface> {
 public:
  bool KnowsAttribute(std::string_view name) const override {
    return name == "min" || name == "max" || name == "step" || name == "defaultvalue" ||
           Element<Interface>::KnowsAttribute(name);
  }

  void SetValue(double value) override {
    m_value = value;
    this->Changed(kValueChange);
  }
  double GetValue() const override { return m_value; }
  void SetRange(double min, double max) override {
    m_min = min;
    m_max = max;
    this->Changed(kRangeChange);
  }
  double GetMin() const override { return m_min; }
  double GetMax() const override { return m_max; }
  void SetStep(double step) override { m_step = step; }
  double GetStep() const override { return m_step; }
  bool IsBeingEdited() const override { return m_dragging; }

  // The toolkit's words. Each returns false when a listener destroyed the component.

  bool EnterByUser(double value) {
    // -0 for 0 is a change, and what is entered unchanged is none.
    if (value == m_value && std::signbit(value) == std::signbit(m_value)) return true;
    SetValue(value);
    return this->Post(kMsgValueChanged);
  }
  bool BeginDrag() {
    m_before = m_value;
    m_dragging = true;
    return this->Post(kMsgEditBegin);
  }
  bool EndDrag(bool cancelled) {
    if (!std::exchange(m_dragging, false)) return true;
    if (cancelled && !EnterByUser(m_before)) return false;
    return this->Post(kMsgEditEnd, cancelled);
  }

 protected:
  Number(const util::xml::Element& tag, double min, double max, double step)
      : Element<Interface>(tag),
        m_value(ReadDouble(tag.attribute("defaultvalue"), 0.0)),
        m_min(ReadDouble(tag.attribute("min"), min)),
        m_max(ReadDouble(tag.attribute("max"), max)),
        m_step(ReadDouble(tag.attribute("step"), step)) {}

  double m_value, m_min, m_max, m_step;

 private:
  double m_before = 0.0;  ///< when the drag began
  bool m_dragging = false;
};

}  // namespace orv::gui::component
