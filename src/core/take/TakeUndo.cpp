#include "core/take/TakeUndo.h"

#include <algorithm>

#include "core/config/ConfigElement.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

TakeUndo::TakeUndo(Instance& instance, Of what)
    : StateUndo(StateOf(instance, what != Of::kResimulation)),
      m_instance(instance),
      m_records(what != Of::kResimulation),
      m_before(instance) {
  if (what != Of::kTracks) m_before.Note();
}

TakeState TakeUndo::StateOf(Instance& instance, bool records) {
  TakeState state;
  if (records) state.tracks = instance.m_tracks;
  for (const unidevice::Property* output : instance.m_outputs)
    state.outputs.push_back(output->offset);
  for (const auto& [id, property] : instance.m_liveSpinners) {
    if (const ConfigElement* element = instance.m_config.Find(id))
      state.liveSpinners.emplace_back(id, element->GetNumber());
  }
  state.spans = instance.m_liveSpinnerSpans;
  return state;
}

TakeState TakeUndo::Present() {
  Instance* const instance = m_instance.Get();
  return instance ? StateOf(*instance, m_records) : TakeState();
}

void TakeUndo::Apply(const TakeState& state) {
  Instance* const instance = m_instance.Get();
  if (!instance) return;
  if (m_records) instance->m_tracks = state.tracks;
  const std::size_t outputs = std::min(state.outputs.size(), instance->m_outputs.size());
  for (std::size_t i = 0; i < outputs; ++i) instance->m_outputs[i]->offset = state.outputs[i];
  for (const auto& [id, value] : state.liveSpinners) {
    ConfigElement* element = instance->m_config.Find(id);
    if (!element || element->GetNumber() == value) continue;
    element->SetNumber(value);
    element->Apply();
  }
  instance->m_liveSpinnerSpans = state.spans;
  instance->RefreshConfig();
}

void TakeUndo::Undo(bool keep) {
  StateUndo::Undo(keep);
  m_before.PutBack();
}

}  // namespace orv::rws::core
