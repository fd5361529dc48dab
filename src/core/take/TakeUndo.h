// Undo of what a take does to an instance.
#pragma once

#include <utility>
#include <vector>

#include "core/instances/Instance.h"
#include "core/instances/InstanceHandle.h"
#include "core/instances/StateUndo.h"
#include "core/instances/StoredData.h"

namespace orv::rws::core {

/// What a take changes of an instance beside the rig's memory and keys.
struct TakeState {
  std::vector<util::AVar_Linear<double>> tracks;     ///< of a take; a resimulation leaves them
  std::vector<double> outputs;                       ///< what the rig's outputs read
  std::vector<std::pair<int, double>> liveSpinners;  ///< element id and number
  std::vector<Instance::LiveSpinnerSpan> spans;
};

/// Saved before anything changes. A rig that was built anew since has lost its own steps: it is
/// given what it stored before the run.
class TakeUndo : public StateUndo<TakeState> {
 public:
  enum class Of {
    kTake,          ///< tracks and the rig's memory change
    kResimulation,  ///< the rig's memory does
    kTracks,        ///< tracks do, which come from elsewhere than from a take
  };
  TakeUndo(Instance& instance, Of what);
  void Undo(bool keep) override;

 private:
  static TakeState StateOf(Instance& instance, bool records);
  TakeState Present() override;
  void Apply(const TakeState& state) override;

  InstanceHandle m_instance;
  const bool m_records;
  StoredData m_before;
};

}  // namespace orv::rws::core
