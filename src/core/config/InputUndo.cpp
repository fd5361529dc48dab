#include "core/config/InputUndo.h"

#include <utility>

#include "core/MessageQueue.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "unidevice/DriverManager.h"
#include "unidevice/Property.h"

namespace orv::rws::core {

namespace {

std::vector<InputMapping> MappingsOf(const Instance& instance, const std::vector<int>& inputs) {
  std::vector<InputMapping> mappings;
  for (const int input : inputs) mappings.emplace_back(instance, input);
  return mappings;
}

}  // namespace

InputMapping::InputMapping(const Instance& instance, int index) : input(index), savedControl("") {
  const unidevice::Property& property = *instance.GetProperties().property(index);
  response = InputResponse::Of(property);
  control = std::make_shared<ControlHolder>(property.control);
  savedControl = property.savedControl;
}

void InputMapping::WriteTo(unidevice::Property& property) const {
  response.WriteTo(property);
  property.savedControl = savedControl;
  property.bind(control->Get());
  property.rebind();
}

InputUndo::InputUndo(Instance& instance, std::vector<int> inputs)
    : StateUndo(MappingsOf(instance, inputs)), m_instance(instance), m_inputs(std::move(inputs)) {}

std::vector<InputMapping> InputUndo::Present() {
  const Instance* const instance = m_instance.Get();
  return instance ? MappingsOf(*instance, m_inputs) : Saved();
}

void InputUndo::Apply(const std::vector<InputMapping>& mappings) {
  Instance* const instance = m_instance.Get();
  if (!instance) return;
  for (const InputMapping& mapping : mappings)
    mapping.WriteTo(*instance->GetProperties().property(mapping.input));
  const int input = m_inputs.size() == 1 ? m_inputs[0] : InputsChanged::kAll;
  instance->GetHost().GetMessages().Tell(InputsChanged{instance->GetIdentity(), input});
}

}  // namespace orv::rws::core
