#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

#include "plugins/common/History.h"
#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/RailMeshes.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

RailContext::RailContext(CCamera& rig)
    : referenceFrame(rig, "ReferenceFrame", nullptr, ReferenceFrameMesh()),
      downDirection(rig, "DownDirection", nullptr, DownDirectionMesh()),
      curveInformation(rig, referenceFrame) {}

CCameraRailObject::CCameraRailObject(const CreationRecord& record)
    : CCamera(record),
      m_rail(*this),
      m_carriage(*this, m_rail),
      m_hideHelpers(m_hideModes.Add("Hide Helpers During Recording",
                                    "Hides all but the carriage while a take runs.",
                                    OldHideModes::kDuringTakes, {})) {
  m_rail.curveInformation.edited = [this](const std::string& name) { OnCallback(name); };
}

// --- life ---

int CCameraRailObject::Create() {
  if (m_carriage.Create() != 0 || m_rail.referenceFrame.Create() != 0 ||
      m_rail.downDirection.Create() != 0)
    return 1;
  m_ready = true;
  ShowWaypoints();
  return 0;
}

int CCameraRailObject::Restore() {
  // Without its frame or direction the rig goes on as if they stood at the origin; without its
  // carriage it is none.
  if (!m_carriage.Find()) return 1;
  m_rail.referenceFrame.Find();
  m_rail.downDirection.Find();
  if (LoadBlob() == SaveState::kDamaged) {
    Tell("Error", "An error occured loading plugin");
    return 1;
  }
  m_ready = true;
  ShowWaypoints();
  m_hideModes.Restore();
  return 0;
}

void CCameraRailObject::Start(double time) {
  m_recording = true;
  m_rail.nodeSpline.Bind(*m_pInterface, m_carriage.GetNode());
  m_rail.nodeSpline.SetTime(time);
  if (m_carriage.ChoosePath() == Path::kNone)
    Tell("Warning", m_rail.settings.useCCurve ? kNoCurve : kNeedsSpline);
  PushVariableUndo(*m_pInterface, m_carriage.memory);
  m_carriage.Start(time);
  m_hideModes.Start();
}

void CCameraRailObject::Stop() {
  m_hideModes.Stop();
  m_rail.nodeSpline.Unbind();
  m_recording = false;
}

void CCameraRailObject::Step(double time) {
  m_carriage.Step(time);
}

void CCameraRailObject::Update(double /*time*/) {
  m_pInterface->RefreshConfig();
}

// --- the configuration ---

int CCameraRailObject::Define() {
  m_pInterface->BeginConfig();
  DefineModes();
  DefineWaypoints();
  DefineCarriage();
  DefineCurve();
  DefineInputs();
  m_pInterface->EndConfig();
  return 0;
}

void CCameraRailObject::DefineModes() {
  m_pInterface->BeginGroup("General Modes", "What drives, and what is shown");
  m_pInterface->AddCheckBox("Input Mode Only", "The inputs alone drive the carriage.",
                            &m_rail.settings.bInputMode, this);
  m_hideModes.DefineBoxes(*m_pInterface, *this);
  m_pInterface->EndGroup();
}

void CCameraRailObject::DefineField(const WaypointField& field) {
  if (field.number)
    m_pInterface->AddSpinner(field.label, field.tooltip, &(m_rail.panel.*field.number), field.min,
                             field.max, field.step, 3, false, this);
  else
    m_pInterface->AddCheckBox(field.label, field.tooltip, &(m_rail.panel.*field.flag), this);
}

void CCameraRailObject::DefineWaypoints() {
  CInterface& core = *m_pInterface;
  const auto& fields = WaypointFields();
  core.BeginGroup("Waypoints", "The waypoints of the path");
  m_waypointItems = core.AddComboBox(kCurrentWaypoint, "The waypoint that is edited", {kNoWaypoint},
                                     &m_choice, this);
  core.AddSpinner("Waypoint Creation Position (in Percent)",
                  "Where on the path a new waypoint goes", &m_rail.settings.waypointStartPercentage,
                  0.0, 100.0, 0.01, 3, false, this);
  core.AddButton(kCreateWaypoint, "Adds a waypoint", this);
  core.AddButton(kRemoveWaypoint, "Removes the selected waypoint", this);
  core.AddButton(kEqualiseWaypoints, "Gives all waypoints the first one's parameters", this);
  core.AddCheckBox("Use Simplified Parameters", "Every waypoint uses the first one's parameters",
                   &m_rail.settings.useSimpleParameters, this);
  core.EndGroup();
  core.BeginGroup("Orvel Curve CV Tensions", "The Orvel curve at the selected waypoint");
  for (std::size_t i = 0; i < kTensionFields; ++i) DefineField(fields[i]);
  core.EndGroup();
  core.BeginGroup("Selected Waypoint", "How the carriage passes the selected waypoint");
  core.AddSpinner(kPosition, "Where the waypoint lies on the path", &waypointPositionPercentage,
                  0.0, 100.0, 0.01, 3, false, this);
  for (std::size_t i = kTensionFields; i < fields.size(); ++i) {
    DefineField(fields[i]);
    if (fields[i].number == &WaypointSettings::frameDelay)
      core.AddSpinner(kDelaySeconds, "The same in seconds", &waypointTimeDelayD, 0.0, 10000.0, 0.1,
                      3, false, this);
  }
  core.EndGroup();
}

