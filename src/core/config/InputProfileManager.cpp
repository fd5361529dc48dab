#include "core/config/InputProfileManager.h"

#include <string_view>
#include <utility>

#include "core/instances/RecordKeys.h"
#include "core/services/Log.h"
#include "unidevice/Property.h"
#include "unidevice/PropertyHandler.h"

namespace orv::rws::core {

namespace {

using namespace record;
using util::xml::Element;
using util::xml::Tag;

Tag ProfileOf(const Element& source, const std::string& name) {
  Tag profile(kProfile);
  profile.setAttribute(kName, name);
  for (const Element* child : source.children) profile.addChild(*child);
  return profile;
}

Tag Write(const std::string& name, const unidevice::PropertyHandler& properties) {
  Tag profile(kProfile);
  profile.setAttribute(kName, name);
  for (const auto& entry : properties.entries) {
    Tag tag(kProperty);
    entry.second->save(tag);
    profile.emplaceChild(std::move(tag));
  }
  return profile;
}

}  // namespace

InputProfileManager::InputProfileManager(const std::string& factoryFolder,
                                         const std::string& userFolder)
    : XMLFileManager(&InputProfileManager::Parse, factoryFolder, userFolder) {}

bool InputProfileManager::Parse(const Element& root, const std::string& fallbackName,
                                std::vector<Tag>& profiles) {
  const bool single = root.isTag(kProfile) || root.isTag(kInputProfile);
  if (!single && !root.isTag("unidevice")) return false;
  const std::size_t before = profiles.size();
  for (const Element* child : root.children) {
    const std::string name = child->attribute(kName);
    if (child->isTag(kProfile) && !name.empty()) profiles.push_back(ProfileOf(*child, name));
  }
  if (!single || profiles.size() > before) return true;
  const std::string name = root.attribute(kName);
  profiles.push_back(ProfileOf(root, name.empty() ? fallbackName : name));
  return true;
}

std::string InputProfileManager::ApplyTo(const Element& profile,
                                         unidevice::PropertyHandler& properties) {
  std::string problem;
  for (const Element* child : profile.children) {
    if (!child->isTag(kProperty)) continue;
    unidevice::Property* property = properties.find(child->attribute(kName));
    if (property && !property->load(*child))
      problem += (problem.empty() ? "no number for \"" : ", \"") + property->name + "\"";
  }
  return problem;
}

bool InputProfileManager::IsHeldBy(const std::string& name,
                                   const unidevice::PropertyHandler& properties) const {
  const Tag* const profile = Find(name);
  if (!profile) return false;
  int held = 0;
  for (const Element* child : profile->children) {
    const unidevice::Property* const property =
        child->isTag(kProperty) ? properties.find(child->attribute(kName)) : nullptr;
    if (property && !property->holds(*child)) return false;
    if (property) ++held;
  }
  return held > 0;
}

std::string InputProfileManager::Apply(const std::string& name,
                                       unidevice::PropertyHandler& properties) {
  const Tag* profile = Find(name);
  if (!profile) return "there is no input profile \"" + name + "\"";
  const std::string problem = ApplyTo(*profile, properties);
  if (!problem.empty()) LogEntry(LogLevel::kWarning, "Input profile " + name + ": " + problem);
  return {};
}

ProfileResult InputProfileManager::Save(const std::string& name,
                                        unidevice::PropertyHandler& properties, bool overwrite) {
  return Store(name, Write(name, properties), overwrite);
}

ProfileResult InputProfileManager::SaveStartProfile(unidevice::PropertyHandler& properties) {
  ProfileResult result = Save(kStartProfile, properties, true);
  if (result.Done()) result.message = "Start Profile saved";
  return result;
}

ProfileResult InputProfileManager::Import(const std::string& path, bool overwrite) {
  return ImportFile(path, overwrite, [](Tag&) {});
}

void InputProfileManager::RecordFactorySettings(unidevice::PropertyHandler& properties) {
  m_factorySettings = Write(kFactorySettings, properties);
}

void InputProfileManager::EnsureStartProfile(unidevice::PropertyHandler& properties) {
  if (!Find(kStartProfile)) PutInMemory(kStartProfile, Write(kStartProfile, properties));
}

}  // namespace orv::rws::core
