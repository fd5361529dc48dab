#include "plugins/release/splinespeedcontroller/CCurveInformation.h"

#include "core/interface/CSnapshot_Helper.h"
#include "plugins/release/splinespeedcontroller/RailMeshes.h"

namespace orv::rws::addon {

CCurveInformation::CCurveInformation(CCamera& rig, const RigSceneNode& referenceFrame)
    : mesh(rig, "OrvelCurve", &referenceFrame, util::CMesh()) {}

bool CCurveInformation::ShowMesh(CInterface& core) {
  if (mesh.Create() != 0) return false;
  if (CSnapshot_Helper* helper = core.GetSnapshotHelper(mesh.GetNode())) {
    helper->SetMesh(CurveMesh(curve.Sample(kDisplaySamples)));
    core.ReleaseSnapshotHelper(helper);
  }
  return true;
}

void CCurveInformation::OnCallback(std::string name) {
  if (edited) edited(name);
}

}  // namespace orv::rws::addon
