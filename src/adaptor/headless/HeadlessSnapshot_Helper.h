// Display attributes of a headless node.
#pragma once

#include "adaptor/common/SnapshotPool.h"
#include "adaptor/headless/HeadlessNode.h"
#include "core/interface/CSnapshot_Helper.h"

namespace orv::rws::adaptor::headless {

/// Geometry and colour of a node, both undoable in an open block. Pooled by the adaptor.
class HeadlessSnapshot_Helper final
    : public PooledSnapshot<CSnapshot_Helper, HeadlessSnapshot_Helper> {
 public:
  HeadlessSnapshot_Helper& Bind(HeadlessNode& node) {
    m_node = &node;
    m_inUse = true;
    return *this;
  }

  void SetMesh(const util::CMesh& mesh) override { m_node->SetMesh(mesh); }
  void SetColor(float r, float g, float b) override { m_node->SetColour({r, g, b}); }
  void SetXRay(bool) override {}
  void SetLocked(bool) override {}

 private:
  HeadlessNode* m_node = nullptr;
};

}  // namespace orv::rws::adaptor::headless
