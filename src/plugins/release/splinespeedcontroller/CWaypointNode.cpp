#include "plugins/release/splinespeedcontroller/CWaypointNode.h"

#include "plugins/release/splinespeedcontroller/RailMeshes.h"

namespace orv::rws::addon {

CWaypointNode::CWaypointNode(CCamera& rig, const std::string& name, const RigSceneNode& parent,
                             const WaypointSettings& panel)
    : RigMeshNode(rig, name, &parent, WaypointMesh()),
      target(rig, name + "_lookAtTarget", &parent, TargetMesh()),
      m_panel(panel) {
  values.settings = panel;
}

void CWaypointNode::OnCallback(std::string label) {
  CopyParameter(m_panel, values.settings, label);
}

}  // namespace orv::rws::addon
