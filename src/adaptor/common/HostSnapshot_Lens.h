// Lens of a camera node.
#pragma once

#include "adaptor/common/HostNode.h"
#include "adaptor/common/SnapshotPool.h"
#include "core/interface/CSnapshot_Lens.h"

namespace orv::rws::adaptor {

/// Lens at one time; the field of view is the vertical one. Pooled by the adaptor.
class HostSnapshot_Lens final : public PooledSnapshot<CSnapshot_Lens, HostSnapshot_Lens> {
 public:
  HostSnapshot_Lens& Bind(HostNode& node, double time) {
    m_node = &node;
    m_time = time;
    m_inUse = true;
    return *this;
  }

  void SetFieldOfView(double degrees) override {
    m_node->SetLensValue(LensValue::kFieldOfView, m_time, degrees);
  }
  double GetFieldOfView() override { return m_node->GetLensValue(LensValue::kFieldOfView, m_time); }
  void SetFocusDistance(double distance) override {
    m_node->SetLensValue(LensValue::kFocusDistance, m_time, distance);
  }
  double GetFocusDistance() override {
    return m_node->GetLensValue(LensValue::kFocusDistance, m_time);
  }
  double GetTime() override { return m_time; }
  void GetProjection(double m[16]) override {
    for (int i = 0; i < 16; ++i) m[i] = i % 5 == 0 ? 1.0 : 0.0;
  }

 private:
  HostNode* m_node = nullptr;
  double m_time = 0.0;
};

}  // namespace orv::rws::adaptor
