#include "core/config/XMLFileManager.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "core/instances/NameRules.h"
#include "core/services/Log.h"
#include "core/services/Resources.h"
#include "core/services/Translation.h"

namespace orv::rws::core {

namespace {

using util::xml::Element;
using util::xml::Tag;
using Answer = ProfileResult::Answer;

constexpr const char* kReadOnly =
    Translatable("The specified profile is considered read-only and cannot be overwritten.");
constexpr const char* kExample = Translatable("Cannot rename example profiles.");
constexpr const char* kExists = Translatable("- name already exists.");
constexpr const char* kOverwrite = Translatable("This will overwrite the profile");
constexpr const char* kNotSaved = Translatable("The profile could not be saved");
constexpr const char* kNotRenamed =
    Translatable("The specified profile could not be renamed, please try with another name.");
constexpr const char* kNotOverwritten =
    Translatable("The profile already exists and cannot be overwritten.");
constexpr const char* kNotImported = Translatable("The profile could not be imported.");
constexpr const char* kDelete = Translatable("Do you really want to delete the profile:");

ProfileResult Refused(std::string message) {
  return {Answer::kRefused, std::move(message), {}};
}

ProfileResult Ask(std::string message) {
  return {Answer::kAsk, std::move(message), {}};
}

bool RemoveFile(const std::string& path) {
  std::error_code error;
  std::filesystem::remove(path, error);
  if (error) LogEntry(LogLevel::kWarning, path + ": can't be removed: " + error.message());
  return !error;
}

std::string StemOf(const std::string& path) {
  return std::filesystem::path(path).stem().string();
}

}  // namespace

XMLFileManager::XMLFileManager(Parser parser, std::string factoryFolder, std::string userFolder)
    : m_parser(parser),
      m_factoryFolder(std::move(factoryFolder)),
      m_userFolder(std::move(userFolder)) {}

XMLFileManager::~XMLFileManager() = default;

// --- reading ---

std::string XMLFileManager::ParseFile(const std::string& path, std::vector<Tag>& profiles) const {
  std::string bytes, problem;
  if (!ReadResource(path, bytes, &problem)) return problem;
  Element root;
  if (root.loadText(bytes, &problem) != 0) return path + ": " + problem;
  if (!m_parser(root, StemOf(path), profiles))
    return path + ": a document <" + root.name + "> holds no profiles of this kind";
  return {};
}

bool XMLFileManager::LoadFile(const std::string& path, Origin origin) {
  std::vector<Tag> profiles;
  const std::string problem = ParseFile(path, profiles);
  // No message to the user: a folder may hold anything.
  if (!problem.empty()) LogEntry(LogLevel::kInfo, "Profile left out: " + problem);
  for (Tag& document : profiles) {
    const std::string name = document.attribute("name");
    if (name == kFactorySettings) {
      LogEntry(LogLevel::kInfo, path + ": a profile of this name is not read from files: " + name);
      continue;
    }
    Profile& profile = m_profiles[name];
    profile.document = std::move(document);
    profile.origin = origin;
    profile.path = origin == Origin::kUser ? path : std::string();
    profile.unsaved = false;
  }
  return problem.empty();
}

bool XMLFileManager::Load(const std::string& path) {
  const bool factory = IsResource(path);
  const std::string collective = path + "/" + GetRootName() + ".xml";
  bool any = false;
  std::vector<std::string> old = ListResources(path, "xml");
  if (std::find(old.begin(), old.end(), collective) != old.end())
    any = LoadFile(collective, factory ? Origin::kFactory : Origin::kCollectiveFile);
  for (const std::string& file :
       ListResources(path + "/" + GetRootName() + "s", GetFileExtension()))
    any = LoadFile(file, factory ? Origin::kFactory : Origin::kUser) || any;
  return any;
}

void XMLFileManager::Reload() {
  for (auto it = m_profiles.begin(); it != m_profiles.end();)
    it = it->second.origin == Origin::kMemory ? std::next(it) : m_profiles.erase(it);
  Load(m_factoryFolder);
  Load(m_userFolder);
  TellChange();
}

std::vector<std::string> XMLFileManager::GetNames() const {
  std::vector<std::string> names;
  for (const auto& entry : m_profiles) names.push_back(entry.first);
  return names;
}

const Tag* XMLFileManager::Find(const std::string& name) const {
  const auto found = m_profiles.find(name);
  return found == m_profiles.end() ? nullptr : &found->second.document;
}

bool XMLFileManager::IsReadOnly(const std::string& name) const {
  if (name == kFactorySettings) return true;
  const auto found = m_profiles.find(name);
  return found != m_profiles.end() && found->second.origin == Origin::kFactory &&
         name != kStartProfile;
}

bool XMLFileManager::IsFixed(const std::string& name) const {
  const auto found = m_profiles.find(name);
  return found == m_profiles.end() || IsFixed(name, found->second);
}

bool XMLFileManager::IsFixed(const std::string& name, const Profile& profile) const {
  return name == kFactorySettings || profile.origin == Origin::kFactory ||
         profile.origin == Origin::kCollectiveFile;
}

// --- writing ---

std::string XMLFileManager::FreePath(const std::string& folder, const std::string& name) const {
  std::error_code ignored;
  std::string path = folder + "/" + name + "." + GetFileExtension();
  for (int i = 2; std::filesystem::exists(path, ignored); ++i)
    path = folder + "/" + name + "_" + std::to_string(i) + "." + GetFileExtension();
  return path;
}

bool XMLFileManager::Save(const std::string& path) {
  const std::string folder = path + "/" + GetRootName() + "s";
  bool all = true;
  for (auto& [name, profile] : m_profiles) {
    if (!profile.unsaved) continue;
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    // A file of that name may be another profile's, or damaged: it stays.
    const std::string file = profile.path.empty() ? FreePath(folder, name) : profile.path;
    std::string problem;
    if (profile.document.save(file, &problem)) {
      profile.path = file;
      profile.unsaved = false;
    } else {
      LogEntry(LogLevel::kWarning, "Profile not saved: " + problem);
      all = false;
    }
  }
  return all;
}

void XMLFileManager::PutInMemory(const std::string& name, Tag document) {
  const bool isNew = m_profiles.count(name) == 0;
  Profile& profile = m_profiles[name];
  profile = Profile{std::move(document), Origin::kMemory, {}, false};
  profile.document.setAttribute("name", name);
  if (isNew) TellChange();
}

bool XMLFileManager::IsInMemory(const std::string& name) const {
  const auto found = m_profiles.find(name);
  return found != m_profiles.end() && found->second.origin == Origin::kMemory;
}

void XMLFileManager::Put(const std::string& name, Tag document) {
  Profile& profile = m_profiles[name];
  profile.document = std::move(document);
  profile.document.setAttribute("name", name);
  profile.origin = Origin::kUser;
  profile.unsaved = true;
}

ProfileResult XMLFileManager::CheckTarget(const std::string& name, bool overwrite) const {
  std::string problem;
  if (name.find_first_not_of(' ') == std::string::npos) return Refused(kSelectProfile);
  if (!IsNameAllowed(name, problem)) return Refused(problem);
  if (IsReadOnly(name)) return Refused(kReadOnly);
  const auto found = m_profiles.find(name);
  const bool users = found != m_profiles.end() && (found->second.origin == Origin::kUser ||
                                                   found->second.origin == Origin::kCollectiveFile);
  if (users && !overwrite) return Ask(kOverwrite);
  return {};
}

ProfileResult XMLFileManager::Store(const std::string& name, Tag document, bool overwrite) {
  const ProfileResult check = CheckTarget(name, overwrite);
  if (check.answer == Answer::kRefused) return check;
  if (!MayWrite()) return Refused(kNotSaved);
  if (!check.Done()) return check;
  Profiles before = m_profiles;
  Put(name, std::move(document));
  if (!Save(m_userFolder)) {
    m_profiles = std::move(before);
    return Refused(kNotSaved);
  }
  TellChange();
  return {Answer::kDone, {}, {name}};
}

ProfileResult XMLFileManager::Rename(const std::string& name, const std::string& newName) {
  const auto found = m_profiles.find(name);
  if (found == m_profiles.end() || newName.empty()) return Refused(kSelectProfile);
  if (IsFixed(name, found->second)) return Refused(IsExampleName(name) ? kExample : kReadOnly);
  if (IsExampleName(name)) return Refused(kExample);
  if (name == newName) return {};
  std::string problem;
  if (!IsNameAllowed(newName, problem)) return Refused(problem);
  if (newName == kFactorySettings || m_profiles.count(newName))
    return Refused(newName + Translate(kExists));
  if (!MayWrite()) return Refused(kNotRenamed);
  const std::string oldPath = found->second.path;
  Profiles before = m_profiles;
  Put(newName, found->second.document);
  bool renamed = Save(m_userFolder);
  if (renamed && !oldPath.empty() && !RemoveFile(oldPath)) {
    RemoveFile(m_profiles[newName].path);
    renamed = false;
  }
  if (!renamed) {
    m_profiles = std::move(before);
    return Refused(kNotRenamed);
  }
  m_profiles.erase(name);
  Reload();
  return {Answer::kDone, {}, {newName}};
}

ProfileResult XMLFileManager::Delete(const std::string& name, bool confirmed) {
  const auto found = m_profiles.find(name);
  if (found == m_profiles.end()) return Refused(kSelectProfile);
  if (IsFixed(name, found->second)) return Refused(kReadOnly);
  if (!confirmed) return Ask(Translate(kDelete) + " " + name);
  if (!found->second.path.empty() && !RemoveFile(found->second.path)) return Refused(kReadOnly);
  m_profiles.erase(found);
  Reload();
  return {Answer::kDone, {}, {name}};
}

ProfileResult XMLFileManager::Export(const std::string& name, const std::string& path) const {
  const Tag* document = Find(name);
  if (!document || path.empty()) return Refused(kSelectProfile);
  if (name == kFactorySettings || !MayWrite()) return Refused(kNotSaved);
  std::string problem;
  if (document->save(path, &problem)) return {Answer::kDone, {}, {name}};
  LogEntry(LogLevel::kWarning, "Profile not exported: " + problem);
  return Refused(kNotSaved);
}

ProfileResult XMLFileManager::ImportFile(const std::string& path, bool overwrite,
                                         const std::function<void(Tag&)>& prepare) {
  std::vector<Tag> documents;
  const std::string problem = ParseFile(path, documents);
  if (!problem.empty() || documents.empty()) {
    LogEntry(LogLevel::kWarning,
             "Profile not imported: " + (problem.empty() ? path + ": it is empty" : problem));
    return Refused(kNotImported);
  }
  ProfileResult question;
  for (const Tag& document : documents) {
    const std::string name = document.attribute("name");
    if (IsReadOnly(name)) return Refused(kNotOverwritten);
    ProfileResult check = CheckTarget(name, overwrite);
    if (check.answer == Answer::kRefused) return check;
    if (!check.Done()) question = std::move(check);
  }
  if (!question.Done()) return question;
  Profiles before = m_profiles;
  ProfileResult result;
  for (Tag& document : documents) {
    prepare(document);
    const std::string name = document.attribute("name");
    Put(name, std::move(document));
    result.names.push_back(name);
  }
  if (!Save(m_userFolder)) {
    m_profiles = std::move(before);
    return Refused(kNotSaved);
  }
  TellChange();
  return result;
}

}  // namespace orv::rws::core
