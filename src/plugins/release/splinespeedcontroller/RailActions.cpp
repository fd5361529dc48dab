// What the user does to the rail outside of takes.
#include <algorithm>
#include <cmath>
#include <utility>

#include "plugins/common/HandOver.h"
#include "plugins/common/History.h"
#include "plugins/release/splinespeedcontroller/CCurveUndo.h"
#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/WaypointUndo.h"
#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

constexpr double kMostFrames = 1000.0;  ///< of a stop
/// A carriage that is found this close to where it was counts as still there (arc parameter).
constexpr double kSamePlace = 0.01;
/// Without a path a new waypoint goes this far ahead of the last one (m).
constexpr double kAhead = 1.0;

}  // namespace

bool CCameraRailObject::PushWaypointUndo() {
  return m_pInterface->PushUndo(new WaypointUndo(*this)) == 0;
}

// --- the list ---

CWaypointNode* CCameraRailObject::Selected() {
  const auto i = static_cast<std::size_t>(m_selected);
  return i < m_rail.waypoints.size() ? m_rail.waypoints[i].get() : nullptr;
}

CCameraRailObject::WaypointState CCameraRailObject::GetWaypointState() const {
  WaypointState state{
      m_rail.waypoints, {}, m_selected, m_carriage.memory.current, m_carriage.memory.next};
  for (const auto& waypoint : m_rail.waypoints) state.values.push_back(waypoint->values);
  return state;
}

void CCameraRailObject::SetWaypointState(const WaypointState& state) {
  m_rail.waypoints = state.waypoints;
  for (std::size_t i = 0; i < state.values.size(); ++i) {
    CWaypointNode& waypoint = *m_rail.waypoints[i];
    waypoint.values = state.values[i];
    waypoint.Find();
    waypoint.target.Find();
  }
  m_selected = state.selected;
  m_carriage.memory.current = state.current;
  m_carriage.memory.next = state.next;
  ShowWaypoints();
}

void CCameraRailObject::ShowWaypoints() {
  std::vector<std::string> items;
  std::vector<RigSceneNode*> helpers{&m_rail.referenceFrame, &m_rail.downDirection,
                                     &m_rail.curveInformation.mesh};
  for (const auto& waypoint : m_rail.waypoints) {
    items.push_back(waypoint->GetName());
    helpers.push_back(waypoint.get());
    helpers.push_back(&waypoint->target);
  }
  m_hideModes.SetNodes(m_rail.settings.hideHelpersDuringRecording, std::move(helpers));
  const int last = static_cast<int>(items.size()) - 1;
  m_selected = std::max(0, std::min(m_selected, last));
  if (items.empty()) items.push_back(kNoWaypoint);
  if (m_waypointItems) m_waypointItems->Update(std::move(items));
  ShowSelected();
}

void CCameraRailObject::ShowSelected() {
  m_choice = m_selected;
  const CWaypointNode* const waypoint = Selected();
  if (waypoint) m_rail.panel = waypoint->values.settings;
  waypointPositionPercentage = waypoint ? waypoint->values.onSplinePosition * 100.0 : 0.0;
  waypointTimeDelayD = m_rail.panel.frameDelay / m_pInterface->GetFrameRate();
  m_pInterface->RefreshConfig();
}

/// Keeps the list in the order of the path; what was selected stays so.
void CCameraRailObject::SortWaypoints() {
  const CWaypointNode* const selected = Selected();
  WaypointList& list = m_rail.waypoints;
  std::stable_sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
    return a->values.onSplinePosition < b->values.onSplinePosition;
  });
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i].get() == selected) m_selected = static_cast<int>(i);
  m_carriage.memory.current = m_carriage.memory.next = -1;
}

