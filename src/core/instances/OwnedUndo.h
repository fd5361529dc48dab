// An undo step that knows whose it is.
#pragma once

#include <memory>

#include "core/interface/CUndo.h"

namespace orv::rws::core {

class Instance;

/// Wraps a step of a rig and does nothing once the rig's instance is gone, so that no step touches
/// a rig that was deleted or rebuilt. The step may have changed parameters: that is told.
class OwnedUndo : public CUndo {
 public:
  /// Owns `step`.
  OwnedUndo(CUndo* step, Instance& owner);
  ~OwnedUndo() override { m_step->Destroy(); }

  void Undo(bool keep) override;
  void Redo() override;

 private:
  CUndo* m_step;
  Instance& m_owner;
  std::weak_ptr<int> m_life;  ///< of the owner
};

}  // namespace orv::rws::core
