// An undo step that knows whose it is.
#pragma once

#include <memory>

#include "core/interface/CUndo.h"

namespace orv::rws::core {

/// Wraps a step of a rig and does nothing once the rig's instance is gone, so that no step touches
/// a rig that was deleted or rebuilt.
class OwnedUndo : public CUndo {
 public:
  /// Owns `step`; `owner` expires with the instance.
  OwnedUndo(CUndo* step, std::weak_ptr<int> owner) : m_step(step), m_owner(std::move(owner)) {}
  ~OwnedUndo() override { m_step->Destroy(); }

  void Undo(bool keep) override {
    if (!m_owner.expired()) m_step->Undo(keep);
  }
  void Redo() override {
    if (!m_owner.expired()) m_step->Redo();
  }

 private:
  CUndo* m_step;
  std::weak_ptr<int> m_owner;
};

}  // namespace orv::rws::core