std::string CCameraRailObject::FreeWaypointName() const {
  for (int number = 1;; ++number) {
    const std::string name = (number < 10 ? "Waypoint0" : "Waypoint") + std::to_string(number);
    const bool taken =
        std::any_of(m_rail.waypoints.begin(), m_rail.waypoints.end(),
                    [&](const auto& waypoint) { return waypoint->GetName() == name; });
    if (!taken && !m_pInterface->FindNode(name)) return name;
  }
}

CCameraRailObject::Path CCameraRailObject::PresentPath(bool tell) {
  NodeSpline& spline = m_rail.nodeSpline;
  spline.Bind(*m_pInterface, m_carriage.GetNode());
  spline.SetTime(m_pInterface->GetTime());
  const Path path = m_carriage.ChoosePath();
  if (!tell || path == Path::kHost) return path;
  if (m_rail.settings.useCCurve) {
    if (path == Path::kNone) Tell("Warning", kNoCurve);
    return path;
  }
  if (spline.IsBound() && !spline.IsSupported())
    Tell("Error", "Can't acquire spline. Not supported.", kIconCritical);
  const bool canFallBack = path == Path::kOwn || m_rail.waypoints.size() >= 2;
  Tell("Warning",
       std::string(kNeedsSpline) + (canFallBack ? " Will use Orvel Curve instead." : ""));
  return path;
}

void CCameraRailObject::PlaceWaypoint(CWaypointNode& waypoint, Path path) {
  const double now = m_pInterface->GetTime();
  Matrix pose = waypoint.ReadMatrix(now);
  pose.setTranslation(m_carriage.PathPosition(path, waypoint.values.onSplinePosition, now));
  waypoint.Place(now, pose);
}

void CCameraRailObject::CreateWaypoint() {
  const double now = m_pInterface->GetTime();
  const Path path = PresentPath(false);
  auto step = std::make_unique<WaypointUndo>(*this);
  auto made = std::make_shared<CWaypointNode>(*this, FreeWaypointName(), m_rail.referenceFrame,
                                              m_rail.panel);
  if (made->Create() != 0 || made->target.Create() != 0) {
    Tell("Error", "The host could not make the node " + made->GetName() + ".");
    return;
  }
  made->values.initTime = now;
  made->values.onSplinePosition = m_rail.settings.waypointStartPercentage / 100.0;
  if (path != Path::kNone) {
    PlaceWaypoint(*made, path);
    const Matrix pose = made->ReadMatrix(now);
    made->target.Place(now, pose);
  } else if (!m_rail.waypoints.empty()) {
    const Matrix& frame = m_rail.referenceFrame.ReadMatrix(now);
    Matrix pose = m_rail.waypoints.back()->ReadMatrix(now);
    pose.setTranslation(pose.translation() - frame.axisRow(2) * kAhead);
    made->Place(now, pose);
    made->target.Place(now, pose);
  }
  m_rail.waypoints.push_back(made);
  m_selected = static_cast<int>(m_rail.waypoints.size()) - 1;
  // Without a path the order of creation is that of the curve to come.
  if (path != Path::kNone) SortWaypoints();
  m_carriage.memory.current = m_carriage.memory.next = -1;
  // Behind the steps of the nodes: a redo has them back before the list looks for them.
  m_pInterface->PushUndo(step.release());
  ShowWaypoints();
}

void CCameraRailObject::RemoveWaypoint() {
  CWaypointNode* const selected = Selected();
  if (!selected) {
    Tell("Warning", "No Waypoint created");
    return;
  }
  PushWaypointUndo();
  const std::shared_ptr<CWaypointNode> gone =
      m_rail.waypoints[static_cast<std::size_t>(m_selected)];
  m_rail.waypoints.erase(m_rail.waypoints.begin() + m_selected);
  m_carriage.memory.current = m_carriage.memory.next = -1;
  for (RigSceneNode* node :
       {static_cast<RigSceneNode*>(&gone->target), static_cast<RigSceneNode*>(gone.get())})
    DeleteNode(*node);
  ShowWaypoints();
}

