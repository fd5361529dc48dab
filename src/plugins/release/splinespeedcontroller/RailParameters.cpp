// The rail's parameters, inputs and events.
#include <utility>

#include "plugins/common/ReplayedEvent.h"
#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

namespace {

/// What stands between the rows.
enum Own { kWaypointList, kSelectedWaypoint, kPositionInPercent, kDelayInSeconds, kCurveFlags };

using W = WaypointSettings;
using WaypointRow = ParameterRow<W>;
constexpr WaypointRow kWaypointRows[] = {
    WaypointRow::Group("Orvel Curve CV Tensions", "The Orvel curve at the selected waypoint"),
    WaypointRow::Number(0, "tension_in", kTensionIn,
                        "How far the curve runs on straight before the waypoint", &W::tension_in,
                        {-100, 100, 0.1, 3}),
    WaypointRow::Number(1, "tension_out", kTensionOut,
                        "How far the curve runs on straight behind the waypoint", &W::tension_out,
                        {-100, 100, 0.1, 3}),
    WaypointRow::EndGroup(),
    WaypointRow::Group("Selected Waypoint", "How the carriage passes the selected waypoint"),
    WaypointRow::Own(kPositionInPercent),
    WaypointRow::Number(2, "speed", "Speed", "Speed from this waypoint on, in the selected unit",
                        &W::speed, {0, 1000, 0.1, 3}),
    WaypointRow::Number(3, "frameDelay", kDelayFrames, "Frames that the carriage stands still here",
                        &W::frameDelay, {0, 1000, 0.1, 3}),
    WaypointRow::Own(kDelayInSeconds),
    WaypointRow::Flag(4, "stopModeOn", "Stop Mode",
                      "The carriage stops here and waits for the input Start", &W::stopModeOn),
    WaypointRow::Flag(5, "lookAtTarget", "Look at Target",
                      "From this waypoint on the carriage looks at the waypoint's target",
                      &W::lookAtTarget),
    WaypointRow::Flag(
        6, "lookWhenBraking", "Look at Target When Braking",
        "Once it brakes, the carriage looks at the target of the waypoint behind the one ahead",
        &W::lookWhenBraking),
    WaypointRow::Flag(7, "gyroMode", "Gyro Mode only", "The carriage keeps its orientation",
                      &W::gyroMode),
    WaypointRow::Flag(8, "yawMode", "Yaw Mode only", "The carriage turns about the vertical only",
                      &W::yawMode),
    WaypointRow::Number(9, "accelSoftner", "Acceleration Response Factor",
                        "How soon the carriage takes up a new speed; smaller is softer",
                        &W::accelSoftner, {0, 10, 0.01, 3}),
    WaypointRow::Number(10, "maxAccel", "Maximum Acceleration",
                        "Limits the change of the speed, 0 is no limit. How much it lets through "
                        "goes by the response factor and the frame rate",
                        &W::maxAccel, {0, 10000, 0.01, 3}),
    WaypointRow::Number(11, "rotRespFactor", "Rotation Response Factor",
                        "How soon the carriage takes up a new orientation", &W::rotRespFactor,
                        {0, 10, 0.01, 3}),
    WaypointRow::Number(12, "maxRateOfChange", "Rotation Max Rate Of Change",
                        "Fastest turn in radians per second, 0 is no limit", &W::maxRateOfChange,
                        {0, 10, 0.01, 3}),
    WaypointRow::Number(13, "brakeSoftner", "Brake Softner",
                        "Shape of the braking towards a stop here; smaller brakes later and harder",
                        &W::brakeSoftner, {0, 100, 0.1, 3}),
    WaypointRow::Number(14, "brakePercentage", "Brake Percent",
                        "Share of the way to here over which the carriage brakes for a stop",
                        &W::brakePercentage, {0, 100, 0.1, 3}),
    WaypointRow::EndGroup(),
};

const char kUnitsTip[] =
    "The speeds used in the simulation will be in the selected units. Regardless of scale of the "
    "Carriage or Reference Frame.";
using S = RailSettings;
using Row = ParameterRow<S>;
constexpr int kCarriage = RailSettings::kSavedCarriage * kSavedPart;
constexpr Row kRows[] = {
    Row::Group("General Modes", "What drives, and what is shown"),
    Row::Flag(0, "bInputMode", "Input Mode Only", "The inputs alone drive the carriage.",
              &S::bInputMode),
    Row::Flag(kNotSaved, nullptr, "Hide Helpers During Recording",
              "Hides all but the carriage while a take runs.", &S::hideHelpersDuringRecording,
              Hides::kDuringTakes),
    Row::EndGroup(),
    Row::Group("Waypoints", "The waypoints of the path"),
    Row::Own(kWaypointList),
    Row::Number(3, "waypointStartPercentage", "Waypoint Creation Position (in Percent)",
                "Where on the path a new waypoint goes", &S::waypointStartPercentage,
                {0.0, 100.0, 0.01, 3}),
    Row::Button(kCreateWaypoint, "Adds a waypoint"),
    Row::Button(kRemoveWaypoint, "Removes the selected waypoint"),
    Row::Button(kEqualiseWaypoints, "Gives all waypoints the first one's parameters"),
    Row::Flag(1, "useSimpleParameters", "Use Simplified Parameters",
              "Every waypoint uses the first one's parameters", &S::useSimpleParameters),
    Row::EndGroup(),
    Row::Own(kSelectedWaypoint),
    Row::Group("Carriage Properties", "How the carriage runs"),
    Row::Number(kCarriage + 2, "gravityStrength", "Gravity Strength",
                "Makes the carriage faster downhill, 0 is off", &S::gravityStrength,
                {-10000.0, 10000.0, 0.01, 3})
        .AsInput(),
    Row::Number(kCarriage + 3, "bankingFactor", "Banking Factor",
                "Makes the carriage lean into the curve, 0 is off", &S::bankingFactor,
                {-10000.0, 10000.0, 0.0001})
        .AsInput(),
    Row::Flag(kCarriage + 5, "loop", "Loop", "The carriage goes on at the other end of the path",
              &S::loop),
    Row::Button(kInitializeCarriage,
                "Puts the carriage at the beginning of the path and forgets its past"),
    Row::Button(kSnapCarriage, "Puts the carriage on the path, where it is closest"),
    Row::EndGroup(),
    Row::Group("Orvel Curve Generation", "A path of the rig's own, through the waypoints"),
    Row::Flag(2, "useCCurve", "Use Orvel Curve Generation",
              "The carriage runs on the Orvel curve, also when it is parented to a spline",
              &S::useCCurve),
    Row::Own(kCurveFlags),
    Row::Button(kSnapWaypoints,
                "Finds where on the spline the waypoints lie, or draws the Orvel curve anew"),
    Row::Button(kCreateCurve, "Lays the Orvel curve through the waypoints"),
    Row::Button(kRemoveCurve, "Removes the Orvel curve"),
    Row::EndGroup(),
    Row::Group("Input Properties", "What the inputs do"),
    Row::Number(kCarriage, "maxSpeed", "Forward/Backward Maximum Speed",
                "Speed that the input Speed adds at full throw, in the selected unit", &S::maxSpeed,
                {0.0, 1000.0, 0.1, 3})
        .AsInput(),
    Row::EndGroup(),
    Row::Group("Speed Units", kUnitsTip),
    Row::Choice(4, "currentlySelectedSpeedUnit", "Selected Speed Units", kUnitsTip,
                &S::currentlySelectedSpeedUnit, SpeedUnitNames),
    Row::Number(kCarriage + 4, "speedMult", "Speed Multiplier", "Multiplies all speeds",
                &S::speedMult, {0.0, 1000.0, 0.01, 3})
        .AsInput(),
    Row::EndGroup(),
    Row::Number(kCarriage + 1, "inputResponseFactor", nullptr, nullptr, &S::inputResponseFactor,
                {0.0, 1e18}),
};

}  // namespace

