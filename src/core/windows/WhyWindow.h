// What keeps rigs from moving.
#pragma once

#include <memory>
#include <vector>

#include "core/take/DevicePolling.h"
#include "core/take/Diagnosis.h"
#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Looks again each second while it is shown, with the devices awake: a control that is moved tells
/// whether its input hears it.
class WhyWindow : public Window {
 public:
  explicit WhyWindow(Windows& windows);

  void OnLive() override;

 protected:
  void OnShown() override;
  void OnHidden() override { m_wake.reset(); }
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void Look();
  void ShowRemedy();
  /// Null when none is selected.
  const Reason* GetSelected() const;

  std::vector<Reason> m_reasons;
  std::unique_ptr<DevicePolling::Wake> m_wake;
  int m_rounds = 0;  ///< of OnLive since the last look
};

}  // namespace orv::rws::core::windows
