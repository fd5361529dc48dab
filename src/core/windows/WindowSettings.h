// What is kept of windows from one time to the next.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace orv::rws::core::windows {

/// Places, folds, scrolls, columns and the like, as texts by window and key, in "core/windows.xml"
/// of the data folder. Nothing of it is worth a word to the user: what can't be read or written is
/// a line in the log.
class WindowSettings {
 public:
  WindowSettings();
  /// Saves what has changed.
  ~WindowSettings();
  WindowSettings(const WindowSettings&) = delete;
  WindowSettings& operator=(const WindowSettings&) = delete;

  /// Empty when nothing is kept.
  const std::string& Get(const std::string& window, const std::string& key) const;
  /// An empty value is dropped.
  void Set(const std::string& window, const std::string& key, const std::string& value);
  void Save();

 private:
  std::map<std::pair<std::string, std::string>, std::string> m_values;
  bool m_changed = false;
};

}  // namespace orv::rws::core::windows
