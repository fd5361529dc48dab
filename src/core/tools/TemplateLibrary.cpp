#include "core/tools/TemplateLibrary.h"

#include <algorithm>
#include <utility>

#include "core/instances/InstanceHost.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Resources.h"

namespace orv::rws::core {

namespace {

constexpr char kFolder[] = "/templates";
constexpr char kWhole[] = "document";  ///< where a problem is that of the file itself

Template& AsTemplate(const std::unique_ptr<Tool>& tool) {
  return static_cast<Template&>(*tool);
}

}  // namespace

void TemplateLibrary::Load() {
  InitResources();
  Rescan();
}

void TemplateLibrary::Report(const std::string& file, const std::string& element,
                             const std::string& reason) {
  m_problems.push_back({file, element, reason});
  LogEntry(LogLevel::kError, "Template left out: " + file + ": " + element + ": " + reason);
}

std::vector<TemplateLibrary::File> TemplateLibrary::ReadFiles() {
  std::vector<File> files;
  for (const std::string& root : {std::string(":/data"), DataRoot::GetDataFolder()}) {
    for (const std::string& path : ListResources(root + kFolder, "xml")) {
      File file{path, {}};
      std::string problem;
      if (ReadResource(path, file.document, &problem))
        files.push_back(std::move(file));
      else
        Report(path, kWhole, problem);
    }
  }
  return files;
}

bool TemplateLibrary::KeepOrReplace(const File& file, Tools& old) {
  const auto find = [&](auto fits) {
    return std::find_if(old.begin(), old.end(), [&](const std::unique_ptr<Tool>& tool) {
      return tool && AsTemplate(tool).GetPath() == file.path && fits(tool);
    });
  };
  const auto same =
      find([&](const auto& t) { return AsTemplate(t).GetDocument() == file.document; });
  if (same != old.end()) {
    m_tools.push_back(std::move(*same));
    return true;
  }
  const auto inUse = find([](const auto& tool) { return !tool->GetInstances().empty(); });
  if (find([](const auto&) { return true; }) == old.end()) return false;
  Template::Factory factory = MakeFactory(file);
  if (!factory) {  // which is told; rigs that stand go on with what there was
    if (inUse != old.end()) m_tools.push_back(std::move(*inUse));
    return true;
  }
  const auto before = find([&](const auto& t) { return t->GetDisplayId() == factory->GetId(); });
  if (before == old.end()) return false;
  if (!(*before)->GetInstances().empty()) m_replaced.push_back(std::move(*before));
  before->reset();
  AddTool(std::move(factory), file);
  return true;
}

Template::Factory TemplateLibrary::MakeFactory(const File& file) {
  std::string element, reason;
  Template::Factory factory(m_maker(file.document, element, reason));
  if (!factory) Report(file.path, element, reason);
  return factory;
}

bool TemplateLibrary::IsTaken(const std::string& id) const {
  return m_host.FindKind(id) != nullptr;
}

void TemplateLibrary::AddTool(Template::Factory factory, const File& file) {
  if (!factory) return;
  if (IsTaken(factory->GetId())) {
    Report(file.path, "template", "the id " + factory->GetId() + " is taken by another tool");
    return;
  }
  m_tools.push_back(
      std::make_unique<Template>(m_host, std::move(factory), file.path, file.document));
  m_tools.back()->LoadProfiles();
}

void TemplateLibrary::Rescan() {
  m_problems.clear();
  m_replaced.erase(std::remove_if(m_replaced.begin(), m_replaced.end(),
                                  [](const std::unique_ptr<Tool>& tool) {
                                    return tool->GetInstances().empty();
                                  }),
                   m_replaced.end());
  const std::vector<File> files = ReadFiles();
  Tools old = std::exchange(m_tools, {});
  // Kinds that stay come first: a new file can't take their ids.
  std::vector<const File*> added;
  for (const File& file : files)
    if (!KeepOrReplace(file, old)) added.push_back(&file);
  for (std::unique_ptr<Tool>& tool : old) {
    if (!tool || tool->GetInstances().empty()) continue;
    Report(AsTemplate(tool).GetPath(), kWhole,
           "it has gone or holds another tool, and rigs of the kind " + tool->GetDisplayId() +
               " are open: the tool stays until they are closed");
    m_tools.push_back(std::move(tool));
  }
  for (const File* file : added) AddTool(MakeFactory(*file), *file);
  // In the order of the files, those without one first.
  const auto place = [&](const std::unique_ptr<Tool>& tool) {
    for (std::size_t i = 0; i < files.size(); ++i)
      if (files[i].path == AsTemplate(tool).GetPath()) return static_cast<int>(i);
    return -1;
  };
  std::stable_sort(m_tools.begin(), m_tools.end(),
                   [&](const auto& a, const auto& b) { return place(a) < place(b); });
}

}  // namespace orv::rws::core
