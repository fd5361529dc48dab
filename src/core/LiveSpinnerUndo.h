// Undo of what a take does to live spinners.
#pragma once

#include <utility>
#include <vector>

#include "core/Instance.h"
#include "core/interface/CUndo.h"

namespace orv::rws::core {

/// Saves the values of an instance's live spinners, and what it keeps of their latest take, at
/// construction. The instance must outlive the step's use.
class LiveSpinnerUndo : public CUndo {
 public:
  explicit LiveSpinnerUndo(Instance& instance);
  void Undo(bool keep) override;
  void Redo() override;

 private:
  struct State {
    std::vector<std::pair<int, double>> values;  ///< element id and number
    std::vector<Instance::LiveSpinnerSpan> spans;
  };
  State Present() const;
  void Apply(const State& state);
  void Exchange();

  Instance& m_instance;
  State m_saved;
  bool m_swapped = false;
};

}  // namespace orv::rws::core
