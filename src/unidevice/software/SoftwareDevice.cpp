#include "unidevice/software/SoftwareDevice.h"

#include <utility>

#include "unidevice/Control.h"

namespace orv::unidevice {

SoftwareDevice::SoftwareDevice(RecordedInput input, std::function<double()> time, std::string name)
    : Device(true), m_input(std::move(input)), m_time(std::move(time)) {
  this->name = std::move(name);
  for (std::size_t i = 0; i < m_input.columns.size(); ++i) {
    m_controls.push_back(std::make_unique<Control>(kInfiniteControl, kType, static_cast<int>(i),
                                                   m_input.columns[i].name, this));
  }
}

SoftwareDevice::~SoftwareDevice() = default;

int SoftwareDevice::controlCount() const {
  return static_cast<int>(m_controls.size());
}

Control* SoftwareDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool SoftwareDevice::update() {
  const double time = m_time();
  for (std::size_t i = 0; i < m_controls.size(); ++i)
    m_controls[i]->current = m_input.value(static_cast<int>(i), time);
  return true;
}

bool SoftwareDevice::settle() {
  update();
  for (const auto& control : m_controls) control->previous = control->current;
  return true;
}

Control* SoftwareDevice::controlFor(const std::string& key) const {
  return control(m_input.find(key));
}

}  // namespace orv::unidevice
