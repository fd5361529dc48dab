#include "app/studio/script/ScriptDevice.h"

#include <cmath>
#include <utility>

#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"

namespace orv::app {

ScriptDevice* ScriptDevice::Plug(const std::string& deviceName, const Controls& controls) {
  auto device = std::make_unique<ScriptDevice>(deviceName, controls);
  auto& drivers = unidevice::DriverManager::instance();
  if (!drivers.find(kDriver)) drivers.addDriver(std::make_unique<unidevice::Driver>(kDriver));
  ScriptDevice* const plugged = device.release();
  drivers.find(kDriver)->addDevice(plugged);
  return plugged;
}

ScriptDevice::ScriptDevice(const std::string& deviceName, const Controls& controls) {
  name = deviceName;
  Add(unidevice::kInfiniteControl, "Axis", controls.axes);
  Add(unidevice::kBinaryControl, "Button", controls.buttons);
  Add(unidevice::kFiniteControl, "Hat", 2 * controls.hats);
  m_values.resize(m_controls.size());
}

void ScriptDevice::Add(std::uint32_t kind, const char* type, int count) {
  for (int i = 0; i < count; ++i)
    m_controls.push_back(std::make_unique<unidevice::Control>(
        kind, type, i, type + (" " + std::to_string(i)), this));
}

ScriptDevice::~ScriptDevice() = default;

unidevice::Control* ScriptDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool ScriptDevice::update() {
  if (m_time) {
    const double time = m_time();
    for (std::size_t i = 0; i < m_fed.size(); ++i)
      m_values[static_cast<std::size_t>(m_fed[i])] = m_input.value(static_cast<int>(i), time);
    // Noise too is a function of the frame, however often it is polled.
    m_random = static_cast<unsigned>(std::lround(time * 1e5)) + 1u;
  }
  for (std::size_t i = 0; i < m_controls.size(); ++i) {
    double value = m_values[i];
    if (m_noise > 0.0 && m_controls[i]->flags == unidevice::kInfiniteControl) {
      m_random = m_random * 1664525u + 1013904223u;
      value += m_noise * ((m_random >> 8) / 8388608.0 - 1.0);
    }
    m_controls[i]->receive(value);
  }
  return true;
}

int ScriptDevice::IndexOf(const std::string& control) const {
  for (std::size_t i = 0; i < m_controls.size(); ++i)
    if (m_controls[i]->type + std::to_string(m_controls[i]->index) == control)
      return static_cast<int>(i);
  return -1;
}

bool ScriptDevice::Set(const std::string& control, double value) {
  const int index = IndexOf(control);
  if (index >= 0) m_values[static_cast<std::size_t>(index)] = value;
  return index >= 0;
}

bool ScriptDevice::Feed(const std::string& path, std::function<double()> time,
                        std::string& problem) {
  unidevice::RecordedInput input;
  const auto resolve = [this](const std::string& column) {
    unidevice::RecordedInput::Resolution found;
    found.known = IndexOf(column) >= 0;
    found.key = column;
    found.why = "the device has no such control (they are called Axis0, Button0 and so on)";
    return found;
  };
  if (!input.load(path, resolve, problem)) return false;
  m_input = std::move(input);
  m_fed.clear();
  for (const auto& column : m_input.columns) m_fed.push_back(IndexOf(column.key));
  m_time = std::move(time);
  return true;
}

}  // namespace orv::app
