// The seconds before a take.
#pragma once

#include "core/UserInterface.h"
#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Owned by the core while it needs one.
class CountdownWindow : public Window, public CountdownDialog {
 public:
  explicit CountdownWindow(Windows& windows);

  // CountdownDialog
  void Set(int seconds, double fraction) override;
  void Show() override { Window::Show(); }
  void Hide() override { Window::Hide(); }

 protected:
  void OnComponent(gui::Component& source, util::Message& message) override;
};

}  // namespace orv::rws::core::windows
