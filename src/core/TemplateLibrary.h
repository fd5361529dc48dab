// The library of the template tools.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/Library.h"
#include "core/interface/TemplateMaker.h"

namespace orv::rws::core {

class CoreImplementation;
class Template;

/// Finds the templates that come with the program and those in "templates" below the data folder,
/// one a file. A damaged one, or one whose id another tool has, is left out: it is told in the log
/// and in the problems, and the others load.
class TemplateLibrary : public Library {
 public:
  TemplateLibrary(CoreImplementation& core, TemplateMaker maker) : m_core(core), m_maker(maker) {}

  void Load() override;
  /// Files that are new or have changed are read, and tools whose file has gone go. But a tool that
  /// has rigs stays what it is as long as they are there, which is told.
  void Rescan() override;

 private:
  struct File {
    std::string path;
    std::string document;
  };

  std::vector<File> ReadFiles();
  /// Moves the tool of a file out of `old`, if it is to stay; else null.
  std::unique_ptr<Tool> KeepTool(const File& file, std::vector<std::unique_ptr<Tool>>& old);
  std::unique_ptr<Tool> MakeTool(const File& file);
  bool IsTaken(const std::string& id) const;
  void Report(const std::string& file, const std::string& element, const std::string& reason);

  CoreImplementation& m_core;
  const TemplateMaker m_maker;
};

}  // namespace orv::rws::core
