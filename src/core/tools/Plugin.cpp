#include "core/tools/Plugin.h"

#include <memory>
#include <sstream>

#include "core/MessageQueue.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CCamera.h"
#include "core/interface/CCameraPlugin.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

/// Version of the records of instances.
constexpr char kRecordVersion[] = "2.5";

}  // namespace

Plugin::Plugin(InstanceHost& host, CCameraPlugin& factory)
    : Tool(factory.GetDataFolder()), m_host(host), m_factory(factory) {
  const auto mayWrite = [this] {
    const bool may = m_host.CheckLicence(GetLicenceName());
    if (!may)
      LogEntry(LogLevel::kWarning,
               Translate("Profiles of %1 can't be written: the licence does not cover \"%2\"",
                         {GetDisplayId(), GetLicenceName()}));
    return may;
  };
  GetConfigProfiles().SetWriteGate(mayWrite);
  GetInputProfiles().SetWriteGate(mayWrite);
  GetConfigProfiles().SetChangeHandler([this] {
    m_host.GetMessages().Tell(ProfileListChanged{GetDisplayId(), false});
  });
  GetInputProfiles().SetChangeHandler([this] {
    m_host.GetMessages().Tell(ProfileListChanged{GetDisplayId(), true});
  });
}

std::string Plugin::GetLicenceName() {
  return m_factory.GetLicenceFeature();
}

std::string Plugin::GetDisplayId() {
  return m_factory.GetId();
}

void Plugin::GetCategories(std::vector<std::string>& out) {
  // A kind of several groups names them with semicolons between.
  std::istringstream groups(m_factory.GetCategory());
  for (std::string group; std::getline(groups, group, ';');) out.push_back(group);
}

std::string Plugin::GetDataPath() {
  return DataRoot::GetDataFolder() + "/" + m_dataFolder;
}

void Plugin::ShowProductPopup() {
  LogEntry(LogLevel::kInfo, "There is no window for the product page of " + GetDisplayId());
}

std::string Plugin::GetDocumentationPage() {
  return GetDisplayId() + ".html";
}

std::string Plugin::GetDisplayName() {
  return m_factory.GetName();
}

std::string Plugin::GetDescription() {
  return m_factory.GetDescription();
}

std::string Plugin::GetCreatedBy() {
  return m_factory.GetCreatedBy();
}

int Plugin::GetSimulationVersion() {
  return static_cast<int>(m_factory.Extension(kTellSimulation, nullptr, nullptr));
}

bool Plugin::NeedsReplay() {
  return m_factory.Extension(kTellReplay, nullptr, nullptr) > 0;
}

Instance* Plugin::MakeInstance(const std::string& name) {
  CCamera* rig = m_factory.CreateObject({m_host.NextObjectId(), GetDisplayId()});
  return rig ? new Instance(m_host, this, rig, name) : nullptr;
}

Instance* Plugin::CreateInstance(const std::string& name) {
  // An instance that is dropped here ends its rig.
  std::unique_ptr<Instance> instance(MakeInstance(name));
  if (!instance || instance->GetRig()->Define() != 0) return nullptr;
  if (instance->GetRig()->Create() != 0) {
    m_host.DiscardNodes(*instance);
    return nullptr;
  }

  RecordDefaults(*instance);
  GetConfigProfiles().Apply(kFactorySettings, *instance);
  GetConfigProfiles().Apply(kStartProfile, *instance);
  GetInputProfiles().Apply(kStartProfile, instance->GetProperties());

  return m_host.AddRow(std::move(instance))->GetInstance();
}

void Plugin::WriteSaveData(util::xml::Tag& tag) {
  tag.setName("RWT_Plugin");
  tag.setAttribute("version", kRecordVersion);
  tag.setAttribute("type", GetDisplayId());
}

}  // namespace orv::rws::core
