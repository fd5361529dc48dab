// Undo of a user's edits of parameters.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/InstanceHandle.h"
#include "core/StateUndo.h"

namespace orv::rws::core {

/// All parameters of an instance.
struct ParameterState {
  std::vector<std::pair<int, std::string>> values;  ///< element id and text
  std::string profile;                              ///< name of the one that was applied last
};

/// Saved before an edit. Undo and redo write the values that differ and tell the rig by the label,
/// as an edit does.
class ParameterUndo : public StateUndo<ParameterState> {
 public:
  explicit ParameterUndo(Instance& instance);

 private:
  ParameterState Present() override;
  void Apply(const ParameterState& state) override;

  InstanceHandle m_instance;
};

}  // namespace orv::rws::core
