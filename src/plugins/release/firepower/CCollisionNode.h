// The node that declares what a gun's projectiles meet.
#pragma once

#include <vector>

#include "plugins/common/ground/SurfaceNode.h"
#include "plugins/release/firepower/Flight.h"

namespace orv::rws {
class CSnapshot_Mesh;
}

namespace orv::rws::addon {

/// Its parent, unless that is one of the rig's own nodes, and each of its children is a collision
/// surface; of one that is no mesh itself the meshes directly below are. Surfaces stand, for all
/// of a frame, where their animation has them at its end.
class CCollisionNode final : public SurfaceNode, public RayTest {
 public:
  CCollisionNode(CCamera& rig, const RigSceneNode& parent);

  /// Takes the meshes of a frame, for all projectiles. The host's snapshots live until EndFrame.
  void BeginFrame(double time);
  void EndFrame();

  bool HasSurfaces() const { return !m_meshes.empty(); }
  bool Cast(const util::Vector3<double>& origin, const util::Vector3<double>& direction,
            double length, double& distance, util::Vector3<double>& normal) const override;

 private:
  void Gather(CNode& surface, double time, bool withChildren);

  std::vector<CSnapshot_Mesh*> m_meshes;  ///< of the present frame; the core's
};

}  // namespace orv::rws::addon
