#include "adaptor/maya/MayaPresence.h"

#include <string>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/MelText.h"
#include "core/services/Log.h"

namespace orv::rws::adaptor::maya {

MayaPresence::MayaPresence(CMayaNode& node) : NodePresence(node), m_own(node) {}

void MayaPresence::Detach() {
  m_own.LeaveTake();
  auto out = std::make_unique<MDagModifier>();
  out->commandToExecute(("delete " + QuoteMel(m_own.GetPath().fullPathName().asUTF8())).c_str());
  if (out->doIt())
    m_out = std::move(out);
  else
    core::LogEntry(core::LogLevel::kWarning, "Failed to redo dagmod #" + m_own.GetSceneName());
}

void MayaPresence::Attach() {
  if (!m_out) return;
  if (!m_out->undoIt())
    core::LogEntry(core::LogLevel::kWarning, "Failed to undo dagmod #" + m_own.GetSceneName());
  m_out.reset();
}

}  // namespace orv::rws::adaptor::maya
