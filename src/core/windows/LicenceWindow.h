// What the licence allows.
#pragma once

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Tells the state of the licence, what it says, and which kinds of rigs it leaves out.
class LicenceWindow : public Window {
 public:
  explicit LicenceWindow(Windows& windows);

  void OnSettingsChanged() override { ShowLicence(); }

 protected:
  void OnBuilt() override { ShowLicence(); }
  void OnShown() override { ShowLicence(); }
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowLicence();
  void ShowKinds();
};

}  // namespace orv::rws::core::windows
