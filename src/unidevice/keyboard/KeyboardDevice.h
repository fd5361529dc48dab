// The keys of all keyboards as one device.
#pragma once

#include <memory>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"

namespace orv::unidevice {

/// One binary control a key, whose type is the key's name. Written by the KeyboardDriver.
class KeyboardDevice : public Device {
 public:
  KeyboardDevice();
  ~KeyboardDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override;

  /// Polls the driver, which holds the state of the keys.
  bool update() override;

  /// The key of a code, or null.
  Control* keyAt(int code) const;

 private:
  std::vector<std::unique_ptr<Control>> m_controls;
  std::vector<Control*> m_byCode;
};

}  // namespace orv::unidevice
