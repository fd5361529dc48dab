#include "unidevice/win32/HookKeyboard.h"

#include "unidevice/KeyNames.h"
#include "unidevice/win32/HiddenWindow.h"
#include "unidevice/win32/ScanCodes.h"

namespace orv::unidevice {

HookKeyboard* HookKeyboard::s_listener = nullptr;

HookKeyboard::HookKeyboard() = default;

HookKeyboard::~HookKeyboard() {
  unhook();
}

bool HookKeyboard::activate() {
  if (!m_hook && !s_listener) {
    m_hook = SetWindowsHookExW(WH_KEYBOARD_LL, &HookKeyboard::take, GetModuleHandleW(nullptr), 0);
    if (m_hook) s_listener = this;
    setActive(isOurWindowActive());
    tellHeld();
  }
  return KeyboardDriver::activate() && m_hook;
}

bool HookKeyboard::deactivate() {
  unhook();
  setActive(false);
  return KeyboardDriver::deactivate();
}

bool HookKeyboard::update() {
  if (m_hook) setActive(isOurWindowActive());
  return KeyboardDriver::update();
}

void HookKeyboard::unhook() {
  if (!m_hook) return;
  UnhookWindowsHookEx(m_hook);
  m_hook = nullptr;
  s_listener = nullptr;
}

void HookKeyboard::tellHeld() {
  if (!isOurWindowActive()) return;
  for (const Key& key : allKeys()) {
    const ScanCode scan = scanCodeOf(key.code);
    const UINT place = static_cast<UINT>(scan.code) | (scan.extended ? 0xE000u : 0u);
    const UINT virtualKey = MapVirtualKeyW(place, MAPVK_VSC_TO_VK_EX);
    if (virtualKey && GetAsyncKeyState(static_cast<int>(virtualKey)) < 0) setKey(key.code, true);
  }
}

LRESULT CALLBACK HookKeyboard::take(int code, WPARAM message, LPARAM param) {
  if (code == HC_ACTION && s_listener) {
    const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(param);
    const bool active = isOurWindowActive();
    s_listener->setActive(active);
    const ScanCode scan{static_cast<int>(key.scanCode), (key.flags & LLKHF_EXTENDED) != 0};
    const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
    if (active) s_listener->setKey(keyCodeOf(scan), down);
  }
  return CallNextHookEx(nullptr, code, message, param);
}

}  // namespace orv::unidevice
