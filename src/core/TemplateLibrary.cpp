#include "core/TemplateLibrary.h"

#include <algorithm>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/DataRoot.h"
#include "core/Log.h"
#include "core/Resources.h"
#include "core/Template.h"

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

std::unique_ptr<Tool> TemplateLibrary::KeepTool(const File& file,
                                                std::vector<std::unique_ptr<Tool>>& old) {
  for (std::unique_ptr<Tool>& tool : old) {
    if (!tool || AsTemplate(tool).GetPath() != file.path) continue;
    const bool isSame = AsTemplate(tool).GetDocument() == file.document;
    if (!isSame && tool->GetInstances().empty()) return nullptr;
    if (!isSame)
      Report(file.path, kWhole,
             "it has changed, and rigs of the kind " + tool->GetDisplayId() +
                 " are open (scan again when they are closed)");
    return std::move(tool);
  }
  return nullptr;
}

bool TemplateLibrary::IsTaken(const std::string& id) const {
  return m_core.GetLibrary().Find(id) != nullptr;
}

std::unique_ptr<Tool> TemplateLibrary::MakeTool(const File& file) {
  std::string element, reason;
  Template::Factory factory(m_maker(file.document, element, reason));
  if (!factory) {
    Report(file.path, element, reason);
    return nullptr;
  }
  if (IsTaken(factory->GetId())) {
    Report(file.path, "template", "the id " + factory->GetId() + " is taken by another tool");
    return nullptr;
  }
  auto tool = std::make_unique<Template>(m_core, std::move(factory), file.path, file.document);
  tool->LoadProfiles();
  return tool;
}

void TemplateLibrary::Rescan() {
  m_problems.clear();
  const std::vector<File> files = ReadFiles();
  std::vector<std::unique_ptr<Tool>> old = std::exchange(m_tools, {});
  // Those that stay come first: a new file can't take their ids.
  std::vector<std::unique_ptr<Tool>> byFile;
  for (const File& file : files) byFile.push_back(KeepTool(file, old));
  for (std::unique_ptr<Tool>& tool : old) {
    if (!tool || tool->GetInstances().empty()) continue;
    Report(AsTemplate(tool).GetPath(), kWhole,
           "it has gone or can't be read, and rigs of the kind " + tool->GetDisplayId() +
               " are open: the tool stays until they are closed");
    m_tools.push_back(std::move(tool));
  }
  std::vector<bool> isNew;
  for (std::unique_ptr<Tool>& tool : byFile) {
    isNew.push_back(!tool);
    if (tool) m_tools.push_back(std::move(tool));
  }
  for (std::size_t i = 0; i < files.size(); ++i)
    if (std::unique_ptr<Tool> made = isNew[i] ? MakeTool(files[i]) : nullptr)
      m_tools.push_back(std::move(made));
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
