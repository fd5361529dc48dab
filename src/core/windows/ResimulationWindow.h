// A resimulation while it runs.
#pragma once

#include "core/UserInterface.h"
#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Owned by the core's run.
class ResimulationWindow : public Window, public ResimulationView {
 public:
  explicit ResimulationWindow(Windows& windows);

  // ResimulationView
  void Open(bool canShowFrames, bool updateViewport) override;
  void SetStatus(const ResimulationStatus& status) override;
  void SetProgress(float progress) override;
  void Close() override { Hide(); }

 protected:
  void OnComponent(gui::Component& source, util::Message& message) override;
};

}  // namespace orv::rws::core::windows
