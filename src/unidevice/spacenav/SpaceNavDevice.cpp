#include "unidevice/spacenav/SpaceNavDevice.h"

#include <algorithm>
#include <utility>

#include "unidevice/spacenav/SpaceNavDriver.h"

namespace orv::unidevice {

namespace {

/// What the service tells of a cap that is pushed as far as it goes, at its usual sensitivity.
constexpr double kFull = 350.0;

constexpr const char* kAxisNames[] = {"Push right/left",   "Lift up/down", "Push along the table",
                                      "Tilt fore and aft", "Turn",         "Tilt sideways"};

}  // namespace

SpaceNavDevice::SpaceNavDevice(std::string name, int buttons) {
  this->name = std::move(name);
  for (int i = 0; i < kAxes; ++i)
    m_controls.push_back(
        std::make_unique<Control>(kInfiniteControl, "Axis", i, kAxisNames[i], this));
  for (int i = 0; i < buttons; ++i)
    m_controls.push_back(std::make_unique<Control>(kBinaryControl, "Button", i,
                                                   "Button " + std::to_string(i + 1), this));
}

SpaceNavDevice::~SpaceNavDevice() = default;

Control* SpaceNavDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool SpaceNavDevice::update() {
  if (driver) static_cast<SpaceNavDriver*>(driver)->takeEvents();
  return true;
}

void SpaceNavDevice::setAxes(const int (&values)[kAxes]) {
  for (int i = 0; i < kAxes; ++i) control(i)->receive(std::clamp(values[i] / kFull, -1.0, 1.0));
}

void SpaceNavDevice::setButton(int number, bool down) {
  if (Control* button = number < 0 ? nullptr : control(kAxes + number))
    button->receive(down ? 1.0 : 0.0);
}

}  // namespace orv::unidevice
