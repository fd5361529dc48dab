// A tool made of a compiled rig.
#pragma once

#include "core/tools/Tool.h"

namespace orv::rws {
class CCameraPlugin;
}

namespace orv::rws::core {

class InstanceHost;

/// Wraps a rig factory, which stays the program's.
class Plugin : public Tool {
 public:
  Plugin(InstanceHost& host, CCameraPlugin& factory);

  bool IsPlugin() override { return true; }
  std::string GetLicenceName() override;
  std::string GetDisplayId() override;
  void GetCategories(std::vector<std::string>& out) override;
  std::string GetDataPath() override;
  void ShowProductPopup() override;
  std::string GetDocumentationPage() override;
  Instance* CreateInstance(const std::string& name) override;
  Instance* MakeInstance(const std::string& name) override;
  void WriteSaveData(util::xml::Tag& tag) override;
  std::string GetDisplayName() override;
  std::string GetDescription() override;
  std::string GetCreatedBy() override;
  int GetSimulationVersion() override;
  bool NeedsReplay() override;

 private:
  InstanceHost& m_host;
  CCameraPlugin& m_factory;
};

}  // namespace orv::rws::core
