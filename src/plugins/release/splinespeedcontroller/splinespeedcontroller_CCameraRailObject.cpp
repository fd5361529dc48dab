#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

#include <cmath>

#include "core/interface/RigMarks.h"
#include "plugins/common/History.h"
#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/RailMeshes.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

RailContext::RailContext(CCamera& rig)
    : referenceFrame(rig, "ReferenceFrame", nullptr, ReferenceFrameMesh()),
      downDirection(rig, "DownDirection", nullptr, DownDirectionMesh()),
      curveInformation(rig, referenceFrame) {}

CCameraRailObject::CCameraRailObject(const CreationRecord& record)
    : Rig(record), m_rail(*this), m_carriage(*this, m_rail) {
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

std::intptr_t CCameraRailObject::Extension(int code, void* a, void* b) {
  return code == kTellMarks && a ? TellMarks(*static_cast<RigMarks*>(a))
                                 : CCamera::Extension(code, a, b);
}

/// Of the path that a take would run on.
std::intptr_t CCameraRailObject::TellMarks(RigMarks& marks) {
  constexpr int kPieces = 128;
  constexpr double kSeam = 0.5;  ///< of the path; nothing runs so far in a frame
  NodeSpline spline;
  spline.Bind(*m_pInterface, m_carriage.GetNode());
  spline.SetTime(marks.time);
  const bool isHosts = !m_rail.settings.useCCurve && spline.IsValid();
  if (!isHosts && !m_rail.curveInformation.IsUsable()) return 1;
  const Matrix frame = m_rail.referenceFrame.ReadMatrix(marks.time);
  const auto at = [&](double u) {
    return isHosts ? spline.WorldPosition(u)
                   : frame.transformPoint(m_rail.curveInformation.curve.Position(u));
  };
  for (int i = 0; i <= kPieces; ++i) marks.track.push_back(at(static_cast<double>(i) / kPieces));
  for (std::size_t i = 0; i < m_rail.waypoints.size(); ++i)
    marks.waypoints.push_back(
        {at(m_rail.waypoints[i]->values.onSplinePosition), m_carriage.IsStop(static_cast<int>(i))});
  // Against the path, which may be on its way itself.
  const double dt = m_pInterface->GetFrameDuration();
  const auto& positions = m_carriage.memory.onSplinePosition;
  const double now = positions.value(marks.time);
  const double before = positions.value(util::frameBefore(marks.time, dt));
  const Vector way = at(now) - at(before);
  if (std::abs(now - before) < kSeam && way.length() > 0.0)
    marks.speeds.push_back({at(now), way.normalized(), way.length() / dt});
  return 1;
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
