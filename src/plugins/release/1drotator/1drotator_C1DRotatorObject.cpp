#include "plugins/release/1drotator/1drotator_C1DRotatorObject.h"

#include "util/Angles.h"
#include "util/CMesh_Cylinder.h"
#include "util/Quat.h"

namespace orv::rws::addon {

C1DRotatorObject::C1DRotatorObject(const CreationRecord& record)
    : OneChannelRig(record,
                    {"1DRotatorDataChunk",
                     "ActuatorMesh",
                     "Rotation",
                     util::kQuarterTurn,
                     true,
                     {"X", "Y", "Z"},
                     1},
                    util::CMesh_Cylinder(0.2, 0.1, 6)) {}

util::Matrix<double> C1DRotatorObject::LocalPose() const {
  util::Vector3<double> turn;
  turn[Axis()] = Output(0);
  return util::Quat<double>::fromRotationVector(turn).toMatrix();
}

CCamera* C1DRotatorPlugin::CreateObject(const CreationRecord& record) {
  return new C1DRotatorObject(record);
}

std::string C1DRotatorPlugin::GetDescription() {
  return "Orvel 1D rotator links one input to a turn about one axis. Use it for turrets, flaps, "
         "propellers, hinges and everything else that turns on a pin.";
}

}  // namespace orv::rws::addon
