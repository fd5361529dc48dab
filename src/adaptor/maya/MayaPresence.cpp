#include "adaptor/maya/MayaPresence.h"

#include <string>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/LoggedModifier.h"
#include "adaptor/maya/MelText.h"

namespace orv::rws::adaptor::maya {

MayaPresence::MayaPresence(CMayaNode& node, int block)
    : NodePresence(node), m_own(node), m_block(block) {}

void MayaPresence::Detach() {
  m_own.LeaveTake();
  auto out = std::make_unique<MDagModifier>();
  out->commandToExecute(("delete " + QuoteMel(m_own.GetPath().fullPathName().asUTF8())).c_str());
  RedoLogged(*out, m_block);
  if (!m_own.IsValid()) m_out = std::move(out);
}

void MayaPresence::Attach() {
  if (!m_out) return;
  UndoLogged(*m_out, m_block);
  m_out.reset();
}

}  // namespace orv::rws::adaptor::maya
