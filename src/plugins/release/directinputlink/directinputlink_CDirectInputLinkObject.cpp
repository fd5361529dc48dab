#include "plugins/release/directinputlink/directinputlink_CDirectInputLinkObject.h"

#include <cstdint>

#include "util/Angles.h"
#include "util/CMesh_Box.h"
#include "util/QTransform.h"

namespace orv::rws::addon {

namespace {

/// Channels, in the order of the inputs.
enum Channel { kForwBackw, kRightLeft, kUpDown, kYaw, kPitch, kRoll };

constexpr InputFilterKeys kKeys = {
    "ancDILpcInput",
    "ancDILpcInputPrevLimitedInpValue",
    "ancDILpcInputfIntegratedInpValue",
    "ancDILpcInputFilterMem",
    "ancDILpcInputiTrinaryState",
    "ancDILpcInputiPrevActivation",
    "cDILpcInputbIsTrinaryStateValue",
    "cDILpcInputbIsIntegratedValue",
    "changeLimitStore",
};

/// A wedge that points forward (-Z).
util::CMesh ActuatorMesh() {
  util::CMesh_Box mesh(0.3, 0.1, 0.5);
  for (util::Vector3<double>& vertex : mesh.vertices)
    if (vertex.z < 0.0) vertex.x *= 0.25;
  return mesh;
}

}  // namespace

CDirectInputLinkObject::CDirectInputLinkObject(const CreationRecord& record)
    : LinkRig(record,
              {"DILDataChunk",
               "ActuatorMesh",
               {{"Forw/Backw Transl", 1.0},
                {"Right/Left Transl", 1.0},
                {"Up/Down Transl", 1.0},
                {"Yaw (Right/Left)", util::kQuarterTurn},
                {"Pitch (Up/Down)", util::kQuarterTurn},
                {"Roll (Right/Left)", util::kQuarterTurn}},
               kKeys,
               true},
              ActuatorMesh()),
      m_camera(*this, m_actuator) {
  m_hideModes.SetNodes(m_settings.hideCamera, {&m_camera});
}

void CDirectInputLinkObject::DefineMoreModes() {
  using Row = ParameterRow<Settings>;
  static constexpr Row kRows[] = {Row::Flag(kNotSaved, nullptr, "Hide Camera",
                                            "Hides the camera on the actuator.",
                                            &Settings::hideCamera, Hides::kAlways)};
  DefineParameters(ParametersOf(kRows, m_settings));
}

int CDirectInputLinkObject::CreateMore() {
  return m_camera.Create();
}

void CDirectInputLinkObject::RestoreMore() {
  // A user may have deleted the camera; the link works without it.
  m_camera.Find();
}

util::Matrix<double> CDirectInputLinkObject::LocalPose() const {
  using Quat = util::Quat<double>;
  const Quat yaw = Quat::fromRotationVector({0.0, -Output(kYaw), 0.0});
  const Quat pitch = Quat::fromRotationVector({Output(kPitch), 0.0, 0.0});
  const Quat roll = Quat::fromRotationVector({0.0, 0.0, -Output(kRoll)});
  // Yaw about the cage's up axis, pitch about the turned right axis, roll about the line of sight:
  // the first of the product acts first, in the frame of those behind it.
  const util::QTransform<double> pose{{Output(kRightLeft), Output(kUpDown), -Output(kForwBackw)},
                                      roll * pitch * yaw};
  return pose.toMatrix();
}

CCamera* CDirectInputLinkPlugin::CreateObject(const CreationRecord& record) {
  return new CDirectInputLinkObject(record);
}

std::string CDirectInputLinkPlugin::GetDescription() {
  return "Orvel DirectInputLink is a link between an input device to a movement in the scene. Its "
         "main use is either as a camera tool or a tool for controlling and animating objects in "
         "the "
         "scene in real time. Six inputs move and turn an actuator within a cage; moving, turning "
         "or "
         "scaling the cage carries the whole movement along.";
}

}  // namespace orv::rws::addon
