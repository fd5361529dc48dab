#include "plugins/common/ground/SurfaceNode.h"

#include <algorithm>

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "plugins/common/SnapshotGuard.h"

namespace orv::rws::addon {

bool SurfaceNode::IsOwn(CNode& node) const {
  return std::any_of(own.begin(), own.end(),
                     [&](const RigSceneNode* held) { return held->Is(node); });
}

void SurfaceNode::ForEachSurface(bool withParent, const std::function<void(CNode*)>& visit) const {
  CNode* const node = GetNode();
  if (!node || !node->IsValid()) return;
  const auto take = [&](CNode* surface) {
    if (!surface) return;
    visit(surface);
    Core().ReleaseNode(static_cast<CExtendable*>(surface));
  };
  if (withParent) take(node->GetParent());
  for (int i = 0; i < node->GetChildCount(); ++i) take(node->GetChild(i));
}

util::Matrix<double> SurfaceNode::PoseOf(CNode* node, double time) const {
  util::Matrix<double> pose;
  const SnapshotGuard snapshot(Core(), node, time);
  if (snapshot) snapshot->GetMatrix(pose.data());
  return pose;
}

util::CMesh SurfaceNode::MeshOf(CNode* node, double time, bool& isMesh) const {
  util::CMesh mesh;
  CInterface& core = Core();
  CSnapshot_Mesh* const snapshot = core.GetSnapshotMesh(node, time);
  isMesh = snapshot != nullptr;
  if (snapshot) {
    snapshot->Triangulate();
    mesh = snapshot->GetMesh();
  }
  core.ReleaseSnapshotMesh(snapshot);
  return mesh;
}

}  // namespace orv::rws::addon
