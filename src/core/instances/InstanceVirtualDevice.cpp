#include "core/instances/InstanceVirtualDevice.h"

#include <utility>

#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"

namespace orv::rws::core {

InstanceVirtualDevice::VirtualControl::VirtualControl(unidevice::Device* device, int index,
                                                      std::string description)
    : Control(unidevice::kBinaryControl | unidevice::kFiniteControl | unidevice::kInfiniteControl,
              "control", index, std::move(description), device) {}

InstanceVirtualDevice::InstanceVirtualDevice(const std::string& deviceName) {
  name = deviceName;
  if (auto* dummy = unidevice::DriverManager::instance().find(unidevice::DummyDriver::kName))
    dummy->addDevice(this);
}

InstanceVirtualDevice::~InstanceVirtualDevice() {
  m_controls.clear();
  if (driver) driver->removeDevice(this);
}

unidevice::Control* InstanceVirtualDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

InstanceVirtualDevice::VirtualControl* InstanceVirtualDevice::AddControl(
    const std::string& description) {
  m_controls.push_back(std::make_unique<VirtualControl>(this, controlCount(), description));
  return m_controls.back().get();
}

}  // namespace orv::rws::core
