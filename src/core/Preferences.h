// What the user has set for the whole program.
#pragma once

#include <string>

namespace orv::rws::core {

/// The preferences. Kept in "core/preferences.xml" of the data folder, which only `save` writes; a
/// fresh object has the defaults.
class Preferences {
 public:
  int countdownSeconds = 0;    ///< "Start Countdown time", whole seconds before a take
  bool updateViewport = true;  ///< "updateviewport": a resimulation shows frames as it runs

  /// Reads the stored preferences. False when there are none or the file is damaged (a log line
  /// tells); what could not be read has its default.
  bool load();
  /// Stores the preferences. False, with `error` naming path and reason, when that failed.
  bool save(std::string* error = nullptr) const;

  static std::string path();
};

}  // namespace orv::rws::core
