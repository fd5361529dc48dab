// The devices of the main window.
#pragma once

#include <memory>
#include <string>

#include "core/take/DevicePolling.h"
#include "core/windows/MainWindowPage.h"

namespace orv::rws::core::windows {

/// Lists the devices that are there, and says at the top of the window when one is away that an
/// input is mapped to.
class MainWindowDevices : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;
  void OnLive() override;
  void OnSettingsChanged() override;

 private:
  void ShowDevices();
  void ShowBanner();

  bool m_bannerIsOld = false;
  std::string m_banner;
  std::unique_ptr<DevicePolling::Wake> m_wake;  ///< while the page is shown
};

}  // namespace orv::rws::core::windows
