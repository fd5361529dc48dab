// Where the user's files of this program lie.
#pragma once

#include <string>

namespace orv::rws::core {

/// The data root: the folder that `Set` named, else RIGWRIGHT_DATA_ROOT, else "Orvel
/// Motion/rigwright" in the user's documents folder. Paths are absolute, as bytes of the file
/// system, and without a slash at the end. Nothing here creates a folder.
class DataRoot {
 public:
  static std::string Get();
  /// Overrides the root; an empty path takes the override back.
  static void Set(const std::string& path);
  /// "data" below the root: a folder for each tool, and "core".
  static std::string GetDataFolder();
};

}  // namespace orv::rws::core
