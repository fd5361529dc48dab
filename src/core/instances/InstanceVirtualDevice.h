// The device through which inputs reach a rig.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"

namespace orv::rws::core {

/// A device of the driver "dummydriver", with no hardware behind it. Its controls are values that
/// a program sets and that other rigs' inputs can be mapped to.
class InstanceVirtualDevice : public unidevice::Device {
 public:
  /// A control of a virtual device; input profiles name it with the type "control".
  class VirtualControl : public unidevice::Control {
   public:
    VirtualControl(unidevice::Device* device, int index, std::string description);
  };

  explicit InstanceVirtualDevice(const std::string& name);
  ~InstanceVirtualDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  unidevice::Control* control(int i) const override;
  bool update() override { return true; }

  /// Appends a control; it lives as long as the device.
  VirtualControl* AddControl(const std::string& description);

 private:
  std::vector<std::unique_ptr<VirtualControl>> m_controls;
};

}  // namespace orv::rws::core
