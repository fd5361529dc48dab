// The library of the template tools.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/interface/TemplateMaker.h"
#include "core/tools/Library.h"
#include "core/tools/Template.h"

namespace orv::rws::core {

class InstanceHost;

/// Finds the templates that come with the program and those in "templates" below the data folder,
/// one a file. A damaged one, or one whose id another tool has, is left out: it is told in the log
/// and in the problems, and the others load.
class TemplateLibrary : public Library {
 public:
  TemplateLibrary(InstanceHost& host, TemplateMaker maker) : m_host(host), m_maker(maker) {}

  void Load() override;
  /// Files that are new or have changed are read, and tools whose file has gone go. Rigs that stand
  /// keep their tool: of a changed file it leaves the list to the new one, and of one that has
  /// gone, is damaged or holds another kind it stays there, which is told.
  void Rescan() override;

 private:
  struct File {
    std::string path;
    std::string document;
  };

  using Tools = std::vector<std::unique_ptr<Tool>>;

  std::vector<File> ReadFiles();
  /// Adds the tool of a file that `old` has one of, as it is or read anew. False when the file is
  /// yet to be read like one that is new.
  bool KeepOrReplace(const File& file, Tools& old);
  /// Null, which is told, for a damaged file.
  Template::Factory MakeFactory(const File& file);
  /// Null is none.
  void AddTool(Template::Factory factory, const File& file);
  bool IsTaken(const std::string& id) const;
  void Report(const std::string& file, const std::string& element, const std::string& reason);

  InstanceHost& m_host;
  const TemplateMaker m_maker;
  Tools m_replaced;  ///< by a changed file, while rigs of theirs stand
};

}  // namespace orv::rws::core
