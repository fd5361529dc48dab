// The main window as its pages see it.
#pragma once

#include <string>

#include "core/UserInterface.h"
#include "core/windows/Window.h"

namespace orv::rws::core::windows {

class SceneBrowser;

/// What the pages use of the window around them.
class MainWindowFrame : public Window, public MainWindowView {
 public:
  using Window::Window;

  using Window::Find;
  using Window::Get;
  using Window::GetCore;
  using Window::GetWindows;
  using Window::SetEnabled;
  using Window::SetText;
  using Window::With;

  /// Null where the host shows its scene by itself.
  virtual SceneBrowser* GetBrowser() const = 0;
  virtual void Tell(int label, const std::string& text) = 0;
  /// Enables an entry wherever it stands: menu bar and popups.
  virtual void ShowCommand(int command, bool enabled, const std::string& why = {}) = 0;
  virtual void ShowCommandLabel(int command, const std::string& label) = 0;
  /// All entries anew.
  virtual void ShowCommands() = 0;
  virtual void RunCommand(int command) = 0;
  /// Why the scene can't be changed now: a take or resimulation runs. Empty when it can.
  virtual std::string WhyLocked() const = 0;
  /// Shows one of the pages at the right, by its button.
  virtual void ShowPage(int button) = 0;
  /// A setting of this window.
  virtual std::string GetKept(const std::string& key) const = 0;
  virtual void Keep(const std::string& key, const std::string& value) = 0;
};

}  // namespace orv::rws::core::windows
