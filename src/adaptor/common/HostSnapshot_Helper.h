// Display attributes of a node.
#pragma once

#include "adaptor/common/HostNode.h"
#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot_Helper.h"

namespace orv::rws::adaptor {

/// Geometry and colour of a node, both undoable in an open block. Pooled by the adaptor.
class HostSnapshot_Helper final : public PooledSnapshot<CSnapshot_Helper, HostSnapshot_Helper> {
 public:
  HostSnapshot_Helper& Bind(HostNode& node) {
    m_node = &node;
    m_inUse = true;
    return *this;
  }

  void SetMesh(const util::CMesh& mesh) override { m_node->SetMesh(mesh); }
  void SetColor(float r, float g, float b) override { m_node->SetColour({r, g, b}); }
  void SetXRay(bool) override {}
  void SetLocked(bool) override {}

 private:
  HostNode* m_node = nullptr;
};

}  // namespace orv::rws::adaptor
