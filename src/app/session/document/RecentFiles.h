// The scenes that were worked on last.
#pragma once

#include <string>
#include <vector>

#include "app/session/anyhost/Problem.h"

namespace orv::app {

struct RecentFile {
  std::string path;  ///< absolute, as bytes of the file system in every locale
  bool isThere = true;
};

/// The latest scene files of all programs on one data root, kept in "data/core/recent.txt" there.
/// Each call reads the file anew; changes of several programs at once all count.
class RecentFiles {
 public:
  static constexpr std::size_t kMost = 12;

  /// The latest first, with those that are missing at present.
  static std::vector<RecentFile> list();
  /// Puts a file at the head. What comes back says why that could not be kept, which does no harm
  /// to anything else.
  static Problem add(const std::string& path);
  static Problem remove(const std::string& path);
  static Problem clear();
  static std::string path();
};

}  // namespace orv::app
