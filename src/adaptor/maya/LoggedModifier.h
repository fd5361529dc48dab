// Modifiers of the host as steps of undo.
#pragma once

#include <string>

#include "core/services/Log.h"

namespace orv::rws::adaptor::maya {

/// Undoes, or redoes, a modifier in the undo step of the block `id`. One that fails is logged: the
/// steps behind it go on.
template <class Modifier>
void UndoLogged(Modifier& modifier, int id) {
  if (!modifier.undoIt())
    core::LogEntry(core::LogLevel::kWarning, "Failed to undo dagmod #" + std::to_string(id));
}
template <class Modifier>
void RedoLogged(Modifier& modifier, int id) {
  if (!modifier.doIt())
    core::LogEntry(core::LogLevel::kWarning, "Failed to redo dagmod #" + std::to_string(id));
}

}  // namespace orv::rws::adaptor::maya
