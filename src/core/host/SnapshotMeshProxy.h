// What a rig holds in place of the adaptor's own mesh snapshot.
#pragma once

#include "core/host/CoreNode.h"
#include "core/interface/CSnapshot_Mesh.h"

namespace orv::rws::core {

/// Forwards each call to the adaptor's snapshot, which goes back to its node with this proxy. The
/// instance keeps free ones for the next frame.
class Snapshot_Mesh_Proxy : public CSnapshot_Mesh {
 public:
  Snapshot_Mesh_Proxy(CoreNode* node, CSnapshot_Mesh* target) { Bind(node, target); }
  ~Snapshot_Mesh_Proxy() override { Free(); }

  void Bind(CoreNode* node, CSnapshot_Mesh* target) {
    m_node = node;
    m_target = target;
  }
  void Free() {
    if (m_target) m_node->ReleaseSnapshot(m_target);
    m_target = nullptr;
  }

  std::intptr_t Extension(int code, void* a, void* b) override {
    return m_target->Extension(code, a, b);
  }
  void GetExtensions(std::vector<int>& out) override { m_target->GetExtensions(out); }
  void Triangulate() override { m_target->Triangulate(); }
  util::CMesh GetMesh() override { return m_target->GetMesh(); }
  bool Intersect(const util::Vector3<double>& origin, const util::Vector3<double>& direction,
                 double maxDistance, RayHit& hit) override {
    return m_target->Intersect(origin, direction, maxDistance, hit);
  }

 private:
  CoreNode* m_node;
  CSnapshot_Mesh* m_target;
};

}  // namespace orv::rws::core
