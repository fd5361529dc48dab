#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

#include "plugins/common/History.h"
#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/RailMeshes.h"

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
