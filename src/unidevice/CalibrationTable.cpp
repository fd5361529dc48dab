#include "unidevice/CalibrationTable.h"

#include <algorithm>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"

namespace orv::unidevice {

void CalibrationTable::set(const ControlName& control, const Calibration& calibration) {
  const auto found = std::find_if(m_all.begin(), m_all.end(),
                                  [&](const auto& entry) { return entry.control == control; });
  if (calibration.kind == Calibration::Kind::kNone) {
    if (found != m_all.end()) m_all.erase(found);
  } else if (found != m_all.end()) {
    found->calibration = calibration;
  } else {
    m_all.push_back({control, calibration});
  }
  applyToPresent();
}

bool CalibrationTable::clear(const ControlName& control) {
  if (!find(control)) return false;
  set(control, {});
  return true;
}

void CalibrationTable::replace(std::vector<CalibratedControl> all) {
  m_all = std::move(all);
  applyToPresent();
}

const Calibration* CalibrationTable::find(const ControlName& control) const {
  for (const CalibratedControl& entry : m_all)
    if (entry.control == control) return &entry.calibration;
  return nullptr;
}

void CalibrationTable::applyTo(Device& device) const {
  for (int i = 0; i < device.controlCount(); ++i) {
    Control& control = *device.control(i);
    const Calibration* const found = find({device.name, control.type, control.index});
    const Calibration wanted = found ? *found : Calibration();
    if (control.calibration == wanted) continue;
    control.calibration = wanted;
    control.receive(control.hardware);
  }
}

void CalibrationTable::applyToPresent() const {
  DriverManager& drivers = DriverManager::instance();
  for (int i = 0; i < drivers.count(); ++i) {
    if (drivers.driver(i) == &drivers.dummyDriver()) continue;
    for (Device* device : drivers.driver(i)->devices) applyTo(*device);
  }
}

}  // namespace orv::unidevice
