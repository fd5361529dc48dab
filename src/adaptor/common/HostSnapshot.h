// Read and write handle on the pose of a node.
#pragma once

#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot.h"

namespace orv::rws::adaptor {

class HostNode;

/// A node at one time. Pooled by the adaptor.
class HostSnapshot final : public PooledSnapshot<CSnapshot, HostSnapshot> {
 public:
  HostSnapshot& Bind(HostNode& node, double time) {
    m_node = &node;
    m_time = time;
    m_inUse = true;
    return *this;
  }

  void SetMatrix(const double m[16]) override;
  void GetLocalMatrix(double m[16]) override;
  void GetMatrix(double m[16]) override;
  void SetKey(const double m[16]) override;
  double GetTime() override { return m_time; }

 private:
  HostNode* m_node = nullptr;
  double m_time = 0.0;
};

}  // namespace orv::rws::adaptor
