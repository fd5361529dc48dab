#include "unidevice/win32/HiddenWindow.h"

#include <utility>

namespace orv::unidevice {

HiddenWindow::HiddenWindow(Handler handler) : m_handler(std::move(handler)) {
  WNDCLASSW kind{};
  kind.lpfnWndProc = &HiddenWindow::take;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.lpszClassName = L"RigwrightDevices";
  RegisterClassW(&kind);  // fails from the second time on, as the class is there
  m_handle = CreateWindowExW(0, kind.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                             kind.hInstance, nullptr);
  if (m_handle) SetWindowLongPtrW(m_handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HiddenWindow::~HiddenWindow() {
  if (!m_handle) return;
  SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
  DestroyWindow(m_handle);
}

LRESULT CALLBACK HiddenWindow::take(HWND window, UINT message, WPARAM wide, LPARAM param) {
  auto* self = reinterpret_cast<HiddenWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self) self->m_handler(message, wide, param);
  return DefWindowProcW(window, message, wide, param);
}

bool isOurWindowActive() {
  DWORD process = 0;
  const HWND active = GetForegroundWindow();
  return active && GetWindowThreadProcessId(active, &process) != 0 &&
         process == GetCurrentProcessId();
}

}  // namespace orv::unidevice
