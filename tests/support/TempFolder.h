// A folder of a test's own that goes with it.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace orv::tests {

class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "rigwright_XXXXXX").string();
    path = mkdtemp(name.data());
  }
  ~TempFolder() { std::filesystem::remove_all(path); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  /// Writes a file below the folder, making what is missing on the way; its path.
  std::string Write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = std::filesystem::path(path) / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file.string();
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(std::filesystem::path(path) / name, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }
  bool Has(const std::string& name) const {
    return std::filesystem::exists(std::filesystem::path(path) / name);
  }

  std::string path;
};

}  // namespace orv::tests
