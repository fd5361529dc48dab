#include "core/InstanceHandle.h"

#include "core/CoreImplementation.h"
#include "core/Instance.h"

namespace orv::rws::core {

InstanceHandle::InstanceHandle(const Instance& instance)
    : m_manager(instance.GetCore()),
      m_identity(instance.GetIdentity()),
      m_original(instance.GetLife()) {}

Instance* InstanceHandle::Get() const {
  return m_manager.FindByIdentity(m_identity);
}

}  // namespace orv::rws::core
