#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"

#include "plugins/release/4wheelerextended/DisplayMeshes.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

CCarCamObject::WheelNodes::WheelNodes(CCarCamObject& rig, int index)
    : relocator(rig, std::string("WheelRelocatorMesh") + kWheelSuffixes[index],
                &rig.m_chassisRelocator, CMesh_WheelRelocator()),
      center(rig, std::string("WheelCenterMesh") + kWheelSuffixes[index], &relocator,
             CMesh_WheelCenter()),
      suspension(rig, std::string("WheelCenterSuspensionMesh") + kWheelSuffixes[index], &relocator,
                 CMesh_WheelSuspension()),
      wheel(rig, rig.cCarCam, rig.m_settings, rig.m_gravity, rig.m_rayFan, rig.m_chassisRelocator,
            relocator, index) {
  center.SetWritten();
  suspension.SetWritten();
}

CCarCamObject::CCarCamObject(const CreationRecord& record, GroundShapePool& shapes)
    : Rig(record),
      cCarCam(m_settings),
      m_body(*this, "CarBodyMesh", nullptr, CMesh_CarBody()),
      m_chassisRelocator(*this, "ChassisRelocatorMesh", &m_body, CMesh_ChassisRelocator()),
      m_turnBase(*this, "TurnBaseMesh", &m_body, CMesh_TurnBase()),
      m_gravity(*this, m_settings, m_body, shapes),
      m_bodyBase(*this, "CarBodyBaseMesh", &m_body, CMesh_CarBodyBase()),
      m_target(*this, "TargetMesh", nullptr, CMesh_Target()),
      m_force(*this, "ExternalForceMesh", &m_body, CMesh_ExternalForce()),
      m_steeringWheel(*this, "SteeringWheelMesh", &m_body, CMesh_SteeringWheel()),
      m_followCam(*this, cCarCam, m_chassisRelocator),
      m_driverCam(*this, cCarCam, m_body),
      m_topViewCam(*this, cCarCam, m_chassisRelocator) {
  for (RigSceneNode* written :
       {&m_body, &m_chassisRelocator, &m_turnBase, &m_bodyBase, &m_steeringWheel})
    written->SetWritten();
  for (int i = 0; i < kWheelCount; ++i) m_wheels[i] = std::make_unique<WheelNodes>(*this, i);
  for (RigSceneNode* node : AllNodes()) m_gravity.own.push_back(node);
  m_hideModes.SetNodes(m_settings.bHideHelpers, Helpers());
  m_hideModes.SetNodes(m_settings.bHideHelpersDuringRecording, Helpers());
  m_hideModes.SetNodes(m_settings.bHideFollowCam, {&m_followCam});
  m_hideModes.SetNodes(m_settings.bHideDriverCam, {&m_driverCam});
  m_hideModes.SetNodes(m_settings.bHideTopViewCam, {&m_topViewCam});
}

CCarCamObject::~CCarCamObject() = default;

std::vector<RigSceneNode*> CCarCamObject::Helpers() {
  std::vector<RigSceneNode*> nodes{&m_chassisRelocator, &m_turnBase, &m_gravity,
                                   &m_bodyBase,         &m_target,   &m_force};
  for (auto& wheel : m_wheels)
    nodes.insert(nodes.end(), {&wheel->relocator, &wheel->center, &wheel->suspension});
  return nodes;
}

std::vector<RigSceneNode*> CCarCamObject::AllNodes() {
  std::vector<RigSceneNode*> nodes{&m_body};
  for (RigSceneNode* helper : Helpers()) nodes.push_back(helper);
  for (auto& wheel : m_wheels) nodes.push_back(&wheel->wheel);
  nodes.insert(nodes.end(), {&m_steeringWheel, &m_followCam, &m_driverCam, &m_topViewCam});
  return nodes;
}

void CCarCamObject::Update(double time) {
  if (!m_inTake) StandWheelsAtRest(time);
  m_pInterface->RefreshConfig();
}

CCamera* CCarCamPlugin::CreateObject(const CreationRecord& record) {
  return new CCarCamObject(record, m_shapes);
}

std::string CCarCamPlugin::GetDescription() {
  return "Orvel 4-Wheeler Extended is a car that is driven live. It follows any ground, leans, "
         "squats, skids, burns its tires, leaves the ground and lands. Move and scale the body and "
         "the wheels to fit a model, parent the gravity direction mesh to the ground, and drive "
         "with a wheel, a pad or the keyboard. In autonomous mode it follows a target by itself.";
}

}  // namespace orv::rws::addon
