// Undo of a user's edits of parameters.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/instances/InstanceHandle.h"
#include "core/instances/StateUndo.h"

namespace orv::rws::core {

class ConfigElement;

/// Value of one parameter: a number, or the text of a text box or of a combo box's item.
struct ParameterValue {
  explicit ParameterValue(const ConfigElement& element);
  bool Fits(const ConfigElement& element) const;
  /// Writes the value, unless it stands there, and tells the rig by the label, as an edit does.
  void WriteTo(ConfigElement& element) const;
  /// Writes the value alone; false when it stands there.
  bool Put(ConfigElement& element) const;

  int element;
  double number = 0.0;
  std::string text;
};

/// Parameters of an instance.
struct ParameterState {
  /// All of them.
  explicit ParameterState(const Instance& instance);
  ParameterState() = default;

  /// Whether the element has the value that it has here.
  bool Holds(const ConfigElement& element) const;
  /// Drops what is not different now.
  void KeepChanged(const Instance& instance);
  /// Writes the values back. Others, which a callback of the rig may set as well, stay as they are.
  void WriteTo(Instance& instance) const;

  std::vector<ParameterValue> values;
  std::string profile;  ///< name of the one that was applied last
};

/// Made ahead of an edit with all parameters; who made the state keeps only those that the edit has
/// changed when it is done.
class ParameterUndo : public StateUndo<std::shared_ptr<ParameterState>> {
 public:
  ParameterUndo(Instance& instance, std::shared_ptr<ParameterState> before);

 private:
  std::shared_ptr<ParameterState> Present() override;
  void Apply(const std::shared_ptr<ParameterState>& state) override;

  InstanceHandle m_instance;
};

}  // namespace orv::rws::core