void CCameraRailObject::EqualiseWaypoints() {
  if (m_rail.waypoints.empty()) {
    Tell("Warning", "No Waypoint created");
    return;
  }
  const CWaypointNode& first = *m_rail.waypoints.front();
  const int answer =
      m_pInterface->MessageBox("Overwrite?",
                               "This will overwrite and set all waypoint parameters to " +
                                   first.GetName() + " parameters. Do you wish to continue?",
                               kButtonsYesNo | kIconQuestion);
  if (answer != kAnswerYes) return;
  PushWaypointUndo();
  for (const auto& waypoint : m_rail.waypoints) waypoint->values.settings = first.values.settings;
  ShowSelected();
}

/// What the user has put under the node stays.
void CCameraRailObject::DeleteNode(RigSceneNode& node) {
  HandOverChildren(*m_pInterface, node, m_rail.referenceFrame);
  CNode* const gone = node.GetNode();
  node.Delete();
  if (node.Find() && node.GetNode() == gone)
    Tell("Error", "Error when deleting Spline Speed-Controller.");
}

// --- the carriage ---

void CCameraRailObject::InitializeCarriage() {
  const Path path = PresentPath(true);
  if (path == Path::kNone) return;
  PushVariableUndo(*m_pInterface, m_carriage.memory);
  m_carriage.Initialize(path, 0.0, m_pInterface->GetTime());
}

void CCameraRailObject::SnapCarriage() {
  const Path path = PresentPath(true);
  if (path == Path::kNone) return;
  const double now = m_pInterface->GetTime();
  Matrix pose = m_carriage.ReadMatrix(now);
  const Vector here = pose.translation();
  const Matrix inverse = m_rail.referenceFrame.ReadMatrix(now).affineInverse();
  double u = path == Path::kHost
                 ? m_rail.nodeSpline.Closest(here)
                 : m_rail.curveInformation.curve.Closest(inverse.transformPoint(here));
  PushVariableUndo(*m_pInterface, m_carriage.memory);
  auto& history = m_carriage.memory.onSplinePosition;
  if (std::abs(u - history.value(now)) <= kSamePlace) u = history.value(now);
  history.set(now, u);
  pose.setTranslation(m_carriage.PathPosition(path, u, now));
  m_carriage.Place(now, pose);
}

// --- the path ---

bool CCameraRailObject::BuildCurve() {
  if (m_rail.waypoints.size() < 2) {
    Tell("Add more waypoints", "The Curve has to have at least two waypoints to be created.");
    return false;
  }
  const double now = m_pInterface->GetTime();
  const Matrix inverse = m_rail.referenceFrame.ReadMatrix(now).affineInverse();
  CCurveInformation& information = m_rail.curveInformation;
  CCurve curve;
  curve.SetClosed(information.closed);
  curve.SetEndStraight(information.endstraight);
  for (const auto& waypoint : m_rail.waypoints) {
    const WaypointSettings& settings = waypoint->values.settings;
    curve.AddPoint(inverse.transformPoint(waypoint->ReadMatrix(now).translation()),
                   settings.tension_in, settings.tension_out);
  }
  if (curve.State() != CurveState::kSampled) {
    const std::size_t a = curve.ShortestChord(), b = (a + 1) % m_rail.waypoints.size();
    Tell("Warning", "The curve would need more than " + std::to_string(CCurve::kMostSamples) +
                        " samples: " + m_rail.waypoints[a]->GetName() + " and " +
                        m_rail.waypoints[b]->GetName() +
                        " lie too close to each other for its length. Move them apart, or remove "
                        "one.");
    return false;
  }
  m_pInterface->PushUndo(new CCurveUndo(information));
  PushWaypointUndo();
  information.curve = curve;
  information.curveInitialized = true;
  for (std::size_t i = 0; i < m_rail.waypoints.size(); ++i)
    m_rail.waypoints[i]->values.onSplinePosition = curve.WaypointPosition(i);
  if (!information.ShowMesh(*m_pInterface))
    Tell("Error", "The host could not make the node OrvelCurve.");
  ShowWaypoints();
  return true;
}

