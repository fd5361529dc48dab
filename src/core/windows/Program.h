// What windows ask of the program or plug-in that they stand in.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace orv::gui {
class Menu;
}
namespace orv::gui::component::qt {
class ViewHandler;
}

namespace orv::rws::core::windows {

class MainWindowFrame;
class MainWindowPage;
class SceneBrowser;
class Window;

/// The program around the windows. Main thread only; it outlives them.
class Program {
 public:
  virtual ~Program() = default;

  /// Entries of the main window's menus whose ids are the program's own: see kProgramCommands in
  /// MenuIds.h. Those that it has not are hidden.
  virtual bool HasCommand(int id) const = 0;
  /// A user has chosen one.
  virtual void RunCommand(int id) = 0;
  /// Called before a menu opens: sets what is enabled, and its own lists, such as recent files.
  virtual void UpdateMenu(gui::Menu& /*menu*/) {}
  /// What stands in the main window's title: the scene's name, and whether it is changed.
  virtual std::string GetSceneTitle() const { return {}; }
  virtual bool IsSceneChanged() const { return false; }
  /// Paths were dropped on the main window.
  virtual void OpenDropped(const std::vector<std::string>& /*paths*/) {}
  /// The main window is asked to close: false refuses.
  virtual bool MayClose() { return true; }
  virtual void OnMainWindowClosed() {}

  /// Scene, nodes and undo as the main window shows them; null where the host has windows of its
  /// own for that.
  virtual SceneBrowser* GetSceneBrowser() { return nullptr; }
  /// The picture of the scene in the middle of the main window; null where the host shows its scene
  /// by itself.
  virtual gui::component::qt::ViewHandler* GetStage() { return nullptr; }
  /// The time line of the main window, with the buttons around it; null where the host has its own.
  virtual gui::component::qt::ViewHandler* GetTimeline() { return nullptr; }
  /// Hands pages of the program's own to a main window that is made; they live as long as it.
  using AddPage = std::function<void(std::unique_ptr<MainWindowPage>)>;
  virtual void MakePages(MainWindowFrame& /*window*/, const AddPage& /*add*/) {}
  /// The widget that windows stand over when the main window is closed; null without.
  virtual QWidget* GetHostWindow() { return nullptr; }
  /// Applies language and theme of the preferences.
  virtual void ApplyAppearance() {}
  /// The user has changed a preference, in memory and on the disk.
  virtual void OnPreferences() {}
  /// The theme is the host's: none is offered.
  virtual bool RulesTheme() const { return false; }
};

}  // namespace orv::rws::core::windows
