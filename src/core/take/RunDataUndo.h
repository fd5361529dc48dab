// The end of a run, for a rig that is rebuilt later.
#pragma once

#include "core/instances/StoredData.h"
#include "core/interface/CUndo.h"

namespace orv::rws::core {

/// The last step of an instance in a run: has what the rig stores at its end, so that a redo gives
/// a rig that undo and redo have made anew the memory of the run.
class RunDataUndo : public CUndo {
 public:
  explicit RunDataUndo(const Instance& instance) : m_after(instance) {}
  void Undo(bool) override { m_after.Note(); }
  void Redo() override { m_after.PutBack(); }

 private:
  StoredData m_after;
};

}  // namespace orv::rws::core
