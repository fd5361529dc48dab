// An undo step that knows whose it is.
#pragma once

#include <memory>

#include "core/instances/StoredData.h"
#include "core/interface/CUndo.h"

namespace orv::rws::core {

class Instance;
class OwnedUndo;

/// What a rig stored on either side of all the steps that it makes in one undo block.
struct OwnedBlock {
  /// To be made ahead of the changes.
  explicit OwnedBlock(const Instance& owner) : before(owner), after(owner) { before.Note(); }

  StoredData before, after;
  const OwnedUndo* first = nullptr;
  const OwnedUndo* last = nullptr;
};

/// Wraps a step of a rig, so that no step touches a rig that was deleted or rebuilt. For one that
/// was rebuilt, the data that were stored on either side of the block stand in; of a run, which has
/// steps of the core for that, they are not noted. The step may have changed parameters: that is
/// told.
class OwnedUndo : public CUndo {
 public:
  /// Owns `step`. `block`: the one that it is made in; null in a take or a resimulation.
  OwnedUndo(CUndo* step, Instance& owner, std::shared_ptr<OwnedBlock> block);
  ~OwnedUndo() override { m_step->Destroy(); }

  void Undo(bool keep) override;
  void Redo() override;

 private:
  CUndo* m_step;
  Instance& m_owner;
  std::weak_ptr<int> m_life;  ///< of the owner
  std::shared_ptr<OwnedBlock> m_block;
};

}  // namespace orv::rws::core
