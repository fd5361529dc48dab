// What the core shows, as small abstract classes: windows plug in here, and a core without any
// runs.
#pragma once

#include <string>

namespace orv::gui {
class Component;
}

namespace orv::rws::core {

/// State of the main window; numbers are those of MainWindowId.
class MainWindowView {
 public:
  virtual ~MainWindowView() = default;
  /// Whether the check box `id` exists; `on` is filled when it does.
  virtual bool GetCheckBox(int id, bool& on) = 0;
  /// Writes the spinner `id` if it exists.
  virtual void SetSpinner(int id, int value) = 0;
  /// A take runs, or no longer.
  virtual void SetRecordState(bool recording) = 0;
  /// Native window handle, for drivers that need one; null without.
  virtual void* GetWindowHandle() { return nullptr; }
  /// Root of its components; null without.
  virtual gui::Component* GetRootComponent() { return nullptr; }
};

/// Shows the whole seconds left before a take and the fraction of the running second.
class CountdownDialog {
 public:
  virtual ~CountdownDialog() = default;
  virtual void Set(int seconds, double fraction) = 0;
  virtual void Show() = 0;
  virtual void Hide() = 0;
};

/// Texts and progress of a running resimulation.
struct ResimulationStatus {
  float progress = 0.0f;  ///< 0 to 1
  std::string title;
  std::string range;         ///< "Resimulating frame 0 to 500..."
  std::string currentFrame;  ///< "Current frame: 0"
  std::string framesDone;    ///< "0 out of 500 frames."
  std::string remaining;     ///< "0 minutes and 5 seconds."
};

/// The dialog of a resimulation. A window paces the run in slices; without one the caller does.
class ResimulationView {
 public:
  virtual ~ResimulationView() = default;
  virtual void Open(bool canShowFrames, bool updateViewport) = 0;
  virtual void SetStatus(const ResimulationStatus& status) = 0;
  virtual void SetProgress(float progress) = 0;
  virtual void Close() = 0;
};

/// Makes what the core wants to show. Each may answer null: then nothing is shown.
/// What is made belongs to the core.
class UserInterface {
 public:
  virtual ~UserInterface() = default;
  /// Owned by the user interface; null while the main window is closed.
  virtual MainWindowView* GetMainWindow() { return nullptr; }
  /// Opens the main window under the native window `parent`. False without windows.
  virtual bool OpenMainWindow(void* /*parent*/) { return false; }
  virtual void RaiseMainWindow() {}
  virtual void CloseMainWindow() {}
  virtual CountdownDialog* CreateCountdownDialog() { return nullptr; }
  virtual ResimulationView* CreateResimulationView() { return nullptr; }
  /// Modal message box; flags and answer as CInterface::MessageBox.
  virtual int MessageBox(const std::string& title, const std::string& text, unsigned flags) = 0;
  /// The input configuration dialog of an instance.
  virtual void ShowInputConfig(const std::string& /*instanceName*/) {}
};

}  // namespace orv::rws::core
