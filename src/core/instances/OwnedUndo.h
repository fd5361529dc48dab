// An undo step that knows whose it is.
#pragma once

#include <memory>

#include "core/instances/StoredData.h"
#include "core/interface/CUndo.h"

namespace orv::rws::core {

class Instance;

/// Wraps a step of a rig, so that no step touches a rig that was deleted or rebuilt. For one that
/// was rebuilt, the data that were stored on either side of the step stand in; of a run, whose end
/// does that for all of its steps, they are not noted. The step may have changed parameters: that
/// is told.
class OwnedUndo : public CUndo {
 public:
  /// Owns `step`. `inRun`: a take or a resimulation makes it.
  OwnedUndo(CUndo* step, Instance& owner, bool inRun);
  ~OwnedUndo() override { m_step->Destroy(); }

  void Undo(bool keep) override;
  void Redo() override;

 private:
  CUndo* m_step;
  Instance& m_owner;
  std::weak_ptr<int> m_life;  ///< of the owner
  const bool m_inRun;
  StoredData m_before;
  StoredData m_after;
};

}  // namespace orv::rws::core
