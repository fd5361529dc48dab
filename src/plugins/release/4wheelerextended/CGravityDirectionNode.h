// The node that declares the ground, and the rays that meet it.
#pragma once

#include <memory>
#include <vector>

#include "plugins/common/ground/FastGround.h"
#include "plugins/common/ground/MeshOctreeNode.h"
#include "plugins/common/ground/SurfaceNode.h"
#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::rws {
class CSnapshot_Mesh;
}

namespace orv::rws::addon {

class GroundShapePool;
struct CarSettings;

/// What a ray met. World space.
struct GroundHit {
  double distance = 0.0;  ///< from the ray's origin (m)
  util::Vector3<double> point;
  util::Vector3<double> normal;  ///< unit
};

/// Its parent node (or where that is no mesh all meshes below it, as one surface) and each of its
/// child nodes is a ground surface; its Y row points against gravity. Surfaces are captured once,
/// when a take starts. Rays go through one of three casters: the host's meshes, the fast caster's
/// own world, or the tree over a stored mesh. The last two take moving meshes where they stand when
/// the take starts or the mesh is stored.
class CGravityDirectionNode : public SurfaceNode {
 public:
  using Vector = util::Vector3<double>;
  using Matrix = util::Matrix<double>;

  /// `settings` belongs to the rig, `shapes` to its factory.
  CGravityDirectionNode(CCamera& rig, CarSettings& settings, const RigSceneNode& parent,
                        GroundShapePool& shapes);
  ~CGravityDirectionNode() override;

  /// Fills the surface lists for a take that starts at `time`, and builds the fast caster's world.
  void CaptureSurfaces(double time);
  /// A take has ended: the fast caster's world goes.
  void ReleaseSurfaces();

  /// Takes the meshes of a frame, for all wheels. The host's snapshots live until EndFrame.
  void BeginFrame(double time);
  void EndFrame();

  /// Surfaces that a wheel asks one after the other; 0 means that the plane y = 0 is the ground.
  int GetSurfaceCount() const;
  /// Whether surface `index` was there when the take started.
  bool IsKnown(int index) const;
  bool Cast(int surface, const Vector& origin, const Vector& direction, double length,
            GroundHit& hit);
  /// The same for a ray within `reach` (m) of the point that PrepareNear was given.
  bool CastNear(int surface, const Vector& origin, const Vector& direction, double length,
                GroundHit& hit);
  /// False when no ray can meet ground within `reach` of `centre`.
  bool PrepareNear(const Vector& centre, double reach);

  /// Keeps a copy of the parent's mesh, or tells the user why it can't. False then.
  bool StoreGroundMesh();
  void DropStoredMesh();
  /// After a load of the two fields below: the tree, where it is used.
  void BuildTree();
  bool HasStoredMesh() const { return !cMesh_storedGroundMesh.faces.empty(); }

  /// Fills the answer to kTellGround.
  std::intptr_t TellGround(GroundReport& report) const;

  util::CMesh cMesh_storedGroundMesh;  ///< in the surface's own space
  Matrix mBulletGroundMesh;            ///< world matrix of the surface when it was stored

 private:
  enum class Caster { kHost, kFast, kTree };

  struct Surface {
    util::CMesh mesh;
    Matrix pose;
  };
  void RefuseUnsupportedSurface(CNode& parent);
  util::CMesh ParentMesh(CNode& parent, double time, Matrix& pose, bool& isMesh);
  /// `parent` is that of the parent where it is ground.
  void BuildFastGround(double time, Surface parent);
  CSnapshot_Mesh& FrameMesh(int surface) const {
    return *m_frameMeshes[static_cast<std::size_t>(surface - m_frameGroups)];
  }

  CarSettings& m_settings;
  GroundShapePool& m_shapes;
  std::vector<Matrix> mParentMesh;      ///< world matrices of the surfaces
  std::vector<Matrix> mParentMesh_inv;  ///< their inverses, in the same order
  bool m_parentIsOwn = false;           ///< the parent is a node of the rig and no ground
  Caster m_caster = Caster::kHost;
  std::unique_ptr<FastGround> m_fast;
  NearGround m_near;
  std::unique_ptr<MeshOctreeNode> m_tree;
  int m_frameGroups = 0;  ///< 1 where the meshes below the parent are the frame's first surface
  std::vector<CSnapshot_Mesh*> m_frameMeshes;  ///< those behind it
};

}  // namespace orv::rws::addon
