// Undo of a change to the list of waypoints.
#pragma once

#include "core/interface/CUndo.h"
#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

namespace orv::rws::addon {

/// Saves list and values at construction and brings them back; redo brings back what undo found.
/// The rig must outlive the step's use; the core drops steps whose rig is gone. Nodes come and go
/// by steps of their own.
class WaypointUndo : public CUndo {
 public:
  explicit WaypointUndo(CCameraRailObject& rig) : m_rig(rig), m_before(rig.GetWaypointState()) {}

  void Undo(bool) override {
    m_after = m_rig.GetWaypointState();
    m_rig.SetWaypointState(m_before);
  }
  void Redo() override { m_rig.SetWaypointState(m_after); }

 private:
  CCameraRailObject& m_rig;
  CCameraRailObject::WaypointState m_before, m_after;
};

}  // namespace orv::rws::addon
