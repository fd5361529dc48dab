#include "core/instances/OwnedUndo.h"

#include "core/instances/Instance.h"

namespace orv::rws::core {

OwnedUndo::OwnedUndo(CUndo* step, Instance& owner)
    : m_step(step), m_owner(owner), m_life(owner.GetLife()) {}

void OwnedUndo::Undo(bool keep) {
  if (m_life.expired()) return;
  m_step->Undo(keep);
  m_owner.RefreshConfig();
}

void OwnedUndo::Redo() {
  if (m_life.expired()) return;
  m_step->Redo();
  m_owner.RefreshConfig();
}

}  // namespace orv::rws::core
