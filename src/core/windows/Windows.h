// The windows of the core.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QObject>
#include <QTimer>

#include "core/UserInterface.h"
#include "core/windows/WindowSettings.h"
#include "gui/Layout.h"

class QWidget;

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::core::windows {

class Program;
class Window;

/// Kinds of windows. Those from kToolConfig on are one a rig.
enum class WindowKind {
  kMain,
  kDevices,
  kPreferences,
  kLog,
  kHotKeys,
  kWhy,
  kAbout,
  kLicence,
  kToolConfig,
  kInputConfig,
};

/// Owns the windows, opens them, and is what the core shows itself by. Kinds come by `AddMaker`, so
/// that no window knows another's class.
class Windows : public QObject, public UserInterface {
 public:
  /// Makes a window of its kind; `row` is that of the rig, 0 where it is of none.
  using Maker = std::function<std::unique_ptr<Window>(Windows& windows, int row)>;
  /// Makes what the core asks for by other names.
  struct Views {
    std::function<MainWindowView*(Window& main)> main;  ///< of the main window; it owns the view
    std::function<CountdownDialog*(Windows&)> countdown;
    std::function<ResimulationView*(Windows&)> resimulation;
    std::function<int(Windows&, const std::string& title, const std::string& text, unsigned flags)>
        messageBox;
  };

  /// Both outlive the windows. The core gets these as its user interface, and loses them with them.
  Windows(CoreImplementation& core, Program& program);
  ~Windows() override;

  void AddMaker(WindowKind kind, Maker maker) { m_makers[kind] = std::move(maker); }
  Views& GetViews() { return m_views; }

  /// Opens it, or brings it to the front. Null when its document can't be used or the rig has gone.
  Window* Open(WindowKind kind, int row = 0);
  /// The window if it is built.
  Window* Find(WindowKind kind, int row = 0) const;
  void Close(WindowKind kind, int row = 0);
  /// Ends it: its widgets and state go. Safe in answer to a message of it.
  void Drop(WindowKind kind, int row = 0);
  /// Makes a tool's window in a container of the main window instead; it is ended first where it
  /// stands elsewhere.
  Window* Dock(WindowKind kind, int row, gui::Component& container);
  /// Ends the windows of a rig that is gone.
  void DropRow(int row);

  CoreImplementation& GetCore() const { return m_core; }
  Program& GetProgram() const { return m_program; }
  gui::Layout& GetLayout() { return m_layout; }
  WindowSettings& GetSettings() { return m_settings; }
  /// The widget that a window is to stand over; null for none.
  QWidget* GetParentFor(const Window& window) const;
  QWidget* GetMainWidget() const;

  // File dialogs. An empty path when the user cancels. The folder that was chosen last under `what`
  // is kept. `filter` as of QFileDialog, translated.
  std::string ChooseFile(const std::string& title, const std::string& filter,
                         const std::string& what);
  std::vector<std::string> ChooseFiles(const std::string& title, const std::string& filter,
                                       const std::string& what);
  /// Asks before it gives the path of a file that is there. `suffix`, such as ".glb", is appended
  /// to a name without one; `folder` is where a first choice begins.
  std::string ChooseFileToSave(const std::string& title, const std::string& filter,
                               const std::string& what, const std::string& name,
                               const std::string& suffix, const std::string& folder = {});
  /// A line of text, such as a name. False when the user cancels.
  bool AskText(const std::string& title, const std::string& label, std::string& text);

  /// All windows show their texts anew; to be called when language, theme or units have changed.
  void ShowSettings();
  /// See Window::OnSceneChanged.
  void TellSceneChanged();
  /// A sentence in the main window, which stays until it is closed or another takes its place.
  void ShowNotice(const std::string& text);

  // Of Window alone.
  void Enter(Window& window);
  void Leave(Window& window);
  void Prepare(gui::Component& root);  ///< gives it the aliases of images

  // UserInterface
  MainWindowView* GetMainWindow() override;
  bool OpenMainWindow(void* parent) override;
  void RaiseMainWindow() override;
  void CloseMainWindow() override;
  CountdownDialog* CreateCountdownDialog() override;
  ResimulationView* CreateResimulationView() override;
  /// One that asks nothing is shown when what is being done is done: within a frame its event loop
  /// would hold the take up, and let it be stopped in the middle of a rig's step.
  int MessageBox(const std::string& title, const std::string& text, unsigned flags) override;
  void ShowInputConfig(const std::string& instanceName) override;

 private:
  using Key = std::pair<WindowKind, int>;

  Window* Make(WindowKind kind, int row);
  void GoLive();
  void ShowBoxes();
  void ClearDropped();

  struct Box {
    std::string title, text;
    unsigned flags;
  };

  CoreImplementation& m_core;
  Program& m_program;
  WindowSettings m_settings;
  gui::Layout m_layout;
  std::map<WindowKind, Maker> m_makers;
  Views m_views;
  std::vector<Window*> m_all;  ///< also those that are nobody's kind, in the order of their making
  std::map<Key, std::unique_ptr<Window>> m_windows;
  std::vector<std::unique_ptr<Window>> m_dropped;  ///< until nothing of them is on the stack
  std::deque<Box> m_boxes;                         ///< that wait, behind the one that is shown
  bool m_showsBoxes = false;
  QTimer m_live;
};

}  // namespace orv::rws::core::windows
