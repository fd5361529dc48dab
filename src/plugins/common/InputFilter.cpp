#include "plugins/common/InputFilter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "plugins/common/History.h"
#include "plugins/common/SaveChunk.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

namespace {

/// Input magnitude beyond which a latching channel counts as pressed.
constexpr double kActivationThreshold = 0.5;

bool AreStates(const util::AVar_Latest<int>& history) {
  return std::all_of(history.samples.begin(), history.samples.end(),
                     [](const auto& sample) { return std::abs(sample.value) <= 1; });
}

}  // namespace

double InputFilter::Step(double input, double dt) {
  if (settings.bIsTrinaryStateValue) input = Latch(input);
  if (settings.fChangeLimit != 0.0) input = LimitChange(input, dt);
  const double value = Integrate(input, dt) * settings.maximum;
  // Unlike in the cameras' filters a factor of exactly 1 is no filter here, as 0 is.
  util::lowPass(state.filterMemory1, value, settings.responseFactor, 0.0, dt);
  util::lowPass(state.filterMemory2, state.filterMemory1, settings.responseFactor, 0.0, dt);
  return state.filterMemory2;
}

double InputFilter::Latch(double input) {
  int activation = 0;
  if (std::abs(input) > kActivationThreshold) activation = input < 0.0 ? -1 : 1;
  if (state.previousActivation == 0 && activation != 0)
    state.iTrinaryState = state.iTrinaryState != 0 ? 0 : activation;
  state.previousActivation = activation;
  return state.iTrinaryState;
}

double InputFilter::LimitChange(double input, double dt) {
  const double change = input - state.previousLimitedInput;
  const double most = settings.fChangeLimit * dt;
  if (std::abs(change) > most) input = state.previousLimitedInput + most * util::sign(change);
  // Only frames with a limit get here: meant, the memory rests while there is none.
  state.previousLimitedInput = input;
  return input;
}

double InputFilter::Integrate(double input, double dt) {
  // Stored either way, so that switching integration on goes on from the last value.
  state.integratedInput = settings.bIsIntegratedValue ? input * dt + state.integratedInput : input;
  return state.integratedInput;
}

InputFilterState InputFilterHistory::At(double time) const {
  InputFilterState state;
  state.previousLimitedInput = m_previousLimitedInput.value(time);
  state.integratedInput = m_integratedInput.value(time);
  const util::Vector3<double> memories = m_filterMemories.value(time);
  state.filterMemory1 = memories.x;
  state.filterMemory2 = memories.y;
  state.iTrinaryState = m_trinaryState.value(time);
  state.previousActivation = m_previousActivation.value(time);
  return state;
}

void InputFilterHistory::Store(double time, const InputFilterState& state) {
  m_previousLimitedInput.set(time, state.previousLimitedInput);
  m_integratedInput.set(time, state.integratedInput);
  m_filterMemories.set(time, {state.filterMemory1, state.filterMemory2, 0.0});
  m_trinaryState.set(time, state.iTrinaryState);
  m_previousActivation.set(time, state.previousActivation);
}

void InputFilterHistory::Cut(double time) {
  CutHistory(m_previousLimitedInput, time);
  CutHistory(m_integratedInput, time);
  CutHistory(m_filterMemories, time);
  CutHistory(m_trinaryState, time);
  CutHistory(m_previousActivation, time);
}

void InputFilterHistory::Save(util::DataChunk& chunk, const InputFilterKeys& keys) const {
  AddHistory(chunk, keys.filterMemories, m_filterMemories);
  AddHistory(chunk, keys.integratedInput, m_integratedInput);
  AddHistory(chunk, keys.previousLimitedInput, m_previousLimitedInput);
  AddHistory(chunk, keys.trinaryState, m_trinaryState);
  AddHistory(chunk, keys.previousActivation, m_previousActivation);
}

void InputFilterHistory::Load(SaveReader& reader, const InputFilterKeys& keys) {
  reader.ReadHistory(keys.filterMemories, m_filterMemories);
  reader.ReadHistory(keys.integratedInput, m_integratedInput);
  reader.ReadHistory(keys.previousLimitedInput, m_previousLimitedInput);
  reader.ReadHistory(keys.trinaryState, m_trinaryState);
  reader.ReadHistory(keys.previousActivation, m_previousActivation);
  if (!AreStates(m_trinaryState) || !AreStates(m_previousActivation)) reader.Refuse();
}

}  // namespace orv::rws::addon
