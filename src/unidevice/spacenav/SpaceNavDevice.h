// A 3D mouse. Internal to its driver.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"

namespace orv::unidevice {

/// Six axes, three of pushing and three of turning, and buttons. Written by its driver.
class SpaceNavDevice : public Device {
 public:
  static constexpr int kAxes = 6;

  SpaceNavDevice(std::string name, int buttons);
  ~SpaceNavDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override;
  bool update() override;

  /// Values as the service has them.
  void setAxes(const int (&values)[kAxes]);
  void setButton(int number, bool down);

 private:
  std::vector<std::unique_ptr<Control>> m_controls;  ///< axes, then buttons
};

}  // namespace orv::unidevice
