// Undo of a user's mappings of inputs.
#pragma once

#include <memory>
#include <vector>

#include "core/config/InputResponse.h"
#include "core/instances/ControlHolder.h"
#include "core/instances/InstanceHandle.h"
#include "core/instances/StateUndo.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

/// What feeds an input and how it answers. The control is kept as itself, and as what names it in
/// case its device has gone and come back.
struct InputMapping {
  InputMapping(const Instance& instance, int index);
  void WriteTo(unidevice::Property& property) const;

  int input;  ///< index among the instance's inputs
  InputResponse response;
  std::shared_ptr<ControlHolder> control;
  util::xml::Tag savedControl;
};

/// Made ahead of a change of these inputs.
class InputUndo : public StateUndo<std::vector<InputMapping>> {
 public:
  InputUndo(Instance& instance, std::vector<int> inputs);

 private:
  std::vector<InputMapping> Present() override;
  void Apply(const std::vector<InputMapping>& mappings) override;

  InstanceHandle m_instance;
  const std::vector<int> m_inputs;
};

}  // namespace orv::rws::core
