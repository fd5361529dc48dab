#include "core/instances/OwnedUndo.h"

#include <utility>

#include "core/instances/Instance.h"

namespace orv::rws::core {

OwnedUndo::OwnedUndo(CUndo* step, Instance& owner, std::shared_ptr<OwnedBlock> block)
    : m_step(step), m_owner(owner), m_life(owner.GetLife()), m_block(std::move(block)) {
  if (!m_block) return;
  if (!m_block->first) m_block->first = this;
  m_block->last = this;
}

void OwnedUndo::Undo(bool keep) {
  if (m_block && m_block->last == this) m_block->after.Note();
  if (!m_life.expired()) {
    m_step->Undo(keep);
    m_owner.RefreshConfig();
  } else if (m_block && m_block->first == this) {
    m_block->before.PutBack();
  }
}

void OwnedUndo::Redo() {
  if (!m_life.expired()) {
    m_step->Redo();
    m_owner.RefreshConfig();
  } else if (m_block && m_block->last == this) {
    m_block->after.PutBack();
  }
}

}  // namespace orv::rws::core
