#include "core/LiveSpinnerUndo.h"

#include "core/ConfigElement.h"

namespace orv::rws::core {

LiveSpinnerUndo::LiveSpinnerUndo(Instance& instance) : m_instance(instance), m_saved(Present()) {}

LiveSpinnerUndo::State LiveSpinnerUndo::Present() const {
  State state;
  for (const auto& [id, property] : m_instance.GetLiveSpinners()) {
    if (const ConfigElement* element = m_instance.GetConfig().find(id))
      state.values.emplace_back(id, element->number());
  }
  state.spans = m_instance.m_liveSpinnerSpans;
  return state;
}

void LiveSpinnerUndo::Apply(const State& state) {
  for (const auto& [id, value] : state.values) {
    ConfigElement* element = m_instance.GetConfig().find(id);
    if (!element || element->number() == value) continue;
    element->setNumber(value);
    element->apply();
  }
  m_instance.m_liveSpinnerSpans = state.spans;
}

void LiveSpinnerUndo::Exchange() {
  State present = Present();
  Apply(m_saved);
  m_saved = std::move(present);
}

void LiveSpinnerUndo::Undo(bool keep) {
  if (!keep) {
    Apply(m_saved);
  } else if (!m_swapped) {
    Exchange();
    m_swapped = true;
  }
}

void LiveSpinnerUndo::Redo() {
  if (!m_swapped) return;
  Exchange();
  m_swapped = false;
}

}  // namespace orv::rws::core
