#include "gui/component/Spinner.h"

#include <algorithm>
#include <cmath>

#include "gui/NumberField.h"

namespace orv::gui::component {

Spinner::Spinner(const util::xml::Element& tag)
    : Number(tag, -1e18, 1e18, 1.0),
      m_decimals(ReadInt(tag.attribute("decimals"), 0)),
      m_unit(tag.attribute("unit")),
      m_readOnly(ReadFlag(tag.attribute("readonly"), false)),
      m_whole(ReadFlag(tag.attribute("whole"), false)) {}

bool Spinner::KnowsAttribute(std::string_view name) const {
  return name == "decimals" || name == "unit" || name == "readonly" || name == "whole" ||
         Number::KnowsAttribute(name);
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

}  // namespace orv::gui::component
