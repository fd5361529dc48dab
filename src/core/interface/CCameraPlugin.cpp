#include "core/interface/CCameraPlugin.h"

namespace orv::rws {

CCameraPlugin::~CCameraPlugin() = default;

std::string CCameraPlugin::GetDataFolder() {
  return GetId();
}

std::string CCameraPlugin::GetCreatedBy() {
  return "Orvel Motion";
}

std::string CCameraPlugin::GetLicenceFeature() {
  return {};
}

std::vector<std::string>& CCameraPlugin::GetDependencies(std::vector<std::string>& out) {
  return out;
}

bool CCameraPlugin::ReleaseList(std::vector<std::string>& list) {
  std::vector<std::string>().swap(list);
  return true;
}

int CCameraPlugin::GetInterfaceVersion() {
  return kInterfaceVersion;
}

void CCameraPlugin::Destroy() {
  delete this;
}

}  // namespace orv::rws
