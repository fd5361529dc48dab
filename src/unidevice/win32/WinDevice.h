// One game controller. Internal to the DirectInput driver.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/win32/DirectInput.h"
#include "unidevice/win32/WinEffect.h"

namespace orv::unidevice {

class WinDevice : public Device {
 public:
  /// Null if the device can't be set up; then `problem` tells why. `window` is any of ours.
  static WinDevice* open(ComPointer<IDirectInputDevice8W> device, const GUID& instance,
                         std::string name, HWND window, std::string& problem);
  ~WinDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override;

  /// Reads the state. False while the device can't be read; the controls keep their values then.
  bool update() override;
  bool activate() override { return m_force->acquire(m_window); }

  /// DirectInput's name for this device, which it keeps when it is plugged in again.
  const GUID& instance() const { return m_instance; }
  /// The window from the next `activate` on.
  void setWindow(HWND window) { m_window = window; }

 private:
  WinDevice(ComPointer<IDirectInputDevice8W> device, const GUID& instance, std::string name,
            HWND window);
  void findAxes();
  void findButtonsAndHats();
  bool has(DWORD offset, std::string& description) const;
  void add(std::uint32_t flags, const char* type, int index, std::string description);
  bool readState(DIJOYSTATE2& state);

  std::shared_ptr<WinForce> m_force;  ///< shared with effects, which may outlive the device
  GUID m_instance;
  HWND m_window;
  std::vector<DWORD> m_axes;     ///< offsets in DIJOYSTATE2 of axes, then of sliders
  std::vector<DWORD> m_buttons;  ///< numbers there
  std::vector<DWORD> m_hats;     ///< likewise
  std::vector<std::unique_ptr<Control>> m_controls;  ///< in this order, two per hat
};

/// Directions of a hat at an angle of hundredths of degrees from up, clockwise, in eight steps; all
/// that is no angle is the centre. Right and up are 1.
struct HatDirections {
  int right = 0;
  int up = 0;
};
HatDirections hatDirections(DWORD angle);

}  // namespace orv::unidevice
