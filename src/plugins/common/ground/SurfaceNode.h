// A rig's node that tells by its place which meshes of the scene the rig meets.
#pragma once

#include <functional>
#include <vector>

#include "plugins/common/RigSceneNode.h"
#include "plugins/common/ground/SurfaceGroup.h"

namespace orv::rws {
struct GroundReport;
}

namespace orv::rws::addon {

/// Its parent node, unless that is one of the rig's own, and each of its child nodes is a surface.
/// Of a parent that is no mesh the meshes below it are, together one surface: all but those of rigs
/// and what hangs on this one's own nodes.
class SurfaceNode : public RigMeshNode {
 public:
  using RigMeshNode::RigMeshNode;

  /// Nodes of the rig itself, which are never a surface as a parent; the rig's.
  std::vector<const RigSceneNode*> own;

  /// Adds what the surfaces are at `time`.
  void Describe(double time, GroundReport& report) const;

 protected:
  bool IsOwn(CNode& node) const;
  /// Calls `visit` with the parent where `withParent` says so, and then with each child. The nodes
  /// are good within the call.
  void ForEachSurface(bool withParent, const std::function<void(CNode*)>& visit) const;
  /// The meshes that stand for a parent that is none, depth first; empty for one that is a mesh.
  /// The caller hands them back with ReleaseNode.
  std::vector<CNode*> FindBelow(double time) const;
  /// Captures these meshes for a take that starts at `time`.
  void CaptureGroup(double time) { m_group.Capture(Core(), FindBelow(time), time); }
  /// World pose of a node; the identity for one that is gone.
  util::Matrix<double> PoseOf(CNode* node, double time) const;
  /// The triangles of a node in its own space; empty for one that is no mesh. `isMesh` tells the
  /// two apart.
  util::CMesh MeshOf(CNode* node, double time, bool& isMesh) const;

  mutable SurfaceGroup m_group;  ///< of the running take; rays fill its caches

 private:
  bool HangsOnOwn(CNode& node) const;
};

}  // namespace orv::rws::addon
