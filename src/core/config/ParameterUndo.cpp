#include "core/config/ParameterUndo.h"

#include <algorithm>

#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"

namespace orv::rws::core {

namespace {

bool IsText(const ConfigElement& element) {
  return element.GetKind() == ConfigElement::Kind::kTextBox ||
         element.GetKind() == ConfigElement::Kind::kComboBox;
}

}  // namespace

ParameterValue::ParameterValue(const ConfigElement& of)
    : element(of.GetId()), number(of.GetNumber()) {
  if (IsText(of)) text = of.GetValueText();
}

bool ParameterValue::Fits(const ConfigElement& of) const {
  return IsText(of) ? of.GetValueText() == text : of.GetNumber() == number;
}

bool ParameterValue::Put(ConfigElement& target) const {
  if (Fits(target)) return false;
  std::string problem;
  return IsText(target) ? target.SetValueText(text, problem) : target.SetNumber(number);
}

void ParameterValue::WriteTo(ConfigElement& target) const {
  if (Put(target)) target.Apply();
}

ParameterState::ParameterState(const Instance& instance) : profile(instance.GetCurrentProfile()) {
  for (const ConfigElement* element : instance.GetConfig().GetElements())
    if (element->HasValue()) values.emplace_back(*element);
}

bool ParameterState::Holds(const ConfigElement& element) const {
  return std::any_of(values.begin(), values.end(), [&element](const ParameterValue& value) {
    return value.element == element.GetId() && value.Fits(element);
  });
}

void ParameterState::KeepChanged(const Instance& instance) {
  const auto stands = [&instance](const ParameterValue& value) {
    const ConfigElement* const element = instance.GetConfig().Find(value.element);
    return !element || value.Fits(*element);
  };
  values.erase(std::remove_if(values.begin(), values.end(), stands), values.end());
  values.shrink_to_fit();
}

void ParameterState::WriteTo(Instance& instance) const {
  ConfigTree& config = instance.GetConfig();
  ParameterState wanted(instance);
  const auto isGauge = [&config](const ParameterValue& value) {
    return config.Find(value.element)->IsReadOnly();
  };
  wanted.values.erase(std::remove_if(wanted.values.begin(), wanted.values.end(), isGauge),
                      wanted.values.end());
  for (const ParameterValue& value : values) {
    ConfigElement* const element = config.Find(value.element);
    if (!element) continue;
    value.WriteTo(*element);
    for (ParameterValue& other : wanted.values)
      if (other.element == value.element) other = value;
  }
  for (const ParameterValue& value : wanted.values) value.WriteTo(*config.Find(value.element));
  // Two that follow each other, such as a time in frames and in seconds, need not have agreed.
  for (const ParameterValue& value : wanted.values) value.Put(*config.Find(value.element));
  instance.SetCurrentProfile(profile);
}

ParameterUndo::ParameterUndo(Instance& instance, std::shared_ptr<ParameterState> before)
    : StateUndo(std::move(before)), m_instance(instance) {}

std::shared_ptr<ParameterState> ParameterUndo::Present() {
  const Instance* const instance = m_instance.Get();
  if (!instance) return Saved();
  auto present = std::make_shared<ParameterState>();
  present->profile = instance->GetCurrentProfile();
  for (const ParameterValue& value : Saved()->values)
    if (const ConfigElement* const element = instance->GetConfig().Find(value.element))
      present->values.emplace_back(*element);
  return present;
}

void ParameterUndo::Apply(const std::shared_ptr<ParameterState>& state) {
  Instance* const instance = m_instance.Get();
  if (!instance) return;
  state->WriteTo(*instance);
  instance->RefreshConfig();
}

}  // namespace orv::rws::core
