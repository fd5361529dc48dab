#include "core/instances/InstanceHandle.h"

#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"

namespace orv::rws::core {

InstanceHandle::InstanceHandle(const Instance& instance)
    : m_host(instance.GetHost()),
      m_identity(instance.GetIdentity()),
      m_original(instance.GetLife()) {}

Instance* InstanceHandle::Get() const {
  return m_host.FindByIdentity(m_identity);
}

}  // namespace orv::rws::core
