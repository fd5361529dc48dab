// A rig's node that tells by its place which meshes of the scene the rig meets.
#pragma once

#include <functional>
#include <vector>

#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

/// Its parent node, unless that is one of the rig's own, and each of its child nodes is a surface.
class SurfaceNode : public RigMeshNode {
 public:
  using RigMeshNode::RigMeshNode;

  /// Nodes of the rig itself, which are never a surface as a parent; the rig's.
  std::vector<const RigSceneNode*> own;

 protected:
  bool IsOwn(CNode& node) const;
  /// Calls `visit` with the parent where `withParent` says so, and then with each child. The nodes
  /// are good within the call.
  void ForEachSurface(bool withParent, const std::function<void(CNode*)>& visit) const;
  /// World pose of a node; the identity for one that is gone.
  util::Matrix<double> PoseOf(CNode* node, double time) const;
  /// The triangles of a node in its own space; empty for one that is no mesh. `isMesh` tells the
  /// two apart.
  util::CMesh MeshOf(CNode* node, double time, bool& isMesh) const;
};

}  // namespace orv::rws::addon
