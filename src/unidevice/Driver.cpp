#include "unidevice/Driver.h"

#include <algorithm>

#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"

namespace orv::unidevice {

Driver::~Driver() {
  while (!devices.empty()) {
    Device* last = devices.back();
    devices.pop_back();
    last->driver = nullptr;
    last->destroy();
    DriverManager::noteChange();
  }
}

bool Driver::update() {
  for (std::size_t i = 0; i < devices.size(); ++i) devices[i]->update();
  return true;
}

bool Driver::settle() {
  bool any = false;
  for (std::size_t i = 0; i < devices.size(); ++i) any |= devices[i]->settle();
  return any;
}

Control* Driver::detect(const std::vector<Control*>* exclude) {
  Control* candidate = nullptr;
  for (std::size_t i = 0; i < devices.size(); ++i)
    candidate = strongerChange(candidate, devices[i]->detectControl(exclude));
  return candidate;
}

bool Driver::addDevice(Device* device) {
  device->driver = this;
  devices.push_back(device);
  // A software device joins its driver before it has any controls.
  DriverManager& drivers = DriverManager::instance();
  if (this != &drivers.dummyDriver()) drivers.calibrations().applyTo(*device);
  DriverManager::noteChange();
  return true;
}

bool Driver::removeDevice(Device* device) {
  const auto found = std::find(devices.begin(), devices.end(), device);
  if (found == devices.end()) return false;
  devices.erase(found);
  device->driver = nullptr;
  DriverManager::noteChange();
  return true;
}

Device* Driver::device(int i) const {
  return i >= 0 && i < deviceCount() ? devices[static_cast<std::size_t>(i)] : nullptr;
}

int Driver::deviceCount() const {
  return static_cast<int>(devices.size());
}

bool Driver::activate() {
  bool all = true;
  for (std::size_t i = 0; i < devices.size(); ++i) all &= devices[i]->activate();
  return all;
}

bool Driver::deactivate() {
  bool all = true;
  for (std::size_t i = 0; i < devices.size(); ++i) all &= devices[i]->deactivate();
  return all;
}

std::string Driver::distinctName(const std::string& wanted) const {
  for (int number = 1;; ++number) {
    const std::string name = number == 1 ? wanted : wanted + " #" + std::to_string(number);
    const bool taken = std::any_of(devices.begin(), devices.end(),
                                   [&name](const Device* d) { return d->name == name; });
    if (!taken) return name;
  }
}

void Driver::destroy() {
  delete this;
}

}  // namespace orv::unidevice
