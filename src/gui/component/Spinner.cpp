#include "gui/component/Spinner.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/NumberField.h"

namespace orv::gui::component {

Spinner::Spinner(const util::xml::Element& tag)
    : Element(tag),
      m_value(ReadDouble(tag.attribute("defaultvalue"), 0.0)),
      m_min(ReadDouble(tag.attribute("min"), -1e18)),
      m_max(ReadDouble(tag.attribute("max"), 1e18)),
      m_step(ReadDouble(tag.attribute("step"), 1.0)),
      m_decimals(ReadInt(tag.attribute("decimals"), 0)),
      m_unit(tag.attribute("unit")),
      m_readOnly(ReadFlag(tag.attribute("readonly"), false)),
      m_whole(ReadFlag(tag.attribute("whole"), false)) {}

bool Spinner::KnowsAttribute(std::string_view name) const {
  return name == "min" || name == "max" || name == "step" || name == "decimals" ||
         name == "defaultvalue" || name == "unit" || name == "readonly" || name == "whole" ||
         Element::KnowsAttribute(name);
}

void Spinner::SetValue(double value) {
  m_value = value;
  Changed(kValueChange);
}

void Spinner::SetRange(double min, double max) {
  m_min = min;
  m_max = max;
  Changed(kRangeChange);
}

void Spinner::SetStep(double step) {
  m_step = step;
}

void Spinner::SetDecimals(int decimals) {
  m_decimals = decimals;
  Changed(kRangeChange | kValueChange);
}

void Spinner::SetUnit(const std::string& unit) {
  m_unit = unit;
  Changed(kRangeChange | kValueChange);
}

void Spinner::SetReadOnly(bool readOnly) {
  m_readOnly = readOnly;
  Changed(kRangeChange);
}

void Spinner::SetWhole(bool whole) {
  m_whole = whole;
}

std::string Spinner::GetShownText() const {
  return ShownNumber(m_value, m_decimals);
}

bool Spinner::ReadText(const std::string& text, double& value) const {
  double typed = 0.0;
  if (!ReadNumber(text, m_unit, typed)) return false;
  value = Allowed(typed);
  return true;
}

double Spinner::Allowed(double value) const {
  if (m_whole) value = std::round(value);
  return std::min(std::max(value, m_min), m_max);
}

double Spinner::Stepped(double from, double steps) const {
  return Allowed(AddSteps(from, m_step, steps));
}

bool Spinner::EnterByUser(double value) {
  // Bits and not numbers: -0 typed over 0 is a change, and what is entered unchanged is none.
  if (value == m_value && std::signbit(value) == std::signbit(m_value)) return true;
  m_value = value;
  Changed(kValueChange);
  return Post(kMsgValueChanged);
}

bool Spinner::BeginDrag() {
  m_before = m_value;
  m_dragging = true;
  return Post(kMsgEditBegin);
}

bool Spinner::EndDrag(bool cancelled) {
  if (!std::exchange(m_dragging, false)) return true;
  if (cancelled && !EnterByUser(m_before)) return false;
  return Post(kMsgEditEnd, cancelled);
}

}  // namespace orv::gui::component
