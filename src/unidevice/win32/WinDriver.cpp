#include "unidevice/win32/WinDriver.h"

#include <algorithm>
#include <utility>

#include "unidevice/win32/WinDevice.h"
#include "util/win32/WideText.h"

namespace orv::unidevice {

namespace {

/// Looks after a change: the first may come before DirectInput knows.
constexpr int kLooks = 3;
constexpr std::uint64_t kBetweenLooks = 1000;  ///< ms

/// The driver holds only devices that it made itself.
WinDevice& asWin(Device* device) {
  return *static_cast<WinDevice*>(device);
}

BOOL CALLBACK collectDevice(const DIDEVICEINSTANCEW* device, void* found) {
  static_cast<std::vector<DIDEVICEINSTANCEW>*>(found)->push_back(*device);
  return DIENUM_CONTINUE;
}

}  // namespace

ComPointer<IDirectInput8W> openDirectInput(std::string& problem) {
  void* input = nullptr;
  if (FAILED(DirectInput8Create(GetModuleHandleW(nullptr), DIRECTINPUT_VERSION, IID_IDirectInput8W,
                                &input, nullptr))) {
    problem = "DirectInput 8 can't be started";
    return nullptr;
  }
  return ComPointer<IDirectInput8W>(static_cast<IDirectInput8W*>(input));
}

WinDriver::WinDriver(ComPointer<IDirectInput8W> input, LogFn log)
    : Driver(kName),
      m_log(std::move(log)),
      m_hidden([this](UINT message, WPARAM, LPARAM) {
        if (message != WM_DEVICECHANGE) return;
        m_looks = kLooks;
        m_nextLook = 0;
        m_refused.clear();
      }),
      m_input(std::move(input)),
      m_window(m_hidden.handle()) {
  WinDriver::update();
}

WinDriver::~WinDriver() {
  while (!devices.empty()) devices.back()->destroy();
}

bool WinDriver::update() {
  const std::uint64_t now = GetTickCount64();
  if (m_input && m_looks > 0 && now >= m_nextLook) {
    --m_looks;
    m_nextLook = now + kBetweenLooks;
    dropGone();
    addNew();
  }
  return Driver::update();
}

void WinDriver::setWindow(void* window) {
  m_window = window ? static_cast<HWND>(window) : m_hidden.handle();
  for (Device* device : devices) asWin(device).setWindow(m_window);
}

void WinDriver::dropGone() {
  for (std::size_t i = devices.size(); i-- > 0;) {
    if (m_input->GetDeviceStatus(asWin(devices[i]).instance()) == DI_OK) continue;
    log("device \"" + devices[i]->name + "\" is gone: its inputs fall back to their offset");
    devices[i]->destroy();
  }
}

void WinDriver::addNew() {
  std::vector<DIDEVICEINSTANCEW> found;
  m_input->EnumDevices(DI8DEVCLASS_GAMECTRL, collectDevice, &found, DIEDFL_ATTACHEDONLY);
  for (const DIDEVICEINSTANCEW& each : found) {
    const GUID& guid = each.guidInstance;
    const bool known = std::any_of(devices.begin(), devices.end(), [&guid](Device* d) {
      return IsEqualGUID(asWin(d).instance(), guid);
    });
    const bool refused = std::any_of(m_refused.begin(), m_refused.end(),
                                     [&guid](const GUID& g) { return IsEqualGUID(g, guid); });
    if (!known && !refused) open(each);
  }
}

void WinDriver::open(const DIDEVICEINSTANCEW& found) {
  const std::string reported = util::toUtf8(found.tszProductName);
  const std::string wanted = reported.empty() ? "Joystick" : reported;
  IDirectInputDevice8W* opened = nullptr;
  std::string problem = "DirectInput refuses it";
  WinDevice* device = nullptr;
  if (SUCCEEDED(m_input->CreateDevice(found.guidInstance, &opened, nullptr)))
    device = WinDevice::open(ComPointer<IDirectInputDevice8W>(opened), found.guidInstance,
                             distinctName(wanted), m_window, problem);
  if (!device) {
    m_refused.push_back(found.guidInstance);
    log("device \"" + wanted + "\" can't be used: " + problem + " (plug it in again)");
    return;
  }
  addDevice(device);
  device->activate();
  log("device \"" + device->name + "\" is ready: " + std::to_string(device->controlCount()) +
      " controls");
}

void WinDriver::log(const std::string& line) const {
  if (m_log) m_log(line);
}

}  // namespace orv::unidevice
