#include "core/config/ProfileValues.h"

#include <cmath>
#include <deque>

#include "core/config/ConfigTree.h"

namespace orv::rws::core {

namespace {

using Kind = ConfigElement::Kind;

/// Variables for a copy of a rig's configuration.
struct Variables {
  std::deque<int> whole;
  std::deque<double> real;
  std::deque<bool> flags;
  std::deque<std::string> texts;
};

void CopyElement(const ConfigElement& from, ConfigTree& to, Variables& variables) {
  const ConfigElement::Range& range = from.GetRange();
  switch (from.GetKind()) {
    case Kind::kGroup:
      to.BeginGroup(from.GetLabel(), {});
      for (const auto& child : from.GetChildren()) CopyElement(*child, to, variables);
      to.EndGroup();
      return;
    case Kind::kSpinnerInt:
      to.AddSpinnerInt(from.GetLabel(), {}, &variables.whole.emplace_back(), int(range.min),
                       int(range.max), int(range.step), nullptr);
      return;
    case Kind::kSpinner:
      to.AddSpinner(from.GetLabel(), {}, &variables.real.emplace_back(), range.min, range.max,
                    range.step, range.decimals, nullptr);
      return;
    case Kind::kCheckBox:
      to.AddCheckBox(from.GetLabel(), {}, &variables.flags.emplace_back(), nullptr);
      return;
    case Kind::kTextBox:
      to.AddTextBox(from.GetLabel(), {}, &variables.texts.emplace_back(), nullptr);
      return;
    case Kind::kComboBox:
      to.AddComboBox(from.GetLabel(), {}, from.GetItems(), &variables.whole.emplace_back(),
                     nullptr);
      return;
    case Kind::kButton:
      to.AddButton(from.GetLabel(), {}, nullptr);
      return;
    case Kind::kLabel:
      return;  // takes no id
  }
}

}  // namespace

ProfileValues::ProfileValues(const ConfigTree& config,
                             const std::vector<const util::xml::Element*>& profiles) {
  if (!config.GetRoot()) return;
  ConfigTree copy;
  Variables variables;
  copy.Begin();
  for (const auto& child : config.GetRoot()->GetChildren()) CopyElement(*child, copy, variables);
  for (const util::xml::Element* profile : profiles) copy.Read(*profile);
  for (const ConfigElement* element : copy.GetElements())
    if (element->HasValue() && !config.Find(element->GetId())->IsReadOnly())
      m_values.emplace(element->GetId(), Value{ParameterValue(*element), element->GetValueText()});
}

std::string ProfileValues::GetText(int element) const {
  const auto found = m_values.find(element);
  return found == m_values.end() ? std::string() : found->second.text;
}

bool ProfileValues::Differs(const ConfigElement& element) const {
  const auto found = m_values.find(element.GetId());
  if (found == m_values.end()) return false;
  const ParameterValue& value = found->second.value;
  // Live spinners add up fractions that a whole number doesn't show.
  if (element.GetKind() == Kind::kSpinnerInt)
    return std::round(element.GetNumber()) != value.number;
  return !value.Fits(element);
}

void ProfileValues::WriteTo(ConfigElement& element) const {
  const auto found = m_values.find(element.GetId());
  if (found != m_values.end()) found->second.value.WriteTo(element);
}

}  // namespace orv::rws::core
