// A waypoint of the rail: where it lies and how the carriage passes it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

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

/// A parameter of a waypoint: a number or a flag.
struct WaypointField {
  const char* key;    ///< in save data
  const char* label;  ///< of the parameter
  const char* tooltip;
  double WaypointSettings::*number;  ///< or null
  bool WaypointSettings::*flag;      ///< or null
  double min, max, step;             ///< of a number
};

/// All fields: the two tensions, then the selected waypoint's in the order of the parameters.
const std::vector<WaypointField>& WaypointFields();
inline constexpr std::size_t kTensionFields = 2;

/// Saved values of a waypoint beside its settings.
struct WaypointValues {
  WaypointSettings settings;
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
