#include "core/ParameterUndo.h"

#include "core/ConfigElement.h"
#include "core/Instance.h"

namespace orv::rws::core {

namespace {

ParameterState StateOf(const Instance& instance) {
  ParameterState state;
  for (const ConfigElement* element : instance.GetConfig().elements()) {
    if (element->hasValue()) state.values.emplace_back(element->id(), element->valueText());
  }
  state.profile = instance.GetCurrentProfile();
  return state;
}

}  // namespace

ParameterUndo::ParameterUndo(Instance& instance)
    : StateUndo(StateOf(instance)), m_instance(instance) {}

ParameterState ParameterUndo::Present() {
  const Instance* const instance = m_instance.Get();
  return instance ? StateOf(*instance) : ParameterState();
}

void ParameterUndo::Apply(const ParameterState& state) {
  Instance* const instance = m_instance.Get();
  if (!instance) return;
  for (const auto& [id, text] : state.values) {
    ConfigElement* element = instance->GetConfig().find(id);
    std::string problem;
    if (element && element->valueText() != text && element->setValueText(text, problem))
      element->apply();
  }
  instance->SetCurrentProfile(state.profile);
  instance->RefreshConfig();
}

}  // namespace orv::rws::core
