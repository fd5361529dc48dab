#include "gui/component/Slider.h"

#include <algorithm>
#include <cmath>

#include "gui/NumberField.h"

namespace orv::gui::component {

Slider::Slider(const util::xml::Element& tag) : Number(tag, 0.0, 1.0, 0.0) {}

double Slider::ValueAt(double place) const {
  place = std::clamp(place, 0.0, 1.0);
  if (place == 0.0) return m_min;
  if (place == 1.0) return m_max;
  const double range = m_max - m_min;
  if (m_step > 0.0)
    return std::min(AddSteps(m_min, m_step, std::round(place * range / m_step)), m_max);
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

}  // namespace orv::gui::component
