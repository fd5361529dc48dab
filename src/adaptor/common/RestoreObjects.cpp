#include "adaptor/common/RestoreObjects.h"

#include "adaptor/common/HostAdaptor.h"
#include "core/interface/CUndo.h"

namespace orv::rws::adaptor {

CUndoWrapper::~CUndoWrapper() {
  m_step->Destroy();
}

void CUndoWrapper::undo(bool keep) {
  m_step->Undo(keep);
}

void CUndoWrapper::redo() {
  m_step->Redo();
}

void CPoseRestoreObj::Keep(HostNode& node) {
  if (node.m_keptSerial == m_serial || !node.Exists()) return;
  node.m_keptSerial = m_serial;
  m_saved.push_back(node.SavePose());
}

void CPoseRestoreObj::undo(bool) {
  for (const Exchange& exchange : m_saved) exchange();
}

void NodePresence::TakeOut() {
  m_node.m_adaptor.Delist(m_node);
  // A node that went with its parent is only known no longer.
  if (m_node.IsValid()) Detach();
}

void NodePresence::PutBack() {
  Attach();
  if (m_node.Exists()) m_node.m_adaptor.Enlist(m_node);
}

void CNodeDeleteRestore::undo(bool) {
  m_presence->PutBack();
  m_node.GetAdaptor().MarkRebuild(m_node.GetOwner(), false);
}

void CNodeDeleteRestore::redo() {
  m_node.GetAdaptor().MarkRebuild(m_node.GetOwner(), true);
  m_presence->TakeOut();
}

}  // namespace orv::rws::adaptor
