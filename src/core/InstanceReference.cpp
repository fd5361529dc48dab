#include "core/InstanceReference.h"

#include <utility>

#include "core/Instance.h"

namespace orv::rws::core {

InstanceReference::InstanceReference(std::string label) : m_label(std::move(label)) {}

InstanceReference::InstanceReference(std::unique_ptr<Instance> instance)
    : m_instance(std::move(instance)) {}

InstanceReference::~InstanceReference() = default;

const std::string& InstanceReference::GetLabel() const {
  return m_instance ? m_instance->GetInstanceName() : m_label;
}

}  // namespace orv::rws::core
