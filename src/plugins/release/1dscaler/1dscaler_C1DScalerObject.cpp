#include "plugins/release/1dscaler/1dscaler_C1DScalerObject.h"

#include <algorithm>

#include "plugins/common/NodeScale.h"
#include "util/CMesh_Box.h"

namespace orv::rws::addon {

namespace {

/// Smallest scale that the rig writes.
constexpr double kMinScale = 0.001;

/// The first choice of the axis; X, Y and Z follow it.
constexpr int kAllAxes = 0;

}  // namespace

C1DScalerObject::C1DScalerObject(const CreationRecord& record)
    : OneChannelRig(record,
                    {"1DScalerDataChunk",
                     "DummyMesh",
                     "Scale",
                     1.0,
                     false,
                     {"All axes", "X", "Y", "Z"},
                     kAllAxes},
                    util::CMesh_Box(0.2, 0.2, 0.2)) {}

util::Matrix<double> C1DScalerObject::LocalPose() const {
  const double factor = std::max(1.0 + Output(0), kMinScale);
  util::Vector3<double> scale(factor, factor, factor);
  if (Axis() != kAllAxes) {
    scale = {1.0, 1.0, 1.0};
    scale[Axis() - 1] = factor;
  }
  util::Matrix<double> pose;
  ScaleRows(pose, scale);
  return pose;
}

CCamera* C1DScalerPlugin::CreateObject(const CreationRecord& record) {
  return new C1DScalerObject(record);
}

std::string C1DScalerPlugin::GetDescription() {
  return "Orvel 1D scaler links one input to the size of a dummy node. Use it for balloons, "
         "flames, "
         "light cones and everything else that grows and shrinks.";
}

}  // namespace orv::rws::addon
