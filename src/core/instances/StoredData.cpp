#include "core/instances/StoredData.h"

#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/interface/CCamera.h"

namespace orv::rws::core {

void StoredData::Note() {
  Instance* const instance = m_instance.Get();
  if (!instance || instance->GetRig()->Store() != 0) return;
  int size = 0;
  const auto* const data = static_cast<const unsigned char*>(instance->GetUserData(&size));
  if (!data) return;
  m_data.emplace(data, data + size);
  m_gauges.clear();
  for (const ConfigElement* element : instance->GetConfig().GetElements())
    if (element->HasValue() && element->IsReadOnly())
      m_gauges.emplace_back(element->GetId(), element->GetNumber());
}

void StoredData::PutBack() const {
  Instance* instance = m_instance.IsOriginalGone() ? m_instance.Get() : nullptr;
  if (!instance || !m_data) return;
  instance->GetHost().RebuildWithData(*instance, *m_data);
  instance = m_instance.Get();
  if (!instance) return;
  for (const auto& [id, number] : m_gauges)
    if (ConfigElement* const element = instance->GetConfig().Find(id)) element->SetNumber(number);
}

}  // namespace orv::rws::core
