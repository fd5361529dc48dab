#include "plugins/release/splinespeedcontroller/CWaypointNode.h"

#include <vector>

#include "plugins/release/splinespeedcontroller/RailMeshes.h"

namespace orv::rws::addon {

const std::vector<WaypointField>& WaypointFields() {
  using W = WaypointSettings;
  static const std::vector<WaypointField> fields = {
      {"tension_in", "Tension In", "How far the curve runs on straight before the waypoint",
       &W::tension_in, nullptr, -100, 100, 0.1},
      {"tension_out", "Tension Out", "How far the curve runs on straight behind the waypoint",
       &W::tension_out, nullptr, -100, 100, 0.1},
      {"speed", "Speed", "Speed from this waypoint on, in the selected unit", &W::speed, nullptr, 0,
       1000, 0.1},
      {"frameDelay", "Time Delay (frames)", "Frames that the carriage stands still here",
       &W::frameDelay, nullptr, 0, 1000, 0.1},
      {"stopModeOn", "Stop Mode", "The carriage stops here and waits for the input Start", nullptr,
       &W::stopModeOn, 0, 1, 1},
      {"lookAtTarget", "Look at Target",
       "From this waypoint on the carriage looks at the waypoint's target", nullptr,
       &W::lookAtTarget, 0, 1, 1},
      {"lookWhenBraking", "Look at Target When Braking",
       "Once it brakes, the carriage looks at the target of the waypoint behind the one ahead",
       nullptr, &W::lookWhenBraking, 0, 1, 1},
      {"gyroMode", "Gyro Mode only", "The carriage keeps its orientation", nullptr, &W::gyroMode, 0,
       1, 1},
      {"yawMode", "Yaw Mode only", "The carriage turns about the vertical only", nullptr,
       &W::yawMode, 0, 1, 1},
      {"accelSoftner", "Acceleration Response Factor",
       "How soon the carriage takes up a new speed; smaller is softer", &W::accelSoftner, nullptr,
       0, 10, 0.01},
      {"maxAccel", "Maximum Acceleration",
       "Limits the change of the speed, 0 is no limit. How much it lets through goes by the "
       "response "
       "factor and the frame rate",
       &W::maxAccel, nullptr, 0, 10000, 0.01},
      {"rotRespFactor", "Rotation Response Factor",
       "How soon the carriage takes up a new orientation", &W::rotRespFactor, nullptr, 0, 10, 0.01},
      {"maxRateOfChange", "Rotation Max Rate Of Change",
       "Fastest turn in radians per second, 0 is no limit", &W::maxRateOfChange, nullptr, 0, 10,
       0.01},
      {"brakeSoftner", "Brake Softner",
       "Shape of the braking towards a stop here; smaller brakes later and harder",
       &W::brakeSoftner, nullptr, 0, 100, 0.1},
      {"brakePercentage", "Brake Percent",
       "Share of the way to here over which the carriage brakes for a stop", &W::brakePercentage,
       nullptr, 0, 100, 0.1},
  };
  return fields;
}

bool operator==(const WaypointSettings& a, const WaypointSettings& b) {
  for (const WaypointField& field : WaypointFields()) {
    if (field.number && a.*field.number != b.*field.number) return false;
    if (field.flag && a.*field.flag != b.*field.flag) return false;
  }
  return true;
}

CWaypointNode::CWaypointNode(CCamera& rig, const std::string& name, const RigSceneNode& parent,
                             const WaypointSettings& panel)
    : RigMeshNode(rig, name, &parent, WaypointMesh()),
      target(rig, name + "_lookAtTarget", &parent, TargetMesh()),
      m_panel(panel) {
  values.settings = panel;
}

void CWaypointNode::OnCallback(std::string label) {
  for (const WaypointField& field : WaypointFields()) {
    if (label != field.label) continue;
    if (field.number) values.settings.*field.number = m_panel.*field.number;
    if (field.flag) values.settings.*field.flag = m_panel.*field.flag;
  }
}

}  // namespace orv::rws::addon
