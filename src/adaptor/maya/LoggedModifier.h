// Modifiers of the host as steps of undo.
#pragma once

#include <string>

#include "core/services/Log.h"

namespace orv::rws::adaptor::maya {

/// False when the host refused to do `what`, a verb with its object, which is logged.
template <class Modifier>
bool DoLogged(Modifier& modifier, const std::string& what) {
  if (modifier.doIt()) return true;
  core::LogEntry(core::LogLevel::kWarning, "The host refused to " + what);
  return false;
}

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
