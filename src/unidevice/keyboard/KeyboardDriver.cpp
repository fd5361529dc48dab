#include "unidevice/keyboard/KeyboardDriver.h"

#include <utility>

#include "unidevice/Control.h"
#include "unidevice/keyboard/KeyboardDevice.h"

namespace orv::unidevice {

KeyboardDriver::KeyboardDriver(std::unique_ptr<KeySource> source)
    : Driver(kName), m_source(std::move(source)), m_device(new KeyboardDevice) {
  addDevice(m_device);
}

KeyboardDriver::~KeyboardDriver() = default;

void KeyboardDriver::setKey(int code, bool down) {
  if (!m_source) show(code, down);
}

void KeyboardDriver::setActive(bool active) {
  m_active = active;
  // The release of a key that is held goes to another program.
  if (!active) m_held.clear();
  listen();
}

void KeyboardDriver::setTyping(bool typing) {
  m_typing = typing;
  listen();
}

bool KeyboardDriver::isMapped(int code) const {
  const Control* key = m_device->keyAt(code);
  return key && !key->targets.empty();
}

bool KeyboardDriver::activate() {
  m_awake = true;
  if (onActivate) onActivate();
  listen();
  return Driver::activate();
}

bool KeyboardDriver::deactivate() {
  m_awake = false;
  listen();
  return Driver::deactivate();
}

void KeyboardDriver::poll() {
  if (m_source && m_listening) m_source->poll([this](int code, bool down) { show(code, down); });
}

void KeyboardDriver::listen() {
  if (isListening() == m_listening) return;
  m_listening = isListening();
  if (m_source) {
    m_held.clear();
    m_source->listen(m_listening);
  }
  for (int i = 0; i < m_device->controlCount(); ++i) m_device->control(i)->receive(0.0);
  if (!m_listening) return;
  for (const int code : m_held) show(code, true);
}

void KeyboardDriver::show(int code, bool down) {
  if (down)
    m_held.insert(code);
  else
    m_held.erase(code);
  if (Control* key = m_device->keyAt(code)) key->receive(m_listening && down ? 1.0 : 0.0);
}

}  // namespace orv::unidevice
