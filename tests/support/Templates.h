// The template tools that come with the program.
#pragma once

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

namespace orv::tests {

/// One factory a file; they live as long as the process.
inline std::vector<rws::CCameraPlugin*> ShippedTemplates() {
  struct End {
    void operator()(rws::CCameraPlugin* kind) const { kind->Destroy(); }
  };
  static std::vector<std::unique_ptr<rws::CCameraPlugin, End>> kinds;
  if (kinds.empty()) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ORV_SOURCE_DIR) + "/data/templates"))
      if (entry.path().extension() == ".xml") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
      std::ifstream in(file, std::ios::binary);
      std::string element, reason;
      kinds.emplace_back(rws::addon::MakeTemplatePlugin(
          {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}, element, reason));
      if (!kinds.back()) throw std::runtime_error(file.string() + ": " + element + ": " + reason);
    }
  }
  std::vector<rws::CCameraPlugin*> list;
  for (const auto& kind : kinds) list.push_back(kind.get());
  return list;
}

/// The compiled rigs and the templates.
inline std::vector<rws::CCameraPlugin*> AllKinds() {
  std::vector<rws::CCameraPlugin*> kinds = rws::addon::AllRigs();
  for (rws::CCameraPlugin* kind : ShippedTemplates()) kinds.push_back(kind);
  return kinds;
}

/// The rig kind of this id.
inline rws::CCameraPlugin& Kind(const std::string& id) {
  for (rws::CCameraPlugin* kind : AllKinds())
    if (kind->GetId() == id) return *kind;
  throw std::runtime_error("no kind " + id);
}

/// A kind's id as the name of an instantiated test.
inline std::string TestName(std::string id) {
  for (char& c : id)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return "Rig" + id;
}

/// Whether there is more to a label than this end.
inline bool EndsWith(const std::string& label, const std::string& end) {
  return label.size() > end.size() &&
         label.compare(label.size() - end.size(), end.size(), end) == 0;
}

}  // namespace orv::tests