void CCameraRailObject::CreateCurve() {
  BuildCurve();
}

void CCameraRailObject::RemoveCurve() {
  CCurveInformation& information = m_rail.curveInformation;
  if (!information.curveInitialized) return;
  m_pInterface->PushUndo(new CCurveUndo(information));
  information.curve = CCurve();
  information.curveInitialized = false;
  if (information.mesh.Find()) DeleteNode(information.mesh);
}

void CCameraRailObject::SnapWaypoints() {
  if (m_rail.waypoints.empty()) {
    Tell("Warning", "No Waypoint created");
    return;
  }
  const Path path = m_rail.settings.useCCurve ? Path::kOwn : PresentPath(true);
  if (path != Path::kHost) {
    if (path == Path::kOwn || m_rail.waypoints.size() >= 2) BuildCurve();
    return;
  }
  PushWaypointUndo();
  const double now = m_pInterface->GetTime();
  for (const auto& waypoint : m_rail.waypoints) {
    waypoint->values.onSplinePosition =
        m_rail.nodeSpline.Closest(waypoint->ReadMatrix(now).translation());
    PlaceWaypoint(*waypoint, path);
  }
  SortWaypoints();
  ShowWaypoints();
}

// --- edits ---

void CCameraRailObject::EditSelection() {
  if (m_choice == m_selected || m_rail.waypoints.empty()) return;
  PushWaypointUndo();
  m_selected = m_choice;
  ShowWaypoints();
}

void CCameraRailObject::EditPosition() {
  CWaypointNode* const waypoint = Selected();
  const double u = waypointPositionPercentage / 100.0;
  if (!waypoint) {
    if (u != 0.0) Tell("Warning", "No Waypoint selected.");
    waypointPositionPercentage = 0.0;
    return;
  }
  if (waypoint->values.onSplinePosition * 100.0 == waypointPositionPercentage) return;
  if (!PushWaypointUndo()) return;
  waypoint->values.onSplinePosition = u;
  const Path path = m_recording ? Path::kNone : PresentPath(false);
  if (path != Path::kNone) PlaceWaypoint(*waypoint, path);
  SortWaypoints();
  ShowWaypoints();
}

void CCameraRailObject::EditField(const std::string& label) {
  WaypointSettings& panel = m_rail.panel;
  const double rate = m_pInterface->GetFrameRate();
  std::string field = label;
  if (label == kDelaySeconds && waypointTimeDelayD != panel.frameDelay / rate) {
    panel.frameDelay = std::min(waypointTimeDelayD * rate, kMostFrames);
    if (waypointTimeDelayD * rate > kMostFrames)
      Tell("Warning", "A stop lasts 1000 frames at most: 1000 are taken.");
    field = kDelayFrames;
  }
  waypointTimeDelayD = panel.frameDelay / rate;
  CWaypointNode* const waypoint = Selected();
  // Without a waypoint the parameters are what a new one will get.
  if (!waypoint || waypoint->values.settings == panel) return;
  const bool replayed = !PushWaypointUndo();
  waypoint->OnCallback(field);
  const bool isTension = field == kTensionIn || field == kTensionOut;
  if (isTension && !replayed && !m_recording && m_rail.curveInformation.curveInitialized)
    BuildCurve();
}

void CCameraRailObject::EditCurveFlag() {
  CCurveInformation& information = m_rail.curveInformation;
  const CCurve& curve = information.curve;
  if (!information.curveInitialized || m_recording) return;
  if (curve.IsClosed() == information.closed && curve.IsEndStraight() == information.endstraight)
    return;
  if (!PushWaypointUndo() || BuildCurve()) return;
  information.closed = curve.IsClosed();
  information.endstraight = curve.IsEndStraight();
  m_pInterface->RefreshConfig();
}

}  // namespace orv::rws::addon
