#include "plugins/release/firepower/CCollisionNode.h"

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "util/CMesh_Box.h"

namespace orv::rws::addon {

CCollisionNode::CCollisionNode(CCamera& rig, const RigSceneNode& parent)
    : SurfaceNode(rig, "collision", &parent, util::CMesh_Box(0.2, 0.02, 0.2, {0.0, -0.5, 0.0})) {}

void CCollisionNode::BeginFrame(double time) {
  EndFrame();
  CNode* const node = GetNode();
  CNode* const parent = node && node->IsValid() ? node->GetParent() : nullptr;
  const bool withParent = parent && !IsOwn(*parent);
  if (parent) Core().ReleaseNode(static_cast<CExtendable*>(parent));
  ForEachSurface(withParent, [&](CNode* surface) { Gather(*surface, time, true); });
}

void CCollisionNode::Gather(CNode& surface, double time, bool withChildren) {
  if (IsOwn(surface)) return;
  if (CSnapshot_Mesh* const mesh = Core().GetSnapshotMesh(&surface, time)) {
    m_meshes.push_back(mesh);
    return;
  }
  for (int i = 0; withChildren && i < surface.GetChildCount(); ++i) {
    CNode* const child = surface.GetChild(i);
    if (!child) continue;
    Gather(*child, time, false);
    Core().ReleaseNode(static_cast<CExtendable*>(child));
  }
}

void CCollisionNode::EndFrame() {
  for (CSnapshot_Mesh* mesh : m_meshes) Core().ReleaseSnapshotMesh(mesh);
  m_meshes.clear();
}

bool CCollisionNode::Cast(const util::Vector3<double>& origin,
                          const util::Vector3<double>& direction, double length, double& distance,
                          util::Vector3<double>& normal) const {
  bool found = false;
  RayHit hit;
  for (CSnapshot_Mesh* mesh : m_meshes) {
    if (!mesh->Intersect(origin, direction, length, hit)) continue;
    found = true;
    length = distance = hit.distance;
    normal = hit.normal;
  }
  return found;
}

}  // namespace orv::rws::addon
