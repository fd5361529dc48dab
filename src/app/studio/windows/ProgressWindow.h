// How far long work has come.
#pragma once

#include <atomic>
#include <string>

#include "app/session/anyhost/Monitor.h"
#include "core/windows/Window.h"

namespace orv::app {

/// Shows itself when work takes longer than a moment, with a button that cancels it. Events are
/// handled meanwhile, of which its modality keeps those of a user from the other windows.
class ProgressWindow : public rws::core::windows::Window {
 public:
  ProgressWindow(rws::core::windows::Windows& windows, std::string title, std::string text);
  ~ProgressWindow() override;

  /// To be told by the work that is done while this one lives.
  Monitor MakeMonitor();
  bool IsCancelled() const { return m_cancel; }

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void Tell(double done, double seconds);

  const std::string m_title, m_text;
  std::atomic<bool> m_cancel{false};
  double m_told = 0.0;  ///< when it was told last (s)
};

}  // namespace orv::app
