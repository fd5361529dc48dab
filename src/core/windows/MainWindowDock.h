// The parameters of the selected rigs, docked in the main window.
#pragma once

#include <deque>
#include <string>

#include "core/windows/MainWindowPage.h"

namespace orv::rws::core::windows {

class ToolConfigPanel;

/// Shows the tool configuration of the first rig that is selected, and has it edit all others of
/// its kind. Some panels stay when another rig is selected, so that they are back at once.
class MainWindowDock : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override { Show(); }
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCommand(int command) override;
  void OnCore(const util::Message& message) override;
  void OnLive() override;
  void OnSettingsChanged() override { Show(); }

 private:
  void Show();
  std::string FirstSteps() const;
  /// Null when the panel stands in a window of its own.
  Window* FindDocked(int row) const;
  /// Docks it unless it is there.
  Window* Dock(int row);
  int FirstRig() const;
  bool Floats(int row) const;

  std::deque<int> m_docked;  ///< rows, the latest first
  int m_shown = 0;
  bool m_floats = false;  ///< as it is shown
};

}  // namespace orv::rws::core::windows
