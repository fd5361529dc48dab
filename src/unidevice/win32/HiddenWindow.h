// A window for messages.
#pragma once

#include <functional>

#include "util/win32/Windows.h"

namespace orv::unidevice {

/// A window that is never shown. It is no child of another, so that it gets what Windows tells all
/// programs. Its messages come while the thread that made it handles its own.
class HiddenWindow {
 public:
  using Handler = std::function<void(UINT message, WPARAM wide, LPARAM param)>;

  explicit HiddenWindow(Handler handler);
  ~HiddenWindow();
  HiddenWindow(const HiddenWindow&) = delete;
  HiddenWindow& operator=(const HiddenWindow&) = delete;

  /// Null if Windows has refused it.
  HWND handle() const { return m_handle; }

 private:
  static LRESULT CALLBACK take(HWND window, UINT message, WPARAM wide, LPARAM param);

  Handler m_handler;
  HWND m_handle = nullptr;
};

/// Whether the window that gets the keys belongs to this process.
bool isOurWindowActive();

}  // namespace orv::unidevice
