// A tool made of a template's file.
#pragma once

#include <memory>
#include <string>

#include "core/interface/CCameraPlugin.h"
#include "core/tools/Plugin.h"

namespace orv::rws::core {

/// Owns the factory that the file defines. The file may change or go meanwhile.
class Template : public Plugin {
 public:
  struct End {
    void operator()(CCameraPlugin* factory) const { factory->Destroy(); }
  };
  using Factory = std::unique_ptr<CCameraPlugin, End>;

  Template(InstanceHost& host, Factory factory, std::string path, std::string document)
      : Plugin(host, *factory),
        m_factory(std::move(factory)),
        m_path(std::move(path)),
        m_document(std::move(document)) {}

  bool IsPlugin() override { return false; }
  /// The file, or the resource, and what stood in it.
  const std::string& GetPath() const { return m_path; }
  const std::string& GetDocument() const { return m_document; }

 private:
  const Factory m_factory;
  const std::string m_path;
  const std::string m_document;
};

}  // namespace orv::rws::core
