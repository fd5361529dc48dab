#include "core/config/ConfigProfileManager.h"

#include <string_view>
#include <utility>

#include "core/config/ConfigTree.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "core/services/Log.h"
#include "core/services/Product.h"
#include "util/NumberText.h"

namespace orv::rws::core {

namespace {

using namespace record;
using util::xml::Element;
using util::xml::Tag;

/// Version of profiles that name none: the forms before the present one did not.
constexpr char kOldVersion[] = "1.0";

/// Roots of the collective files of earlier releases, whose children are `profile`.
constexpr const char* kOldRoots[] = {"ConfigProfile", "rws_config", "CameraConfig"};

Tag HeadOf(const std::string& version, const std::string& name) {
  Tag profile(kConfigProfile);
  profile.setAttribute(kVersion, version);
  profile.setAttribute(kName, name);
  return profile;
}

/// Old groups and values by name become groups and items by label.
void ConvertOldGroup(const Element& from, Element& to) {
  for (const Element* child : from.children) {
    const bool check = child->isTag("check");
    if (child->isTag(kGroup)) {
      Tag group(kGroup);
      group.setAttribute(kId, "-1");
      group.setAttribute(kLabel, child->attribute(kName));
      ConvertOldGroup(*child, group);
      to.emplaceChild(std::move(group));
    } else if (check || child->isTag("spinner")) {
      Tag item(kItem);
      item.setAttribute(kLabel, child->attribute(kName));
      const std::string text = child->text();
      item.setText(!check ? text : text == "true" ? "1" : text == "false" ? "0" : text);
      to.emplaceChild(std::move(item));
    }
  }
}

Tag ConvertOld(const Element& old, const std::string& name) {
  Tag profile = HeadOf(kOldVersion, name);
  ConvertOldGroup(old, profile);
  return profile;
}

Tag WithHead(const Element& source, const std::string& version, const std::string& name) {
  Tag profile = HeadOf(source.hasAttribute(kVersion) ? source.attribute(kVersion) : version, name);
  for (const Element* child : source.children) profile.addChild(*child);
  return profile;
}

}  // namespace

ConfigProfileManager::ConfigProfileManager(const std::string& factoryFolder,
                                           const std::string& userFolder)
    : XMLFileManager(&ConfigProfileManager::Parse, factoryFolder, userFolder) {}

bool ConfigProfileManager::Parse(const Element& root, const std::string& fallbackName,
                                 std::vector<Tag>& profiles) {
  for (const char* oldRoot : kOldRoots) {
    if (!root.isTag(oldRoot)) continue;
    for (const Element* child : root.children) {
      const std::string name = child->attribute(kName);
      if (child->isTag(kProfile) && !name.empty()) profiles.push_back(ConvertOld(*child, name));
    }
    return true;
  }
  const std::string version = root.hasAttribute(kVersion) ? root.attribute(kVersion) : kOldVersion;
  if (root.isTag("configprofiles")) {
    for (const Element* child : root.children) {
      const std::string name = child->attribute(kName);
      if (child->isTag(kConfigProfile) && !name.empty())
        profiles.push_back(WithHead(*child, version, name));
    }
    return true;
  }
  if (!root.isTag(kConfigProfile)) return false;
  const std::string name = root.attribute(kName);
  profiles.push_back(WithHead(root, version, name.empty() ? fallbackName : name));
  return true;
}

std::string ConfigProfileManager::Apply(const std::string& name, Instance& instance) {
  const Tag* found = Find(name);
  if (!found) return "there is no profile \"" + name + "\"";
  const Tag profile = *found;  // a rig's callback may lead to a change of the list
  const std::string warning = GetVersionWarning(name);
  if (!warning.empty()) LogEntry(LogLevel::kInfo, name + ": " + warning);
  const std::string problem = instance.GetConfig().Read(profile);
  if (!problem.empty()) LogEntry(LogLevel::kWarning, "Profile " + name + ": " + problem);
  instance.SetCurrentProfile(name);
  instance.RefreshConfig();
  return {};
}

std::string ConfigProfileManager::GetVersionWarning(const std::string& name) const {
  const Tag* profile = Find(name);
  if (!profile) return {};
  double version = 0.0;
  double present = 0.0;
  util::parseNumber(profile->attribute(kVersion), version);
  util::parseNumber(ConfigTree::kVersion, present);
  if (version >= present) return {};
  return std::string("This profile has been saved in an older version of ") + kProductName +
         ". Some old settings might not work well in the current version. Use it with caution.";
}

ProfileResult ConfigProfileManager::Save(const std::string& name, const ConfigTree& config,
                                         bool overwrite) {
  Tag profile = HeadOf(ConfigTree::kVersion, name);
  config.Write(profile);
  return Store(name, std::move(profile), overwrite);
}

ProfileResult ConfigProfileManager::SaveStartProfile(const ConfigTree& config) {
  ProfileResult result = Save(kStartProfile, config, true);
  if (result.Done()) result.message = "Start Profile saved";
  return result;
}

ProfileResult ConfigProfileManager::Import(const std::string& path, const ConfigTree& config,
                                           bool overwrite) {
  return ImportFile(path, overwrite, [&](Tag& profile) { config.Upgrade(profile); });
}

void ConfigProfileManager::RecordFactorySettings(const ConfigTree& config) {
  Tag profile = HeadOf(ConfigTree::kVersion, kFactorySettings);
  config.Write(profile);
  PutInMemory(kFactorySettings, std::move(profile));
}

void ConfigProfileManager::EnsureStartProfile() {
  const Tag* factory = Find(kFactorySettings);
  if (factory && (!Find(kStartProfile) || IsInMemory(kStartProfile)))
    PutInMemory(kStartProfile, *factory);
}

}  // namespace orv::rws::core
