#include "core/instances/OwnedUndo.h"

#include "core/instances/Instance.h"

namespace orv::rws::core {

OwnedUndo::OwnedUndo(CUndo* step, Instance& owner, bool inRun)
    : m_step(step),
      m_owner(owner),
      m_life(owner.GetLife()),
      m_inRun(inRun),
      m_before(owner),
      m_after(owner) {}

void OwnedUndo::Undo(bool keep) {
  if (m_life.expired()) return m_before.PutBack();
  if (!m_inRun) m_after.Note();
  m_step->Undo(keep);
  if (!m_inRun) m_before.Note();
  m_owner.RefreshConfig();
}

void OwnedUndo::Redo() {
  if (m_life.expired()) return m_after.PutBack();
  m_step->Redo();
  m_owner.RefreshConfig();
}

}  // namespace orv::rws::core
