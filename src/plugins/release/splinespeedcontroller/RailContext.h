// All that the carriage works with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plugins/release/splinespeedcontroller/CCurveInformation.h"
#include "plugins/release/splinespeedcontroller/CWaypointNode.h"
#include "plugins/release/splinespeedcontroller/NodeSpline.h"
#include "plugins/release/splinespeedcontroller/RailSettings.h"

namespace orv::unidevice {
class Property;
}

namespace orv::rws::addon {

/// The waypoints in the order of the path.
using WaypointList = std::vector<std::shared_ptr<CWaypointNode>>;

/// Inputs; the instance's.
struct RailInputs {
  unidevice::Property* speed = nullptr;
  unidevice::Property* start = nullptr;
  unidevice::Property* lookAtTarget = nullptr;
  unidevice::Property* forcedStop = nullptr;
};

/// Owned by the rig; the carriage reads it.
struct RailContext {
  RailContext(CCamera& rig);

  RailSettings settings;
  WaypointSettings panel;  ///< what the user edits: the selected waypoint's, else a new one's
  WaypointList waypoints;
  RailInputs inputs;
  RigMeshNode referenceFrame;
  RigMeshNode downDirection;
  CCurveInformation curveInformation;
  NodeSpline nodeSpline;
};

}  // namespace orv::rws::addon
