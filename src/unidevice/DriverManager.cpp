#include "unidevice/DriverManager.h"

#include <cmath>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/EmulatedTrinaryDevice.h"
#include "util/xml/Element.h"

namespace orv::unidevice {

namespace {

// Outside of the manager, so that a device that dies after it can still note the change.
std::uint64_t g_generation = 0;

}  // namespace

Control* strongerChange(Control* a, Control* b) {
  if (!a || !b) return a ? a : b;
  return std::abs(b->current - b->previous) > std::abs(a->current - a->previous) ? b : a;
}

DriverManager& DriverManager::instance() {
  static DriverManager manager;
  if (!manager.m_started) {
    // Not in the constructor: the emulator asks for this instance in order to join its driver.
    manager.m_started = true;
    new EmulatedTrinaryDevice;
  }
  return manager;
}

DriverManager::DriverManager() {
  auto dummy = std::make_unique<DummyDriver>();
  m_dummy = dummy.get();
  m_drivers.push_back(std::move(dummy));
}

DriverManager::~DriverManager() {
  while (!m_drivers.empty()) m_drivers.pop_back();
}

bool DriverManager::addDriver(std::unique_ptr<Driver> driver) {
  if (!driver || find(driver->name)) return false;
  m_drivers.push_back(std::move(driver));
  noteChange();
  return true;
}

bool DriverManager::removeDriver(const std::string& name) {
  for (std::size_t i = 1; i < m_drivers.size(); ++i) {
    if (m_drivers[i]->name != name) continue;
    const std::unique_ptr<Driver> gone = std::move(m_drivers[i]);
    m_drivers.erase(m_drivers.begin() + static_cast<std::ptrdiff_t>(i));
    noteChange();
    return true;
  }
  return false;
}

Driver* DriverManager::find(const std::string& name) const {
  for (const auto& driver : m_drivers)
    if (driver->name == name) return driver.get();
  return nullptr;
}

Driver* DriverManager::driver(int i) const {
  return i >= 0 && i < count() ? m_drivers[static_cast<std::size_t>(i)].get() : nullptr;
}

int DriverManager::count() const {
  return static_cast<int>(m_drivers.size());
}

DummyDriver& DriverManager::dummyDriver() const {
  return *m_dummy;
}

void DriverManager::updateAll() {
  for (const auto& driver : m_drivers) driver->update();
}

bool DriverManager::settleAll() {
  bool any = false;
  for (const auto& driver : m_drivers) any |= driver->settle();
  return any;
}

bool DriverManager::activateAll() {
  bool all = true;
  for (const auto& driver : m_drivers) all &= driver->activate();
  return all;
}

bool DriverManager::deactivateAll() {
  bool all = true;
  for (const auto& driver : m_drivers) all &= driver->deactivate();
  return all;
}

Control* DriverManager::detect(const std::vector<Control*>* exclude) {
  Control* candidate = nullptr;
  for (const auto& driver : m_drivers)
    candidate = strongerChange(candidate, driver->detect(exclude));
  return candidate;
}

Device* DriverManager::findDevice(const std::string& name) const {
  for (const auto& driver : m_drivers)
    for (Device* device : driver->devices)
      if (device->name == name) return device;
  return nullptr;
}

Control* DriverManager::findControl(const util::xml::Element& controlTag) {
  const std::string wanted = controlTag.attribute("device");
  for (const auto& driver : m_drivers) {
    for (int i = 0; i < driver->deviceCount(); ++i) {
      Device* device = driver->device(i);
      if (!wanted.empty() && device->name != wanted) continue;
      if (Control* found = device->findControl(controlTag)) return found;
    }
  }
  return nullptr;
}

std::uint64_t DriverManager::generation() {
  return g_generation;
}

void DriverManager::noteChange() {
  ++g_generation;
}

}  // namespace orv::unidevice
