// Undo of the way that a take goes along the time line.
#pragma once

#include "core/host/AdaptorInterface.h"
#include "core/instances/StateUndo.h"

namespace orv::rws::core {

/// Puts the host's time back to where it was when the step was made, and forth again.
class HostTimeUndo : public StateUndo<double> {
 public:
  explicit HostTimeUndo(AdaptorInterface& adaptor)
      : StateUndo(adaptor.GetCurrentTime()), m_adaptor(adaptor) {}

 private:
  double Present() override { return m_adaptor.GetCurrentTime(); }
  void Apply(const double& time) override { m_adaptor.SetCurrentTime(time); }

  AdaptorInterface& m_adaptor;
};

}  // namespace orv::rws::core
