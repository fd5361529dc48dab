// Geometry of a mesh node.
#pragma once

#include <memory>

#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "util/Matrix.h"

namespace orv::util {
class MeshRays;
}

namespace orv::rws::adaptor {

class HostNode;

/// A mesh as it stands in the world at one time. Rays meet it where it stood at the first of them.
/// Pooled by the adaptor.
class HostSnapshot_Mesh final : public PooledSnapshot<CSnapshot_Mesh, HostSnapshot_Mesh> {
  using Base = PooledSnapshot<CSnapshot_Mesh, HostSnapshot_Mesh>;

 public:
  HostSnapshot_Mesh& Bind(HostNode& node, double time) {
    m_node = &node;
    m_time = time;
    m_placed = false;
    m_inUse = true;
    return *this;
  }

  std::intptr_t Extension(int code, void* a, void* b) override;
  void GetExtensions(std::vector<int>& out) override;
  /// Nothing to do: the scene's meshes are in triangles from reading on.
  void Triangulate() override {}
  util::CMesh GetMesh() override;
  bool Intersect(const util::Vector3<double>& origin, const util::Vector3<double>& direction,
                 double maxDistance, RayHit& hit) override;

 private:
  void Place();

  HostNode* m_node = nullptr;
  double m_time = 0.0;
  // Read at the first ray, for all rays of the snapshot.
  bool m_placed = false;
  util::Matrix<double> m_world;
  util::Matrix<double> m_inverse;
  std::shared_ptr<const util::MeshRays> m_rays;
};

}  // namespace orv::rws::adaptor
