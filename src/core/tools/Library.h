// A source of tools.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/tools/Tool.h"

namespace orv::rws::core {

/// Why a file of a library makes no tool.
struct LibraryProblem {
  std::string file;
  std::string element;  ///< where in the file, such as `outputs/output "angle"`
  std::string reason;
};

/// Owns the tools that it knows.
class Library {
 public:
  Library() = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// Makes the tools. Called once; what can't be used is named in the log and left out.
  virtual void Load() = 0;
  virtual ~Library() = default;
  /// Looks again for tools that the user may have added, changed or removed. A tool that has rigs
  /// stays as long as they do.
  virtual void Rescan() {}

  const std::vector<std::unique_ptr<Tool>>& GetTools() const { return m_tools; }
  /// What the latest load or scan had to leave out.
  const std::vector<LibraryProblem>& GetProblems() const { return m_problems; }

 protected:
  std::vector<std::unique_ptr<Tool>> m_tools;
  std::vector<LibraryProblem> m_problems;
};

}  // namespace orv::rws::core
