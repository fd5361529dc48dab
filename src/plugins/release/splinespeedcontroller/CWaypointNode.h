// A waypoint of the rail: where it lies and how the carriage passes it.
#pragma once

#include <string>

#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"
#include "plugins/release/splinespeedcontroller/RailSettings.h"

namespace orv::rws::addon {

/// Saved values of a waypoint beside its settings.
struct WaypointValues {
  WaypointSettings settings;      ///< shown in the panel while it is selected
  double onSplinePosition = 0.0;  ///< arc parameter, 0 to 1
  double initTime = 0.0;          ///< host's time at its creation (s)
};

/// A waypoint and its target. Both nodes are children of the ReferenceFrame; neither is ever keyed
/// by the rig.
class CWaypointNode : public RigMeshNode, public CInterface::Callback {
 public:
  /// `panel` are the values that the user edits, which outlive this.
  CWaypointNode(CCamera& rig, const std::string& name, const RigSceneNode& parent,
                const WaypointSettings& panel);

  const std::string& GetName() const { return m_name; }
  /// An edit of the parameter `label` while this waypoint is selected: takes its value over.
  void OnCallback(std::string label) override;

  WaypointValues values;
  RigMeshNode target;

 private:
  const WaypointSettings& m_panel;
};

}  // namespace orv::rws::addon
