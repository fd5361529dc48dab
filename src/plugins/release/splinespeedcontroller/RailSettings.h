// What a user sets on a rail and a profile saves.
#pragma once

#include <string>
#include <vector>

#include "plugins/release/splinespeedcontroller/SpeedUnits.h"

namespace orv::rws::addon {

struct Parameter;

/// How a waypoint is passed. Speeds are in the user's unit, frames in the scene's. "Its leg" is the
/// one that leaves the waypoint.
struct WaypointSettings {
  double speed = 10.0;            ///< wanted on its leg
  double frameDelay = 0.0;        ///< frames to stand still here
  double accelSoftner = 0.1;      ///< factor of the speed filter
  double brakeSoftner = 0.9;      ///< exponent of the braking curve
  double brakePercentage = 10.0;  ///< share of the leg to here over which braking acts
  double tension_in = 1.0;        ///< of the control point
  double tension_out = 1.0;       ///< of the control point
  double rotRespFactor = 0.1;     ///< factor of the orientation filter
  double maxRateOfChange = 2.0;   ///< of the orientation (rad/s)
  double maxAccel = 100.0;        ///< how far the speed filter aims ahead (m/s per second), 0: all
  bool stopModeOn = false;        ///< stop here and wait for the input Start
  bool lookAtTarget = false;      ///< aim at the target on its leg
  bool lookWhenBraking = false;   ///< aim at the next waypoint's target once braking has begun
  bool gyroMode = false;          ///< no change of orientation at all
  bool yawMode = false;           ///< upright always
};

bool operator==(const WaypointSettings& a, const WaypointSettings& b);
/// Takes the parameter of this label over.
void CopyParameter(const WaypointSettings& from, WaypointSettings& to, const std::string& label);
std::vector<Parameter> ParametersOf(WaypointSettings& settings);

/// What a user edits beside the waypoints, and a profile saves.
struct RailSettings {
  bool bInputMode = false;           ///< the inputs alone drive
  bool useSimpleParameters = false;  ///< every waypoint uses the first one's settings
  bool useCCurve = false;            ///< run on the rig's own curve
  bool loop = false;                 ///< over the end to the start; off: stop there
  double maxSpeed = 10.0;            ///< speed at full input, in the user's unit
  double speedMult = 1.0;  ///< of the speed that is aimed at, whatever it comes from, [0, 1000]
  double gravityStrength = 0.0;             ///< speed gained on a vertical drop (m/s), 0 is off
  double bankingFactor = 0.0;               ///< lean per speed and curvature, 0 is off
  double inputResponseFactor = 0.1;         ///< kept and saved; the motion has no use for it
  double waypointStartPercentage = 10.0;    ///< where a new waypoint goes
  int currentlySelectedSpeedUnit = 0;       ///< a SpeedUnit, of all speeds that the user gives
  bool hideHelpersDuringRecording = false;  ///< all but the carriage, in takes and resimulations

  /// The part of the save data that is the carriage's.
  static constexpr int kSavedCarriage = 1;

  double MetresPerSecond(double speed) const {
    return ToMetresPerSecond(speed, static_cast<SpeedUnit>(currentlySelectedSpeedUnit));
  }
};

std::vector<Parameter> ParametersOf(RailSettings& settings);

}  // namespace orv::rws::addon
