#include "core/instances/StoredData.h"

#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/interface/CCamera.h"

namespace orv::rws::core {

void StoredData::Note() {
  Instance* const instance = m_instance.IsOriginalGone() ? nullptr : m_instance.Get();
  if (!instance || instance->GetRig()->Store() != 0) return;
  int size = 0;
  const auto* const data = static_cast<const unsigned char*>(instance->GetUserData(&size));
  if (data) m_data.emplace(data, data + size);
}

void StoredData::PutBack() const {
  Instance* const instance = m_instance.IsOriginalGone() ? m_instance.Get() : nullptr;
  if (instance && m_data) instance->GetHost().RebuildWithData(*instance, *m_data);
}

}  // namespace orv::rws::core
