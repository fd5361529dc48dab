// One game controller. Internal to the SDL driver.
#pragma once

#include <SDL.h>

#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/sdl/PadNames.h"
#include "unidevice/sdl/SdlEffect.h"

namespace orv::unidevice {

/// Device over an open SDL joystick, which it closes at its end.
class SdlDevice : public Device {
 public:
  /// Takes `joystick` over. `names`: of those of its controls that have any.
  SdlDevice(SDL_Joystick* joystick, std::string name, const PadNames& names);
  ~SdlDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override;

  /// Polls SDL and copies the state. False once the hardware is gone.
  bool update() override;

  /// SDL's number for this connection; never used again after an unplug.
  int instance() const { return m_instance; }

  unsigned vendor() const { return m_vendor; }    ///< USB id, 0 where there is none
  unsigned product() const { return m_product; }  ///< likewise

  /// False once the hardware is gone.
  bool attached() const;

  /// What the device has, such as "6 axes, 10 buttons, 1 hat".
  std::string summary() const;

 private:
  void add(std::uint32_t flags, const char* type, int index, std::string description);

  std::shared_ptr<SdlForce> m_force;  ///< shared with effects, which may outlive the device
  int m_instance = -1;
  unsigned m_vendor = 0, m_product = 0;
  int m_axes = 0;
  int m_buttons = 0;
  int m_hats = 0;
  std::vector<std::unique_ptr<Control>> m_controls;  ///< axes, buttons, then two per hat
};

/// [-32768, 32767] to [-1, 1], so that both ends and 0 are met exactly.
double normalizedAxis(int value);

}  // namespace orv::unidevice
