// The node that declares what a gun's projectiles meet.
#pragma once

#include <vector>

#include "plugins/common/ground/SurfaceNode.h"
#include "plugins/release/firepower/RayTest.h"

namespace orv::rws::addon {

/// Its parent, unless that is one of the rig's own nodes, and each of its children is a collision
/// surface; of a parent that is no mesh itself all meshes below are, of such a child those directly
/// below. Surfaces are met as they
/// move, but give nothing of their motion: one that comes up pushes what lies on it.
class CCollisionNode final : public SurfaceNode, public RayTest {
 public:
  CCollisionNode(CCamera& rig, const RigSceneNode& parent);

  /// Captures the meshes below a parent for a take that starts at `time`, and lets them go.
  void CaptureSurfaces(double time) { CaptureGroup(time); }
  void ReleaseSurfaces();
  /// Takes the meshes of a frame, for all projectiles. The host's snapshots live until EndFrame.
  void BeginFrame(double time);
  void EndFrame();

  bool HasSurfaces() const { return !m_surfaces.empty(); }
  /// Fills the answer to kTellGround.
  std::intptr_t TellGround(GroundReport& report) const;
  bool Meet(const util::Vector3<double>& from, const util::Vector3<double>& to, bool frame,
            SurfaceHit& hit) const override;

 private:
  struct Surface {
    CSnapshot_Mesh* mesh;       ///< the core's; null for those of the group
    int moving;                 ///< of the group's moving members; -1 for others and all that stand
    util::Matrix<double> move;  ///< of its points since the frame before
    bool moves;
  };
  void Add(CSnapshot_Mesh* mesh, int moving, CNode* node, double time);
  void Gather(CNode& surface, double time, bool withChildren);
  bool Intersect(const Surface& surface, const util::Vector3<double>& origin,
                 const util::Vector3<double>& direction, double reach, RayHit& hit) const;
  bool MeetNearest(const util::Vector3<double>& from, const util::Vector3<double>& to, bool frame,
                   double skin, SurfaceHit& hit) const;

  std::vector<Surface> m_surfaces;  ///< of the present frame
  bool m_anyMoves = false;
};

}  // namespace orv::rws::addon
