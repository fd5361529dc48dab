#include <string>

#include "Check.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/KeyNames.h"
#include "unidevice/win32/HiddenWindow.h"
#include "unidevice/win32/HookKeyboard.h"
#include "unidevice/win32/ScanCodes.h"
#include "unidevice/win32/WintabDriver.h"

namespace orv::tests {

namespace {

using namespace orv::unidevice;

void handleMessages() {
  MSG message;
  const ULONGLONG end = GetTickCount64() + 200;
  do {
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    Sleep(5);
  } while (GetTickCount64() < end);
}

/// A key at a place of the keyboard, as the hardware tells it.
void press(ScanCode scan, bool down) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = static_cast<WORD>(scan.code);
  input.ki.dwFlags = KEYEVENTF_SCANCODE | (down ? 0 : KEYEVENTF_KEYUP) |
                     (scan.extended ? KEYEVENTF_EXTENDEDKEY : 0);
  SendInput(1, &input, sizeof input);
  handleMessages();
}

/// The value of the only control of this type and index; some impossible one without it.
double valueOf(const Driver& driver, const std::string& type, int index = 0) {
  const Device* device = driver.device(0);
  for (int i = 0; device && i < device->controlCount(); ++i) {
    const Control& control = *device->control(i);
    if (control.type == type && control.index == index) return control.read();
  }
  return 1e9;
}

void testScanCodes() {
  for (const Key& key : allKeys()) CHECK_EQ(key.code, keyCodeOf(scanCodeOf(key.code)));
  CHECK_EQ(17, keyCodeOf({0x11, false}));  // W
  CHECK_EQ(103, keyCodeOf({0x48, true}));  // Up_Arrow, where Num_8 is the other
  CHECK_EQ(72, keyCodeOf({0x48, false}));
  CHECK_EQ(-1, keyCodeOf({0x21D, false}));  // what comes with AltGr
}

void testKeys() {
  HookKeyboard keyboard;
  CHECK(keyboard.activate());
  press({0x11, false}, true);
  CHECK_EQ(0.0, valueOf(keyboard, "W"));  // none of our windows is there
  press({0x11, false}, false);

  const HWND window = CreateWindowExW(0, L"RigwrightDevices", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                      0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  handleMessages();
  CHECK(isOurWindowActive());
  press({0x11, false}, true);
  press({0x48, true}, true);
  CHECK_EQ(1.0, valueOf(keyboard, "W"));
  CHECK_EQ(1.0, valueOf(keyboard, "Up_Arrow"));
  CHECK_EQ(0.0, valueOf(keyboard, "Num_8"));
  press({0x48, true}, false);
  CHECK_EQ(0.0, valueOf(keyboard, "Up_Arrow"));
  CHECK_EQ(1.0, valueOf(keyboard, "W"));
  DestroyWindow(window);  // with the key held
  handleMessages();
  keyboard.update();
  CHECK_EQ(0.0, valueOf(keyboard, "W"));
  press({0x11, false}, false);
  CHECK(keyboard.deactivate());
}

wintab::Context g_context;
HWND g_owner = nullptr;
wintab::Packet g_packet;
const wintab::Handle kContext = reinterpret_cast<wintab::Handle>(1);

UINT WINAPI info(UINT category, UINT index, void* output) {
  if (category == wintab::kInterface && index == wintab::kDeviceCount)
    return *static_cast<UINT*>(output) = 1, 4;
  if (category == wintab::kSystemContext) {
    auto& context = *static_cast<wintab::Context*>(output);
    context = {};
    context.inOrigin[0] = 1000;
    context.inExtent[0] = 4000;
    context.inExtent[1] = 3000;
    return sizeof context;
  }
  if (category != wintab::kDevices) return 0;
  auto* axes = static_cast<wintab::Axis*>(output);
  if (index == wintab::kPressureAxis) return axes[0] = {0, 1023, 0, 0}, 16;
  for (int i = 0; i < 3; ++i) axes[i] = {0, 3600, 3, 10 << 16};
  return 48;
}

wintab::Handle WINAPI openContext(HWND window, wintab::Context* context, BOOL) {
  g_owner = window;
  g_context = *context;
  return kContext;
}

BOOL WINAPI closeContext(wintab::Handle context) {
  g_owner = nullptr;
  return context == kContext;
}

BOOL WINAPI takePacket(wintab::Handle context, UINT serial, void* packet) {
  *static_cast<wintab::Packet*>(packet) = g_packet;
  return context == kContext && serial == 5;
}

BOOL WINAPI putOnTop(wintab::Handle, BOOL) {
  return TRUE;
}

void testPen() {
  wintab::Api none;
  std::string problem;
  // Wine has a library without a tablet, another machine perhaps none.
  if (wintab::load(none, problem)) WintabDriver(none).activate();

  WintabDriver driver({info, openContext, closeContext, takePacket, putOnTop});
  CHECK(driver.activate());
  CHECK_EQ(wintab::kPacketData, g_context.packetData);
  const HWND window = CreateWindowExW(0, L"RigwrightDevices", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                      0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  handleMessages();
  driver.update();
  // Leaning to the right by 30 degrees from upright, turned by a quarter against the clock.
  g_packet = {1 | 4, 5000, 750, 1023, 900, 600, 2700};
  SendMessageW(g_owner, wintab::kPacketMessage, 5, reinterpret_cast<LPARAM>(kContext));
  const double wanted[] = {1.0, -0.5, 0.5, 0.0, -0.5};
  for (int i = 0; i < 5; ++i) CHECK_NEAR(wanted[i], valueOf(driver, "Axis", i));
  CHECK_EQ(1.0, valueOf(driver, "Slider"));
  const double buttons[] = {1.0, 0.0, 1.0, 1.0};
  for (int i = 0; i < 4; ++i) CHECK_EQ(buttons[i], valueOf(driver, "Button", i));
  SendMessageW(g_owner, wintab::kProximityMessage, 1, 0);
  CHECK_EQ(0.0, valueOf(driver, "Slider"));
  CHECK_EQ(0.0, valueOf(driver, "Button", 3));
  CHECK_NEAR(1.0, valueOf(driver, "Axis", 0));
  DestroyWindow(window);
  CHECK(driver.deactivate());
  CHECK(!g_owner);
}

}  // namespace

void testKeysAndPen() {
  testScanCodes();
  testKeys();
  testPen();
}

}  // namespace orv::tests
