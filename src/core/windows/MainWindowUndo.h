// Undo and redo in the main window.
#pragma once

#include "core/windows/MainWindowPage.h"
#include "core/windows/SceneBrowser.h"

namespace orv::rws::core::windows {

/// The entries of the menu, with the names of their steps, and the list of all steps.
class MainWindowUndo : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override { Show(); }
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCommand(int command) override;
  void ShowCommands() override;
  void OnSceneChanged() override { Show(); }
  void OnSettingsChanged() override { Show(); }

 private:
  void Show();

  SceneBrowser::UndoSteps m_steps;
};

}  // namespace orv::rws::core::windows
