// Many meshes of the scene that a rig meets as one.
#pragma once

#include <cstdint>
#include <vector>

#include "core/interface/CSnapshot_Mesh.h"
#include "plugins/common/ground/BoxTree.h"
#include "util/Matrix.h"

namespace orv::rws {
class CInterface;
class CNode;
}  // namespace orv::rws

namespace orv::rws::addon {

/// The meshes below a node, captured for a take. Rays meet them as they would one mesh of all their
/// triangles: a tree over the members' world boxes tells which few a ray may hit, so that hundreds
/// of members cost little more than one. Of hits at one distance the first member's counts. Members
/// that may move are looked at in each frame, the others at the capture. World space.
class SurfaceGroup {
 public:
  using Vector = util::Vector3<double>;
  using Matrix = util::Matrix<double>;
  using Box = util::Box;

  struct Member {
    CNode* node;               ///< the core's, handed back by Release
    std::int32_t order;        ///< among all members, depth first
    Box own;                   ///< in the node's own space
    Matrix pose;               ///< of the present frame
    CSnapshot_Mesh* snapshot;  ///< of the present frame; null until a ray comes near
  };

  /// Takes `nodes`, all of them meshes, as they stand at `time`.
  void Capture(CInterface& core, const std::vector<CNode*>& nodes, double time);
  /// Hands the nodes back.
  void Release();
  bool IsEmpty() const { return m_still.members.empty() && m_moving.members.empty(); }
  bool HasStill() const { return !m_still.members.empty(); }

  void BeginFrame(double time);
  /// Hands the snapshots back.
  void EndFrame();
  /// Closest hit of a ray with a unit direction. Between BeginFrame and EndFrame.
  bool Intersect(const Vector& origin, const Vector& direction, double maxDistance, RayHit& hit);
  /// The same with the members that never move alone.
  bool IntersectStill(const Vector& origin, const Vector& direction, double maxDistance,
                      RayHit& hit);
  /// Notes the members that reach into the cube of half size `reach`; false when there are none.
  bool PrepareNear(const Vector& centre, double reach);
  /// Intersect for a ray that does not leave that cube.
  bool IntersectNear(const Vector& origin, const Vector& direction, double maxDistance,
                     RayHit& hit);

  /// Those that may move, in their order, and their boxes.
  const std::vector<Member>& GetMoving() const { return m_moving.members; }
  const std::vector<Box>& GetMovingBoxes() const { return m_moving.boxes; }
  /// The mesh of one of them in the present frame; null for one that is gone.
  CSnapshot_Mesh* SnapshotOfMoving(std::size_t index) {
    return SnapshotOf(m_moving.members[index]);
  }
  /// One mesh of all triangles as they stand at the latest capture or frame, or with `still` of
  /// those that never move.
  util::CMesh Join(bool still) const;

 private:
  struct Set {
    std::vector<Member> members;
    std::vector<Box> boxes;  ///< in world space, of each member
    BoxTree tree;
  };
  struct Hit {
    double limit;
    std::int32_t order = -1;  ///< of the member that is hit
  };
  CSnapshot_Mesh* SnapshotOf(Member& member);
  void Look(Member& member, const Vector& origin, const Vector& direction, Hit& best, RayHit& hit);
  void Cast(Set& set, const Vector& origin, const Vector& direction, Hit& best, RayHit& hit);

  CInterface* m_core = nullptr;  ///< from Capture to Release
  double m_time = 0.0;           ///< of the present frame (s)
  Set m_still, m_moving;
  std::vector<BoxTree::Crossing> m_crossings;
  std::vector<std::int32_t> m_found;
  std::vector<Member*> m_near;
  std::vector<CSnapshot_Mesh*> m_snapshots;
};

/// The size of a mesh; asks for no copy of it where the host can tell.
MeshExtent ExtentOf(CSnapshot_Mesh& mesh);

}  // namespace orv::rws::addon