std::vector<Parameter> ParametersOf(RailSettings& settings) {
  return ParametersOf(kRows, settings);
}

std::vector<Parameter> ParametersOf(WaypointSettings& settings) {
  return ParametersOf(kWaypointRows, settings);
}

bool operator==(const WaypointSettings& a, const WaypointSettings& b) {
  for (const WaypointRow& row : kWaypointRows) {
    if (row.number && a.*row.number != b.*row.number) return false;
    if (row.flag && a.*row.flag != b.*row.flag) return false;
  }
  return true;
}

void CopyParameter(const WaypointSettings& from, WaypointSettings& to, const std::string& label) {
  for (const WaypointRow& row : kWaypointRows) {
    if (!row.label || label != row.label) continue;
    if (row.number) to.*row.number = from.*row.number;
    if (row.flag) to.*row.flag = from.*row.flag;
  }
}

int CCameraRailObject::Define() {
  CInterface& core = *m_pInterface;
  core.BeginConfig();
  DefineParameters(ParametersOf(m_rail.settings), [this](int which) { DefineOwn(which); });
  core.EndConfig();
  m_rail.inputs.speed = core.AddInput("Speed", unidevice::kAnyControl);
  m_rail.inputs.start = core.AddInput("Start", unidevice::kAnyControl);
  m_rail.inputs.lookAtTarget = core.AddInput("Look At Target", unidevice::kAnyControl);
  m_rail.inputs.forcedStop = core.AddInput("Forced Stop", unidevice::kAnyControl);
  return 0;
}

