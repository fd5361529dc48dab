// The devices that are there, with all that they tell.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/take/DevicePolling.h"
#include "core/windows/CalibrationPanel.h"
#include "core/windows/ControlLamps.h"
#include "core/windows/LiveBar.h"
#include "core/windows/Window.h"
#include "unidevice/ControlChoice.h"

namespace orv::unidevice {
class Control;
class Device;
}  // namespace orv::unidevice

namespace orv::rws::core::windows {

/// Shows every control live: axes and hats as bars with how far they shake, buttons as lamps. Of
/// the chosen axis the calibration. Names what inputs are mapped to and is away. The devices are
/// awake while it is shown.
class DevicesWindow : public Window {
 public:
  explicit DevicesWindow(Windows& windows);
  ~DevicesWindow() override;

  void OnLive() override;
  void OnSettingsChanged() override;

 protected:
  void OnBuilt() override;
  void OnShown() override;
  void OnHidden() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;

 private:
  static constexpr int kRecent = 15;  ///< rounds, a second

  struct ControlRow {
    unidevice::ControlChoice choice;
    int index;             ///< on its device
    gui::Component* root;  ///< of the row's document
    std::unique_ptr<LiveBar> bar;
    std::array<double, kRecent> recent{};
    std::string noise;  ///< how far it shakes, in words
  };
  struct DeviceRow {
    unidevice::Device* device;  ///< good while the list of devices is the one that is shown
    gui::Component* root;
    std::vector<ControlRow> controls;
    std::vector<int> buttons;  ///< indices on the device
    std::unique_ptr<ControlLamps> lamps;
  };

  void Release();
  void ShowDevices();
  void AddDevice(unidevice::Device& device, gui::Component& into);
  void AddControl(DeviceRow& row, const unidevice::Control& control, int index);
  void AddLamps(DeviceRow& row);
  void ShowCalibrations();
  void ShowAbsent();
  void ShowLive(DeviceRow& row);
  void ShowLive(ControlRow& row, const unidevice::Control& control);
  void Choose(const unidevice::ControlChoice& choice);

  std::vector<DeviceRow> m_devices;
  std::uint64_t m_generation = 0;     ///< of the list of devices that is shown
  unidevice::ControlChoice m_chosen;  ///< its type is empty: none
  CalibrationPanel m_calibration;
  int m_round = 0;
  std::unique_ptr<DevicePolling::Wake> m_wake;
};

}  // namespace orv::rws::core::windows