void CCameraRailObject::DefineCarriage() {
  CInterface& core = *m_pInterface;
  RailSettings& s = m_rail.settings;
  core.BeginGroup("Carriage Properties", "How the carriage runs");
  core.AddSpinner("Gravity Strength", "Makes the carriage faster downhill, 0 is off",
                  &s.gravityStrength, -10000.0, 10000.0, 0.01, 3, true, this);
  core.AddSpinner("Banking Factor", "Makes the carriage lean into the curve, 0 is off",
                  &s.bankingFactor, -10000.0, 10000.0, 0.0001, 4, true, this);
  core.AddCheckBox("Loop", "The carriage goes on at the other end of the path", &s.loop, this);
  core.AddButton(kInitializeCarriage,
                 "Puts the carriage at the beginning of the path and forgets its past", this);
  core.AddButton(kSnapCarriage, "Puts the carriage on the path, where it is closest", this);
  core.EndGroup();
}

void CCameraRailObject::DefineCurve() {
  CInterface& core = *m_pInterface;
  CCurveInformation& curve = m_rail.curveInformation;
  core.BeginGroup("Orvel Curve Generation", "A path of the rig's own, through the waypoints");
  core.AddCheckBox("Use Orvel Curve Generation",
                   "The carriage runs on the Orvel curve, also when it is parented to a spline",
                   &m_rail.settings.useCCurve, this);
  core.AddCheckBox(kClosed, "The last waypoint joins the first", &curve.closed, &curve);
  core.AddCheckBox(kEndStraight, "The curve leaves its ends straight", &curve.endstraight, &curve);
  core.AddButton(kSnapWaypoints,
                 "Finds where on the spline the waypoints lie, or draws the Orvel curve anew",
                 this);
  core.AddButton(kCreateCurve, "Lays the Orvel curve through the waypoints", this);
  core.AddButton(kRemoveCurve, "Removes the Orvel curve", this);
  core.EndGroup();
}

void CCameraRailObject::DefineInputs() {
  CInterface& core = *m_pInterface;
  RailSettings& s = m_rail.settings;
  core.BeginGroup("Input Properties", "What the inputs do");
  core.AddSpinner("Forward/Backward Maximum Speed",
                  "Speed that the input Speed adds at full throw, in the selected unit",
                  &s.maxSpeed, 0.0, 1000.0, 0.1, 3, true, this);
  core.EndGroup();
  const char* const units =
      "The speeds used in the simulation will be in the selected units. Regardless of scale of the "
      "Carriage or Reference Frame.";
  core.BeginGroup("Speed Units", units);
  core.AddComboBox("Selected Speed Units", units, SpeedUnitNames(), &s.currentlySelectedSpeedUnit,
                   this);
  core.AddSpinner("Speed Multiplier", "Multiplies all speeds", &s.speedMult, 0.0, 1000.0, 0.01, 3,
                  true, this);
  core.EndGroup();
  const unsigned anyKind =
      unidevice::kBinaryControl | unidevice::kFiniteControl | unidevice::kInfiniteControl;
  m_rail.inputs.speed = core.AddInput("Speed", anyKind);
  m_rail.inputs.start = core.AddInput("Start", anyKind);
  m_rail.inputs.lookAtTarget = core.AddInput("Look At Target", anyKind);
  m_rail.inputs.forcedStop = core.AddInput("Forced Stop", anyKind);
}

// --- the factory ---

CCamera* CCameraRailPlugin::CreateObject(const CreationRecord& record) {
  return new CCameraRailObject(record);
}

std::string CCameraRailPlugin::GetDescription() {
  return "Orvel Spline Speed-Controller is a simulator which enables you to control the speed of "
         "an "
         "object on a spline with high precision.Link/parent the CarriageNode to a spline, create "
         "and place out waypoints along the spline with specified speeds and press Record.";
}

}  // namespace orv::rws::addon
