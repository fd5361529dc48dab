#include "plugins/release/1dpositioner/1dpositioner_C1DPositionerObject.h"

#include "util/CMesh_Box.h"

namespace orv::rws::addon {

C1DPositionerObject::C1DPositionerObject(const CreationRecord& record)
    : OneChannelRig(
          record,
          {"1DPositionerDataChunk", "ActuatorMesh", "Position", 1.0, true, {"X", "Y", "Z"}, 0},
          util::CMesh_Box(0.2, 0.2, 0.2)) {}

util::Matrix<double> C1DPositionerObject::LocalPose() const {
  util::Vector3<double> way;
  way[Axis()] = Output(0);
  util::Matrix<double> pose;
  pose.setTranslation(way);
  return pose;
}

CCamera* C1DPositionerPlugin::CreateObject(const CreationRecord& record) {
  return new C1DPositionerObject(record);
}

std::string C1DPositionerPlugin::GetDescription() {
  return "Orvel 1D positioner links one input to a movement along one axis. Use it for sliders, "
         "lifts, doors and everything else that runs on a straight line.";
}

}  // namespace orv::rws::addon
