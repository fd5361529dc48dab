// The main window.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/UserInterface.h"
#include "core/windows/Window.h"

namespace orv::gui {
class Menu;
}

namespace orv::rws::core::windows {

class MainWindowPage;
class SceneBrowser;

/// Frame, menus and what the core asks of its main window; the rest is done by pages, which share
/// the window's components.
class MainWindow : public Window, public MainWindowView {
 public:
  explicit MainWindow(Windows& windows);
  ~MainWindow() override;

  // MainWindowView
  bool GetCheckBox(int id, bool& on) override;
  void SetSpinner(int id, int value) override;
  void SetRecordState(bool recording) override;
  void* GetWindowHandle() override;
  gui::Component* GetRootComponent() override { return GetRoot(); }

  void OnLive() override;
  void OnSettingsChanged() override;
  void OnSceneChanged() override;

  // What the pages use.

  using Window::Find;
  using Window::Get;
  using Window::GetCore;
  using Window::GetWindows;
  using Window::SetEnabled;
  using Window::SetText;
  using Window::With;

  /// Null where the host shows its scene by itself.
  SceneBrowser* GetBrowser() const;
  void Tell(int label, const std::string& text);
  /// Enables an entry wherever it stands: menu bar and popups.
  void ShowCommand(int command, bool enabled, const std::string& why = {});
  void ShowCommandLabel(int command, const std::string& label);
  /// All entries anew.
  void ShowCommands();
  void RunCommand(int command);
  /// Why the scene can't be changed now: a take or resimulation runs. Empty when it can.
  std::string WhyLocked() const;
  /// Shows one of the pages at the right, by its button.
  void ShowPage(int button);
  /// A setting of this window.
  std::string GetKept(const std::string& key) const;
  void Keep(const std::string& key, const std::string& value);

 protected:
  void OnBuilt() override;
  void OnShown() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;

 private:
  class EscapeFilter;

  template <class Use>
  void ForMenus(Use&& use);
  void ShowTitle();
  void HideMissing(gui::Menu& menu);
  void OnFrame(gui::Component& source, util::Message& message);

  std::vector<std::unique_ptr<MainWindowPage>> m_pages;
  std::vector<int> m_selection;  ///< rows, as the pages know it
  std::unique_ptr<EscapeFilter> m_escape;
};

}  // namespace orv::rws::core::windows
