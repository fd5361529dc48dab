// All tools of the program.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/tools/Library.h"

namespace orv::rws::core {

/// Owns the libraries; each core has one.
class LibraryManager {
 public:
  LibraryManager();
  ~LibraryManager();
  LibraryManager(const LibraryManager&) = delete;
  LibraryManager& operator=(const LibraryManager&) = delete;

  void AddLibrary(std::unique_ptr<Library> library);
  /// Loads the libraries that were added since the last call.
  void Load();
  /// Has each library look again for tools that the user has added, changed or removed. A tool that
  /// has rigs stays; pointers to others are no longer good.
  void Rescan();

  /// The tool with this id, of the library that was added first; null when there is none.
  Tool* Find(const std::string& id) const;
  /// In order of libraries, and within one of registration.
  std::vector<Tool*> GetTools() const;
  /// Categories of all tools, each once, in the order of the tools.
  std::vector<std::string> GetCategories() const;
  /// What the libraries had to leave out.
  std::vector<LibraryProblem> GetProblems() const;

 private:
  std::vector<std::unique_ptr<Library>> m_libraries;
  std::size_t m_loaded = 0;
};

}  // namespace orv::rws::core
