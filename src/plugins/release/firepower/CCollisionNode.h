// The node that declares what a gun's projectiles meet.
#pragma once

#include <vector>

#include "plugins/common/ground/SurfaceNode.h"
#include "plugins/release/firepower/RayTest.h"

namespace orv::rws {
class CSnapshot_Mesh;
}

namespace orv::rws::addon {

/// Its parent, unless that is one of the rig's own nodes, and each of its children is a collision
/// surface; of one that is no mesh itself the meshes directly below are. Surfaces are met as they
/// move, but give nothing of their motion: one that comes up pushes what lies on it.
class CCollisionNode final : public SurfaceNode, public RayTest {
 public:
  CCollisionNode(CCamera& rig, const RigSceneNode& parent);

  /// Takes the meshes of a frame, for all projectiles. The host's snapshots live until EndFrame.
  void BeginFrame(double time);
  void EndFrame();

  bool HasSurfaces() const { return !m_surfaces.empty(); }
  bool Meet(const util::Vector3<double>& from, const util::Vector3<double>& to, bool frame,
            SurfaceHit& hit) const override;

 private:
  struct Surface {
    CSnapshot_Mesh* mesh;       ///< the core's
    util::Matrix<double> move;  ///< of its points since the frame before
    bool moves;
  };
  void Gather(CNode& surface, double time, bool withChildren);
  bool MeetNearest(const util::Vector3<double>& from, const util::Vector3<double>& to, bool frame,
                   double skin, SurfaceHit& hit) const;

  std::vector<Surface> m_surfaces;  ///< of the present frame
  bool m_anyMoves = false;
};

}  // namespace orv::rws::addon
