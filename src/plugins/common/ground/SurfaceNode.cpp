#include "plugins/common/ground/SurfaceNode.h"

#include <algorithm>

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/GroundReport.h"
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

/// Whether the node is one of the rig's own or stands below one.
bool SurfaceNode::HangsOnOwn(CNode& node) const {
  if (IsOwn(node)) return true;
  for (CNode* parent = node.GetParent(); parent;) {
    const bool found = IsOwn(*parent);
    CNode* const next = found ? nullptr : parent->GetParent();
    Core().ReleaseNode(static_cast<CExtendable*>(parent));
    if (found) return true;
    parent = next;
  }
  return false;
}

std::vector<CNode*> SurfaceNode::FindBelow(double time) const {
  std::vector<CNode*> found, open;
  CInterface& core = Core();
  const auto isMesh = [&](CNode* node) {
    CSnapshot_Mesh* const mesh = core.GetSnapshotMesh(node, time);
    core.ReleaseSnapshotMesh(mesh);
    return mesh != nullptr;
  };
  const auto release = [&](CNode* node) { core.ReleaseNode(static_cast<CExtendable*>(node)); };
  const auto openChildren = [&](CNode& node) {
    for (int i = node.GetChildCount(); i-- > 0;)
      if (CNode* const child = node.GetChild(i)) open.push_back(child);
  };
  CNode* const parent = GetNode() && GetNode()->IsValid() ? GetNode()->GetParent() : nullptr;
  if (!parent) return found;
  if (!isMesh(parent) && !HangsOnOwn(*parent)) openChildren(*parent);
  release(parent);
  while (!open.empty()) {
    CNode* const node = open.back();
    open.pop_back();
    // Helpers of other rigs are no ground, but what a user has hung on them is. A host that can't
    // tell whose a node is answers 0.
    const std::intptr_t ofRig = node->Extension(kIsOfRig, nullptr, nullptr);
    if (ofRig >= 0 && IsOwn(*node)) {
      release(node);
      continue;
    }
    openChildren(*node);
    if (ofRig <= 0 && isMesh(node))
      found.push_back(node);
    else
      release(node);
  }
  return found;
}

void SurfaceNode::Describe(double time, GroundReport& report) const {
  CInterface& core = Core();
  if (!GetNode() || !GetNode()->IsValid()) return;
  const auto nameOf = [](CNode* node) {
    std::string name;
    node->Extension(kReadName, &name, nullptr);
    return name;
  };
  const auto add = [&](CNode* node) {
    CSnapshot_Mesh* const mesh = core.GetSnapshotMesh(node, time);
    if (!mesh) return false;
    ++report.meshes;
    report.triangles += ExtentOf(*mesh).triangles;
    core.ReleaseSnapshotMesh(mesh);
    return true;
  };
  report.declaredBy = nameOf(GetNode());
  ForEachSurface(true, [&](CNode* node) {
    if (!IsOwn(*node) && add(node)) report.nodes.push_back(nameOf(node));
  });
  const std::vector<CNode*> below = FindBelow(time);
  for (CNode* node : below) {
    add(node);
    core.ReleaseNode(static_cast<CExtendable*>(node));
  }
  CNode* const parent = below.empty() ? nullptr : GetNode()->GetParent();
  if (!parent) return;
  report.nodes.insert(report.nodes.begin(), nameOf(parent));
  core.ReleaseNode(static_cast<CExtendable*>(parent));
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
