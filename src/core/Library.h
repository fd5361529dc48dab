// A source of tools.
#pragma once

#include <memory>
#include <vector>

#include "core/Tool.h"

namespace orv::rws::core {

/// Owns the tools that it knows.
class Library {
 public:
  Library() = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// Makes the tools. Called once; what can't be used is named in the log and left out.
  virtual void Load() = 0;
  virtual ~Library() = default;

  const std::vector<std::unique_ptr<Tool>>& GetTools() const { return m_tools; }

 protected:
  std::vector<std::unique_ptr<Tool>> m_tools;
};

}  // namespace orv::rws::core
