// The main window.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/windows/MainWindowFrame.h"

namespace orv::gui {
class Menu;
}

namespace orv::rws::core::windows {

class MainWindowPage;

/// Frame, menus and what the core asks of its main window; the rest is done by pages, which share
/// the window's components.
class MainWindow : public MainWindowFrame {
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
  void OnNotice(const std::string& text) override;

  // MainWindowFrame
  SceneBrowser* GetBrowser() const override;
  void Tell(int label, const std::string& text) override;
  void ShowCommand(int command, bool enabled, const std::string& why) override;
  void ShowCommandLabel(int command, const std::string& label) override;
  void ShowCommands() override;
  void RunCommand(int command) override;
  std::string WhyLocked() const override;
  void ShowPage(int button) override;
  std::string GetKept(const std::string& key) const override;
  void Keep(const std::string& key, const std::string& value) override;

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