void CCameraRailObject::DefineOwn(int which) {
  CInterface& core = *m_pInterface;
  CCurveInformation& curve = m_rail.curveInformation;
  switch (which) {
    case kWaypointList:
      m_waypointItems = core.AddComboBox(kCurrentWaypoint, "The waypoint that is edited",
                                         {kNoWaypoint}, &m_choice, this);
      break;
    case kSelectedWaypoint:
      DefineParameters(ParametersOf(m_rail.panel), [this](int own) { DefineOwn(own); });
      break;
    case kPositionInPercent:
      core.AddSpinner(kPosition, "Where the waypoint lies on the path", &waypointPositionPercentage,
                      0.0, 100.0, 0.01, 3, false, this);
      break;
    case kDelayInSeconds:
      core.AddSpinner(kDelaySeconds, "The same in seconds", &waypointTimeDelayD, 0.0, 10000.0, 0.1,
                      3, false, this);
      break;
    case kCurveFlags:
      core.AddCheckBox(kClosed, "The last waypoint joins the first", &curve.closed, &curve);
      core.AddCheckBox(kEndStraight, "The curve leaves its ends straight", &curve.endstraight,
                       &curve);
      break;
  }
}

// --- events ---

void CCameraRailObject::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  const ReplayedEvent event(name);
  if (!m_ready || event.IsReplay()) return;
  const std::string label(event.label);
  if (!RunAction(label)) Edit(label);
  if (!m_recording) m_rail.nodeSpline.Unbind();
}

void CCameraRailObject::Edit(const std::string& label) {
  if (label == kCurrentWaypoint)
    EditSelection();
  else if (label == kPosition)
    EditPosition();
  else if (label == kClosed || label == kEndStraight)
    EditCurveFlag();
  else
    EditField(label);
}

bool CCameraRailObject::RunAction(const std::string& label) {
  const std::pair<const char*, void (CCameraRailObject::*)()> actions[] = {
      {kCreateWaypoint, &CCameraRailObject::CreateWaypoint},
      {kRemoveWaypoint, &CCameraRailObject::RemoveWaypoint},
      {kEqualiseWaypoints, &CCameraRailObject::EqualiseWaypoints},
      {kInitializeCarriage, &CCameraRailObject::InitializeCarriage},
      {kSnapCarriage, &CCameraRailObject::SnapCarriage},
      {kSnapWaypoints, &CCameraRailObject::SnapWaypoints},
      {kCreateCurve, &CCameraRailObject::CreateCurve},
      {kRemoveCurve, &CCameraRailObject::RemoveCurve}};
  for (const auto& [name, action] : actions) {
    if (label != name) continue;
    // A take runs on what its start found.
    if (!m_recording) (this->*action)();
    return true;
  }
  return false;
}

}  // namespace orv::rws::addon
