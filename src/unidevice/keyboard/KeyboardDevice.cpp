#include "unidevice/keyboard/KeyboardDevice.h"

#include <algorithm>

#include "unidevice/KeyNames.h"
#include "unidevice/keyboard/KeyboardDriver.h"

namespace orv::unidevice {

KeyboardDevice::KeyboardDevice() {
  name = kKeyboardName;
  for (const Key& key : allKeys()) {
    std::string description = key.name;
    std::replace(description.begin(), description.end(), '_', ' ');
    m_controls.push_back(std::make_unique<Control>(kBinaryControl, key.name, 0, description, this));
    const auto code = static_cast<std::size_t>(key.code);
    if (code >= m_byCode.size()) m_byCode.resize(code + 1);
    m_byCode[code] = m_controls.back().get();
  }
}

KeyboardDevice::~KeyboardDevice() = default;

Control* KeyboardDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool KeyboardDevice::update() {
  if (driver) static_cast<KeyboardDriver*>(driver)->poll();
  return true;
}

Control* KeyboardDevice::keyAt(int code) const {
  return code >= 0 && code < static_cast<int>(m_byCode.size())
             ? m_byCode[static_cast<std::size_t>(code)]
             : nullptr;
}

}  // namespace orv::unidevice
