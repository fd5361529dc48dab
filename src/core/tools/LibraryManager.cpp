#include "core/tools/LibraryManager.h"

#include <algorithm>
#include <utility>

namespace orv::rws::core {

LibraryManager::LibraryManager() = default;

LibraryManager::~LibraryManager() = default;

void LibraryManager::AddLibrary(std::unique_ptr<Library> library) {
  if (library) m_libraries.push_back(std::move(library));
}

void LibraryManager::Load() {
  while (m_loaded < m_libraries.size()) m_libraries[m_loaded++]->Load();
}

void LibraryManager::Rescan() {
  Load();
  for (const auto& library : m_libraries) library->Rescan();
}

std::vector<LibraryProblem> LibraryManager::GetProblems() const {
  std::vector<LibraryProblem> problems;
  for (const auto& library : m_libraries)
    problems.insert(problems.end(), library->GetProblems().begin(), library->GetProblems().end());
  return problems;
}

Tool* LibraryManager::Find(const std::string& id) const {
  for (const auto& library : m_libraries) {
    for (const auto& tool : library->GetTools()) {
      if (tool->GetDisplayId() == id) return tool.get();
    }
  }
  return nullptr;
}

std::vector<Tool*> LibraryManager::GetTools() const {
  std::vector<Tool*> tools;
  for (const auto& library : m_libraries) {
    for (const auto& tool : library->GetTools()) tools.push_back(tool.get());
  }
  return tools;
}

std::vector<std::string> LibraryManager::GetCategories() const {
  std::vector<std::string> categories;
  for (Tool* tool : GetTools()) {
    std::vector<std::string> own;
    tool->GetCategories(own);
    for (const std::string& category : own) {
      if (std::find(categories.begin(), categories.end(), category) == categories.end())
        categories.push_back(category);
    }
  }
  return categories;
}

}  // namespace orv::rws::core
