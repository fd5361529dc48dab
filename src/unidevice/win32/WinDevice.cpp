#include "unidevice/win32/WinDevice.h"

#include <cstddef>
#include <cstring>
#include <utility>

#include "util/Angles.h"
#include "util/win32/WideText.h"

namespace orv::unidevice {

namespace {

/// What an axis is asked to tell at its ends: more steps than any hardware has.
constexpr LONG kAxisEnd = 65535;

/// A control that hands out the effects of its device.
class WinControl : public Control {
 public:
  WinControl(std::uint32_t flags, std::string type, int index, std::string description,
             Device* device, std::shared_ptr<WinForce> force)
      : Control(flags, std::move(type), index, std::move(description), device),
        m_force(std::move(force)) {}

  bool hasForceFeedback() const override { return m_force->canPlay(); }

  FFEffect* createEffect(FFKind kind) override {
    // By itself an effect pushes along the axis that it was made for.
    const double direction = type == "Axis" && index == 1 ? util::kQuarterTurn : 0.0;
    return createWinEffect(m_force, kind, direction).release();
  }

 private:
  std::shared_ptr<WinForce> m_force;
};

}  // namespace

WinDevice* WinDevice::open(ComPointer<IDirectInputDevice8W> device, const GUID& instance,
                           std::string name, HWND window, std::string& problem) {
  if (FAILED(device->SetDataFormat(&c_dfDIJoystick2))) {
    problem = "it doesn't speak as a joystick";
    return nullptr;
  }
  std::unique_ptr<WinDevice> made(
      new WinDevice(std::move(device), instance, std::move(name), window));
  if (made->controlCount() == 0) {
    problem = "it has no axes, buttons or hats";
    return nullptr;
  }
  return made.release();
}

WinDevice::WinDevice(ComPointer<IDirectInputDevice8W> device, const GUID& instance,
                     std::string name, HWND window)
    : m_force(std::make_shared<WinForce>(std::move(device))),
      m_instance(instance),
      m_window(window) {
  this->name = std::move(name);
  findAxes();
  findButtonsAndHats();
}

WinDevice::~WinDevice() {
  m_controls.clear();  // tells the targets while the device still stands
  m_force->close();
}

void WinDevice::findAxes() {
  std::string description;
  const auto take = [&](DWORD offset, const char* type, int& index) {
    DIPROPRANGE range{
        {sizeof(DIPROPRANGE), sizeof(DIPROPHEADER), offset, DIPH_BYOFFSET}, -kAxisEnd, kAxisEnd};
    // The mapping of an input has a dead zone of its own.
    DIPROPDWORD deadzone{{sizeof(DIPROPDWORD), sizeof(DIPROPHEADER), offset, DIPH_BYOFFSET}, 0};
    IDirectInputDevice8W& device = *m_force->device();
    if (!has(offset, description) || FAILED(device.SetProperty(DIPROP_RANGE, &range.diph))) return;
    device.SetProperty(DIPROP_DEADZONE, &deadzone.diph);
    m_axes.push_back(offset);
    add(kInfiniteControl, type, index++, description);
  };
  int axes = 0;
  for (const DWORD offset : {DIJOFS_X, DIJOFS_Y, DIJOFS_Z, DIJOFS_RX, DIJOFS_RY, DIJOFS_RZ})
    take(offset, "Axis", axes);
  int sliders = 0;
  for (const DWORD offset : {DIJOFS_SLIDER(0), DIJOFS_SLIDER(1)}) take(offset, "Slider", sliders);
}

void WinDevice::findButtonsAndHats() {
  std::string description;
  for (DWORD i = 0; i < 128; ++i) {
    if (!has(DIJOFS_BUTTON(i), description)) continue;
    add(kBinaryControl, "Button", static_cast<int>(m_buttons.size()), description);
    m_buttons.push_back(i);
  }
  for (DWORD i = 0; i < 4; ++i) {
    if (!has(DIJOFS_POV(i), description)) continue;
    const int first = 2 * static_cast<int>(m_hats.size());
    add(kFiniteControl, "Hat", first, description + " (left/right)");
    add(kFiniteControl, "Hat", first + 1, description + " (down/up)");
    m_hats.push_back(i);
  }
}

bool WinDevice::has(DWORD offset, std::string& description) const {
  DIDEVICEOBJECTINSTANCEW object{};
  object.dwSize = sizeof object;
  if (FAILED(m_force->device()->GetObjectInfo(&object, offset, DIPH_BYOFFSET))) return false;
  description = util::toUtf8(object.tszName);
  return true;
}

void WinDevice::add(std::uint32_t flags, const char* type, int index, std::string description) {
  m_controls.push_back(
      std::make_unique<WinControl>(flags, type, index, std::move(description), this, m_force));
}

Control* WinDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool WinDevice::readState(DIJOYSTATE2& state) {
  IDirectInputDevice8W& device = *m_force->device();
  device.Poll();  // some need none
  if (SUCCEEDED(device.GetDeviceState(sizeof state, &state))) return true;
  // Another program that takes the device for itself alone ends our reading until it gives it back.
  return SUCCEEDED(device.Acquire()) && SUCCEEDED(device.GetDeviceState(sizeof state, &state));
}

bool WinDevice::update() {
  DIJOYSTATE2 state{};
  if (!readState(state)) return false;
  std::size_t next = 0;
  for (const DWORD offset : m_axes) {
    LONG value = 0;
    std::memcpy(&value, reinterpret_cast<const char*>(&state) + offset, sizeof value);
    m_controls[next++]->receive(static_cast<double>(value) / kAxisEnd);
  }
  for (const DWORD number : m_buttons)
    m_controls[next++]->receive((state.rgbButtons[number] & 0x80) != 0 ? 1.0 : 0.0);
  for (const DWORD number : m_hats) {
    const HatDirections hat = hatDirections(state.rgdwPOV[number]);
    m_controls[next++]->receive(hat.right);
    m_controls[next++]->receive(hat.up);
  }
  return true;
}

HatDirections hatDirections(DWORD angle) {
  if (angle >= 36000) return {};
  const DWORD step = (angle + 2250) / 4500 % 8;  // 0 is up, 2 right
  const int right = step == 0 || step == 4 ? 0 : step < 4 ? 1 : -1;
  const int up = step == 2 || step == 6 ? 0 : step > 2 && step < 6 ? -1 : 1;
  return {right, up};
}

}  // namespace orv::unidevice
