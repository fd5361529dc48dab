#include "core/take/TakeUndo.h"

#include <algorithm>

#include "core/config/ConfigElement.h"
#include "core/interface/CCamera.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

TakeUndo::TakeUndo(Instance& instance, double time, bool records)
    : StateUndo(StateOf(instance, records)),
      m_instance(instance),
      m_time(time),
      m_records(records),
      m_before(instance) {}

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
  Instance* const instance = m_instance.Get();
  const bool forgets = instance && m_instance.IsOriginalGone() && !m_before.IsNoted();
  // First: what the rig knows of its outputs goes with its memory, their values do not.
  if (forgets) instance->GetRig()->Forget(m_time);
  StateUndo::Undo(keep);
  m_before.Note();
  m_before.PutBack();
}

}  // namespace orv::rws::core
