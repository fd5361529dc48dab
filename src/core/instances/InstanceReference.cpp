#include "core/instances/InstanceReference.h"

#include <utility>

#include "core/instances/Instance.h"

namespace orv::rws::core {

InstanceReference::InstanceReference(int id, std::string label)
    : m_groupId(id), m_label(std::move(label)) {}

InstanceReference::InstanceReference(std::unique_ptr<Instance> instance)
    : m_instance(std::move(instance)) {}

InstanceReference::~InstanceReference() = default;

int InstanceReference::GetId() const {
  return m_instance ? m_instance->GetIdentity() : m_groupId;
}

const std::string& InstanceReference::GetLabel() const {
  return m_instance ? m_instance->GetInstanceName() : m_label;
}

bool InstanceReference::IsUnder(const InstanceReference& row) const {
  return this == &row || (parent && parent->IsUnder(row));
}

}  // namespace orv::rws::core
