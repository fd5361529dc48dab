#include "core/tools/Tool.h"

#include <algorithm>

#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"

namespace orv::rws::core {

Tool::Tool(const std::string& dataFolder)
    : MessageNode("Tool"),
      m_dataFolder(dataFolder),
      m_configProfiles(":/data/" + dataFolder, DataRoot::GetDataFolder() + "/" + dataFolder),
      m_inputProfiles(":/data/" + dataFolder, DataRoot::GetDataFolder() + "/" + dataFolder) {}

Tool::~Tool() = default;

void Tool::LoadProfiles() {
  m_configProfiles.Reload();
  m_inputProfiles.Reload();
}

void Tool::RecordDefaults(Instance& instance) {
  m_configProfiles.RecordFactorySettings(instance.GetConfig());
  m_configProfiles.EnsureStartProfile();
  m_inputProfiles.RecordFactorySettings(instance.GetProperties());
  m_inputProfiles.EnsureStartProfile(instance.GetProperties());
}

void Tool::AddInstance(Instance* instance) {
  m_instances.push_back(instance);
}

void Tool::RemoveInstance(Instance* instance) {
  m_instances.erase(std::remove(m_instances.begin(), m_instances.end(), instance),
                    m_instances.end());
}

}  // namespace orv::rws::core
