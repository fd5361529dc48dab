// All that the carriage works with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plugins/release/splinespeedcontroller/CCurveInformation.h"
#include "plugins/release/splinespeedcontroller/CWaypointNode.h"
#include "plugins/release/splinespeedcontroller/NodeSpline.h"
#include "plugins/release/splinespeedcontroller/SpeedUnits.h"

namespace orv::unidevice {
class Property;
}

namespace orv::rws::addon {

/// What a user edits beside the waypoints, and a profile saves.
struct RailSettings {
  bool bInputMode = false;           ///< the inputs alone drive
  bool useSimpleParameters = false;  ///< every waypoint uses the first one's settings
  bool useCCurve = false;            ///< run on the rig's own curve
  bool loop = false;
  double maxSpeed = 10.0;  ///< speed at full input, in the user's unit
  double speedMult = 1.0;
  double gravityStrength = 0.0;           ///< speed gained on a vertical drop (m/s), 0 is off
  double bankingFactor = 0.0;             ///< lean per speed and curvature, 0 is off
  double inputResponseFactor = 0.1;       ///< kept and saved; the motion has no use for it
  double waypointStartPercentage = 10.0;  ///< where a new waypoint goes
  int currentlySelectedSpeedUnit = 0;

  double MetresPerSecond(double speed) const {
    return ToMetresPerSecond(speed, static_cast<SpeedUnit>(currentlySelectedSpeedUnit));
  }
};

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
