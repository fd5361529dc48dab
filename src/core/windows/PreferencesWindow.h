// What the user sets for the whole program.
#pragma once

#include <string>
#include <vector>

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// A row for each of the preferences that people set; a change acts and is kept at once.
class PreferencesWindow : public Window {
 public:
  explicit PreferencesWindow(Windows& windows);

 protected:
  void OnBuilt() override;
  void OnShown() override { ShowValues(); }
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  struct Row {
    std::string key;  ///< of the preference
    gui::Component* root;
  };

  void AddRow(const std::string& key);
  void ShowValues();
  void Set(const Row& row, gui::Component& source, const util::Message& message);

  std::vector<Row> m_rows;
};

}  // namespace orv::rws::core::windows
