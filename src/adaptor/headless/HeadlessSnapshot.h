// Read and write handle on a headless node's pose.
#pragma once

#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot.h"

namespace orv::rws::adaptor::headless {

class HeadlessNode;

/// A node at one time. Pooled by the adaptor.
class HeadlessSnapshot final : public PooledSnapshot<CSnapshot, HeadlessSnapshot> {
 public:
  HeadlessSnapshot& Bind(HeadlessNode& node, double time) {
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
  HeadlessNode* m_node = nullptr;
  double m_time = 0.0;
};

}  // namespace orv::rws::adaptor::headless
