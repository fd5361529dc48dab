#include "gui/component/Slider.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/NumberField.h"

namespace orv::gui::component {

Slider::Slider(const util::xml::Element& tag)
    : Element(tag),
      m_value(ReadDouble(tag.attribute("defaultvalue"), 0.0)),
      m_min(ReadDouble(tag.attribute("min"), 0.0)),
      m_max(ReadDouble(tag.attribute("max"), 1.0)),
      m_step(ReadDouble(tag.attribute("step"), 0.0)) {}

bool Slider::KnowsAttribute(std::string_view name) const {
  return name == "min" || name == "max" || name == "step" || name == "defaultvalue" ||
         Element::KnowsAttribute(name);
}

void Slider::SetValue(double value) {
  m_value = value;
  Changed(kValueChange);
}

void Slider::SetRange(double min, double max) {
  m_min = min;
  m_max = max;
  Changed(kRangeChange);
}

void Slider::SetStep(double step) {
  m_step = step;
}

double Slider::ValueAt(double place) const {
  place = std::clamp(place, 0.0, 1.0);
  if (place == 0.0) return m_min;
  if (place == 1.0) return m_max;
  const double range = m_max - m_min;
  if (m_step > 0.0) return AddSteps(m_min, m_step, std::round(place * range / m_step));
  return m_min + place * range;
}

double Slider::PlaceOf(double value) const {
  const double range = m_max - m_min;
  if (!(range > 0.0) || std::isnan(value)) return 0.0;
  return std::clamp((value - m_min) / range, 0.0, 1.0);
}

double Slider::Stepped(double steps) const {
  const double step = m_step > 0.0 ? m_step : (m_max - m_min) / 100.0;
  return std::min(std::max(AddSteps(m_value, step, steps), m_min), m_max);
}

bool Slider::EnterByUser(double value) {
  if (value == m_value) return true;
  m_value = value;
  Changed(kValueChange);
  return Post(kMsgValueChanged);
}

bool Slider::BeginDrag() {
  m_before = m_value;
  m_dragging = true;
  return Post(kMsgEditBegin);
}

bool Slider::EndDrag(bool cancelled) {
  if (!std::exchange(m_dragging, false)) return true;
  if (cancelled && !EnterByUser(m_before)) return false;
  return Post(kMsgEditEnd, cancelled);
}

}  // namespace orv::gui::component
