#include "unidevice/sdl/SdlDevice.h"

#include <utility>

#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::unidevice {

namespace {

/// A control that hands out the effects of its device.
class SdlControl : public Control {
 public:
  SdlControl(std::uint32_t flags, std::string type, int index, std::string description,
             Device* device, std::shared_ptr<SdlForce> force)
      : Control(flags, std::move(type), index, std::move(description), device),
        m_force(std::move(force)) {}

  bool hasForceFeedback() const override { return m_force->canPlayAny(); }

  FFEffect* createEffect(FFKind kind) override {
    // By itself an effect pushes along the axis that it was made for.
    const double direction = type == "Axis" && index == 1 ? util::kQuarterTurn : 0.0;
    return createSdlEffect(m_force, kind, direction).release();
  }

 private:
  std::shared_ptr<SdlForce> m_force;
};

std::string axisName(int index) {
  static constexpr const char* kNames[] = {"X-Axis", "Y-Axis", "Z-Axis"};
  return index < 3 ? std::string(kNames[index]) : "Axis " + std::to_string(index + 1);
}

}  // namespace

double normalizedAxis(int value) {
  return value < 0 ? value / 32768.0 : value / 32767.0;
}

SdlDevice::SdlDevice(SDL_Joystick* joystick, std::string name, const PadNames& names)
    : m_force(std::make_shared<SdlForce>(joystick)),
      m_instance(SDL_JoystickInstanceID(joystick)),
      m_vendor(SDL_JoystickGetVendor(joystick)),
      m_product(SDL_JoystickGetProduct(joystick)),
      m_axes(SDL_JoystickNumAxes(joystick)),
      m_buttons(SDL_JoystickNumButtons(joystick)),
      m_hats(SDL_JoystickNumHats(joystick)) {
  this->name = std::move(name);
  const auto called = [&names](char kind, int i, const std::string& plain) {
    const auto found = names.find({kind, i});
    return found == names.end() ? plain : found->second;
  };
  for (int i = 0; i < m_axes; ++i) add(kInfiniteControl, "Axis", i, called('a', i, axisName(i)));
  for (int i = 0; i < m_buttons; ++i)
    add(kBinaryControl, "Button", i, called('b', i, "Button " + std::to_string(i + 1)));
  for (int i = 0; i < m_hats; ++i) {
    const std::string hat = called('h', i, "Hat " + std::to_string(i + 1));
    add(kFiniteControl, "Hat", 2 * i, hat + " (left/right)");
    add(kFiniteControl, "Hat", 2 * i + 1, hat + " (down/up)");
  }
}

SdlDevice::~SdlDevice() {
  m_controls.clear();  // tells the targets while the device still stands
  m_force->close();
}

void SdlDevice::add(std::uint32_t flags, const char* type, int index, std::string description) {
  m_controls.push_back(
      std::make_unique<SdlControl>(flags, type, index, std::move(description), this, m_force));
}

Control* SdlDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
}

bool SdlDevice::attached() const {
  return SDL_JoystickGetAttached(m_force->joystick()) == SDL_TRUE;
}

bool SdlDevice::update() {
  SDL_JoystickUpdate();
  if (!attached()) return false;
  SDL_Joystick* joystick = m_force->joystick();
  std::size_t next = 0;
  for (int i = 0; i < m_axes; ++i)
    m_controls[next++]->receive(normalizedAxis(SDL_JoystickGetAxis(joystick, i)));
  for (int i = 0; i < m_buttons; ++i)
    m_controls[next++]->receive(SDL_JoystickGetButton(joystick, i) ? 1.0 : 0.0);
  for (int i = 0; i < m_hats; ++i) {
    const int hat = SDL_JoystickGetHat(joystick, i);
    m_controls[next++]->receive(((hat & SDL_HAT_RIGHT) != 0) - ((hat & SDL_HAT_LEFT) != 0));
    m_controls[next++]->receive(((hat & SDL_HAT_UP) != 0) - ((hat & SDL_HAT_DOWN) != 0));
  }
  return true;
}

std::string SdlDevice::summary() const {
  return util::counted(m_axes, "axis", "axes") + ", " + util::counted(m_buttons, "button") + ", " +
         util::counted(m_hats, "hat");
}

}  // namespace orv::unidevice
