#include "core/windows/MainWindowDevices.h"

#include <vector>

#include "core/CoreImplementation.h"
#include "core/take/Diagnosis.h"
#include "core/windows/ControlWords.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ListBox.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::Item;
using gui::componentinterface::ListBox;

}  // namespace

void MainWindowDevices::OnBuilt() {
  ShowDevices();
  ShowBanner();
}

void MainWindowDevices::OnSettingsChanged() {
  ShowDevices();
  ShowBanner();
}

void MainWindowDevices::ShowDevices() {
  auto& drivers = unidevice::DriverManager::instance();
  std::vector<Item> items;
  for (int i = 0; i < drivers.count(); ++i) {
    const unidevice::Driver* driver = drivers.driver(i);
    // Its devices are this program's own.
    if (driver == &drivers.dummyDriver()) continue;
    for (int k = 0; k < driver->deviceCount(); ++k) {
      Item item;
      item.id = static_cast<int>(items.size());
      item.text = driver->device(k)->name;
      item.icon = "[coreimages]/icons/device.png";
      items.push_back(std::move(item));
    }
  }
  GetWindow().Tell(kDeviceHint, items.empty()
                                    ? Translate("No device is there. Plug in a pad or a wheel.")
                                    : std::string());
  With<ListBox>(kDeviceList, [&](ListBox& list) { list.SetItems(std::move(items)); });
}

void MainWindowDevices::ShowBanner() {
  m_bannerIsOld = false;
  std::string text;
  int more = -1;
  for (const Reason& reason : Diagnose(GetCore())) {
    if (reason.kind != Reason::Kind::kDeviceAbsent || ++more > 0) continue;
    text = Shown(reason.text);
  }
  if (more > 0)
    text = Translate(more == 1 ? "%1 So is one more input." : "%1 So are %2 more inputs.",
                     {text, std::to_string(more)});
  if (text == m_banner) return;
  m_banner = text;
  GetWindow().SetText(kMainBannerText, text);
  if (gui::Component* banner = GetWindow().Find(kMainBanner)) banner->SetVisible(!text.empty());
}

void MainWindowDevices::OnComponent(gui::Component& source, util::Message& message) {
  if ((source.GetId() == kMainBannerDevices && message.id == gui::kMsgClicked) ||
      (source.GetId() == kDeviceList && message.id == gui::kMsgActivated))
    GetWindows().Open(WindowKind::kDevices);
}

void MainWindowDevices::OnCore(const util::Message& message) {
  if (NewsIn<DevicesChanged>(message)) {
    ShowDevices();
    ShowBanner();
  } else if (NewsIn<InputsChanged>(message) || NewsIn<RowCreated>(message) ||
             NewsIn<RowDeleted>(message)) {
    m_bannerIsOld = true;
  }
}

void MainWindowDevices::OnLive() {
  // A resimulation takes the controls away for as long as it runs.
  if (m_bannerIsOld && GetCore().GetRunState() == RunState::kIdle) ShowBanner();
  const gui::Component* panel = GetWindow().Find(kPanelDevices);
  const bool shown = panel && panel->IsVisible();
  if (shown == (m_wake != nullptr)) return;
  m_wake = shown ? std::make_unique<DevicePolling::Wake>(GetCore()) : nullptr;
  if (shown) ShowDevices();
}

}  // namespace orv::rws::core::windows
