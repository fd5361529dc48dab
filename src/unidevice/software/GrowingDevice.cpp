#include "unidevice/software/GrowingDevice.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "unidevice/DriverManager.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

GrowingDevice::GrowingDevice(std::string name, std::vector<Kind> kinds)
    : m_kinds(std::move(kinds)) {
  this->name = std::move(name);
}

GrowingDevice::~GrowingDevice() = default;

Control* GrowingDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

Control* GrowingDevice::findControl(const util::xml::Element& tag) {
  if (Control* found = Device::findControl(tag)) return found;
  // One that may be on any device is not made here: another device has it, or will.
  int index = -1;
  if (tag.attribute("device") != name || !util::parseNumber(tag.attribute("index"), index))
    return nullptr;
  const Kind* kind = kindOf(tag.attribute("type"), index);
  return kind ? &make(*kind, index) : nullptr;
}

bool GrowingDevice::hear(const std::string& type, int index, double value) {
  const Kind* kind = kindOf(type, index);
  if (!kind || std::isnan(value)) return false;
  const auto found = std::find_if(m_controls.begin(), m_controls.end(), [&](const auto& control) {
    return control->index == index && control->type == type;
  });
  const bool known = found != m_controls.end();
  Control& control = known ? **found : make(*kind, index);
  control.receive(std::clamp(value, kind->least, kind->most));
  if (!known) DriverManager::noteChange();
  return true;
}

const GrowingDevice::Kind* GrowingDevice::kindOf(const std::string& type, int index) const {
  for (const Kind& kind : m_kinds)
    if (type == kind.type && index >= 0 && index < kind.count) return &kind;
  return nullptr;
}

Control& GrowingDevice::make(const Kind& kind, int index) {
  m_controls.push_back(
      std::make_unique<Control>(kind.flags, kind.type, index, kind.describe(index), this));
  DriverManager& drivers = DriverManager::instance();
  if (const Calibration* found = drivers.calibrations().find({name, kind.type, index}))
    m_controls.back()->calibration = *found;
  return *m_controls.back();
}

}  // namespace orv::unidevice
