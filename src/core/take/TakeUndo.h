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
/// told to forget what they would have taken back.
class TakeUndo : public StateUndo<TakeState> {
 public:
  /// `time` is the take's start (s); `records` says that tracks will change.
  TakeUndo(Instance& instance, double time, bool records);
  void Undo(bool keep) override;

 private:
  static TakeState StateOf(Instance& instance, bool records);
  TakeState Present() override;
  void Apply(const TakeState& state) override;

  InstanceHandle m_instance;
  const double m_time;
  const bool m_records;
  StoredData m_before;  ///< from the first time that the run was taken back
};

}  // namespace orv::rws::core
