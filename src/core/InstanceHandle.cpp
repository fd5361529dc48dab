#include "core/InstanceHandle.h"

#include "core/Instance.h"
#include "core/InstanceHost.h"

namespace orv::rws::core {

InstanceHandle::InstanceHandle(const Instance& instance)
    : m_host(instance.GetHost()),
      m_identity(instance.GetIdentity()),
      m_original(instance.GetLife()) {}

Instance* InstanceHandle::Get() const {
  return m_host.FindByIdentity(m_identity);
}

}  // namespace orv::rws::core
