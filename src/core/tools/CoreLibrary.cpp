#include "core/tools/CoreLibrary.h"

#include <cstdio>
#include <utility>

#include "core/interface/CCameraPlugin.h"
#include "core/services/Log.h"
#include "core/services/Resources.h"
#include "core/tools/Plugin.h"

namespace orv::rws::core {

CoreLibrary::CoreLibrary(InstanceHost& host, std::vector<CCameraPlugin*> rigs)
    : m_host(host), m_rigs(std::move(rigs)) {}

bool CoreLibrary::IsUsable(CCameraPlugin* rig) const {
  if (!rig) {
    LogEntry(LogLevel::kError, "A rig kind without a factory was left out");
    return false;
  }
  if (const int version = rig->GetInterfaceVersion(); version != kInterfaceVersion) {
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "0x%X in place of 0x%X", static_cast<unsigned>(version),
                  static_cast<unsigned>(kInterfaceVersion));
    LogEntry(LogLevel::kError,
             "The rig kind " + rig->GetId() + " was left out: its interface version is " + numbers);
    return false;
  }
  if (rig->GetId().empty()) {
    LogEntry(LogLevel::kError,
             "The rig kind \"" + rig->GetName() + "\" was left out: it has no id");
    return false;
  }
  for (const auto& tool : m_tools) {
    if (tool->GetDisplayId() != rig->GetId()) continue;
    LogEntry(LogLevel::kError, "The rig kind " + rig->GetId() + " was left out: the id is taken");
    return false;
  }
  return true;
}

void CoreLibrary::Load() {
  InitResources();
  for (CCameraPlugin* rig : m_rigs) {
    if (!IsUsable(rig)) continue;
    m_tools.push_back(std::make_unique<Plugin>(m_host, *rig));
    m_tools.back()->LoadProfiles();
  }
}

}  // namespace orv::rws::core
