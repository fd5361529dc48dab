#include "core/ParameterUndo.h"

#include "core/ConfigElement.h"
#include "core/Instance.h"

namespace orv::rws::core {

ParameterUndo::ParameterUndo(Instance& instance)
    : m_instance(instance), m_saved(Present()), m_savedProfile(instance.GetCurrentProfile()) {}

ParameterUndo::Values ParameterUndo::Present() const {
  Values values;
  for (const ConfigElement* element : m_instance.GetConfig().elements()) {
    if (element->hasValue()) values.emplace_back(element->id(), element->valueText());
  }
  return values;
}

void ParameterUndo::Apply(const Values& values) {
  for (const auto& [id, text] : values) {
    ConfigElement* element = m_instance.GetConfig().find(id);
    std::string problem;
    if (element && element->valueText() != text && element->setValueText(text, problem))
      element->apply();
  }
  m_instance.RefreshConfig();
}

void ParameterUndo::Exchange() {
  Values present = Present();
  std::string profile = m_instance.GetCurrentProfile();
  Apply(m_saved);
  m_instance.SetCurrentProfile(m_savedProfile);
  m_saved = std::move(present);
  m_savedProfile = std::move(profile);
}

void ParameterUndo::Undo(bool keep) {
  if (!keep) {
    Apply(m_saved);
    m_instance.SetCurrentProfile(m_savedProfile);
  } else if (!m_swapped) {
    Exchange();
    m_swapped = true;
  }
}

void ParameterUndo::Redo() {
  if (!m_swapped) return;
  Exchange();
  m_swapped = false;
}

}  // namespace orv::rws::core
