// Undo of a user's edits of parameters.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/interface/CUndo.h"

namespace orv::rws::core {

class Instance;

/// Saves all parameter values of an instance at construction. Undo and redo write the values that
/// differ and tell the rig by the label, as an edit does. The instance must outlive the step's use.
class ParameterUndo : public CUndo {
 public:
  explicit ParameterUndo(Instance& instance);
  void Undo(bool keep) override;
  void Redo() override;

 private:
  using Values = std::vector<std::pair<int, std::string>>;
  Values Present() const;
  void Apply(const Values& values);
  void Exchange();

  Instance& m_instance;
  Values m_saved;
  std::string m_savedProfile;
  bool m_swapped = false;
};

}  // namespace orv::rws::core
