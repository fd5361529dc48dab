// The template tools that come with the program.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

namespace orv::tests {

/// One factory a file; they live as long as the process.
inline const std::vector<rws::CCameraPlugin*>& ShippedTemplates() {
  static const std::vector<rws::CCameraPlugin*> kinds = [] {
    std::vector<std::filesystem::path> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ORV_SOURCE_DIR) + "/data/templates"))
      if (entry.path().extension() == ".xml") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<rws::CCameraPlugin*> made;
    for (const auto& file : files) {
      std::ifstream in(file, std::ios::binary);
      std::string element, reason;
      made.push_back(rws::addon::MakeTemplatePlugin(
          {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}, element, reason));
      if (!made.back()) throw std::runtime_error(file.string() + ": " + element + ": " + reason);
    }
    return made;
  }();
  return kinds;
}

/// The compiled rigs and the templates.
inline std::vector<rws::CCameraPlugin*> AllKinds() {
  std::vector<rws::CCameraPlugin*> kinds = rws::addon::AllRigs();
  kinds.insert(kinds.end(), ShippedTemplates().begin(), ShippedTemplates().end());
  return kinds;
}

}  // namespace orv::tests
