// A part of the main window.
#pragma once

#include <string>

#include "core/windows/MainWindowFrame.h"

namespace orv::rws::core::windows {

/// Looks after some of the main window's components. The window outlives it and hands on what it
/// hears.
class MainWindowPage {
 public:
  explicit MainWindowPage(MainWindowFrame& window) : m_window(window) {}
  virtual ~MainWindowPage() = default;
  MainWindowPage(const MainWindowPage&) = delete;
  MainWindowPage& operator=(const MainWindowPage&) = delete;

  virtual void OnBuilt() {}
  virtual void OnComponent(gui::Component& /*source*/, util::Message& /*message*/) {}
  /// An entry of a menu; see MenuIds.h and MainWindowIds.h.
  virtual void OnCommand(int /*command*/) {}
  /// Sets which entries can be chosen.
  virtual void ShowCommands() {}
  virtual void OnCore(const util::Message& /*message*/) {}
  virtual void OnLive() {}
  virtual void OnSceneChanged() {}
  virtual void OnSettingsChanged() {}
  virtual void OnNotice(const std::string& /*text*/) {}

 protected:
  template <class Interface, class Use>
  void With(int id, Use&& use) {
    m_window.With<Interface>(id, std::forward<Use>(use));
  }
  template <class Interface>
  Interface* Get(int id) const {
    return m_window.Get<Interface>(id);
  }
  MainWindowFrame& GetWindow() const { return m_window; }
  Windows& GetWindows() const { return m_window.GetWindows(); }
  CoreImplementation& GetCore() const { return m_window.GetCore(); }
  SceneBrowser* GetBrowser() const { return m_window.GetBrowser(); }
  /// Shows what a request had to say in a label that is hidden without a text.
  void Tell(int label, const std::string& text) { m_window.Tell(label, text); }

 private:
  MainWindowFrame& m_window;
};

}  // namespace orv::rws::core::windows
