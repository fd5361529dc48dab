// What a rig does with its memory when a take begins.
#pragma once

#include <cstddef>

#include "core/interface/CInterface.h"
#include "core/interface/CVariableModUndo.h"
#include "util/AVar.h"

namespace orv::rws::addon {

/// Makes all that a take changes in `variable` one undoable step. To be called before the change;
/// the variable must live as long as its rig.
template <class T>
void PushVariableUndo(CInterface& core, T& variable) {
  core.PushUndo(new CVariableModUndo<T>(&variable));
}

/// Discards the future: of the keys, the one nearest to `time` and all behind it go, or those
/// behind it alone when it is earlier than `time`.
template <class T>
void CutHistory(util::AVar<T>& history, double time) {
  if (history.samples.empty()) return;
  auto first = static_cast<std::size_t>(history.find(time));
  if (time > history.samples[first].time) ++first;
  history.samples.resize(first);
}

}  // namespace orv::rws::addon
