// The keyboard by Windows' low-level hook.
#pragma once

#include "unidevice/keyboard/KeyboardDriver.h"
#include "util/win32/Windows.h"

namespace orv::unidevice {

/// Tells itself the keys and whether one of our windows is the active one; what the program tells
/// is whether a text is typed. The hook is there while the devices are awake, since it slows all
/// programs' keys down. Its procedure writes the controls; Windows calls it on the thread that woke
/// the devices, while that handles messages. There can be one at a time.
class HookKeyboard : public KeyboardDriver {
 public:
  HookKeyboard();
  ~HookKeyboard() override;

  bool activate() override;
  bool deactivate() override;
  /// Lets all keys go when another program's window has become the active one.
  bool update() override;

 private:
  static LRESULT CALLBACK take(int code, WPARAM message, LPARAM param);
  void unhook();
  /// Keys that were down before the hook was there.
  void tellHeld();

  static HookKeyboard* s_listener;
  HHOOK m_hook = nullptr;
};

}  // namespace orv::unidevice
