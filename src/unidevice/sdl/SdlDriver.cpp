#include "unidevice/sdl/SdlDriver.h"

#include <SDL.h>

#include <algorithm>

#include "unidevice/sdl/SdlDevice.h"

namespace orv::unidevice {

namespace {

/// The driver holds only devices that it made itself.
const SdlDevice& asSdl(const Device* device) {
  return *static_cast<const SdlDevice*>(device);
}

/// What SDL knows of the make of a pad.
PadNames namesOf(int sdlIndex) {
  char* const mapping = SDL_GameControllerMappingForDeviceIndex(sdlIndex);
  const PadNames names = mapping ? padNames(mapping) : PadNames();
  SDL_free(mapping);
  return names;
}

}  // namespace

SdlDriver::SdlDriver(LogFn log, ElsewhereFn elsewhere)
    : Driver(kName), m_log(std::move(log)), m_elsewhere(std::move(elsewhere)) {
  // Ctrl-C is the program's own, and a host's window need not be SDL's to have the focus.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  SDL_SetMainReady();
  if (SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
    m_error = std::string("joysticks can't be used: ") + SDL_GetError() +
              " (check that /dev/input is present and may be read)";
    this->log(m_error);
    return;
  }
  m_available = true;
  m_haptic = SDL_InitSubSystem(SDL_INIT_HAPTIC) == 0;
  if (!m_haptic) this->log(std::string("no force feedback: ") + SDL_GetError());
  // We read states; nobody takes the movements out of the queue, and a full queue would lose plugs.
  for (const Uint32 type :
       {SDL_JOYAXISMOTION, SDL_JOYBALLMOTION, SDL_JOYHATMOTION, SDL_JOYBUTTONDOWN, SDL_JOYBUTTONUP})
    SDL_EventState(type, SDL_IGNORE);
  SdlDriver::update();
}

SdlDriver::~SdlDriver() {
  while (!devices.empty()) devices.back()->destroy();
  if (m_haptic) SDL_QuitSubSystem(SDL_INIT_HAPTIC);
  if (m_available) SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
}

bool SdlDriver::update() {
  if (!m_available) return true;
  takeEvents();
  dropGone();
  addNew();
  return Driver::update();
}

void SdlDriver::takeEvents() {
  SDL_PumpEvents();
  SDL_JoystickUpdate();
  // Which devices there are is read from SDL itself; the queue is only kept from filling up.
  SDL_FlushEvents(SDL_JOYDEVICEADDED, SDL_JOYDEVICEREMOVED);
}

bool SdlDriver::speaksElsewhere(unsigned vendor, unsigned product) const {
  return m_elsewhere && m_elsewhere(vendor, product);
}

void SdlDriver::dropGone() {
  for (std::size_t i = devices.size(); i-- > 0;) {
    const SdlDevice& device = asSdl(devices[i]);
    if (device.attached() && !speaksElsewhere(device.vendor(), device.product())) continue;
    log("device \"" + devices[i]->name + "\" is gone: its inputs fall back to their offset");
    devices[i]->destroy();
  }
}

void SdlDriver::addNew() {
  for (int i = 0; i < SDL_NumJoysticks(); ++i) {
    const int instance = SDL_JoystickGetDeviceInstanceID(i);
    const bool known = std::any_of(devices.begin(), devices.end(), [instance](const Device* d) {
      return asSdl(d).instance() == instance;
    });
    if (instance < 0 || known || m_refused.count(instance) != 0) continue;
    if (speaksElsewhere(SDL_JoystickGetDeviceVendor(i), SDL_JoystickGetDeviceProduct(i))) continue;
    open(i, instance);
  }
}

void SdlDriver::open(int sdlIndex, int instance) {
  SDL_Joystick* joystick = SDL_JoystickOpen(sdlIndex);
  const char* reported = joystick ? SDL_JoystickName(joystick) : SDL_JoystickNameForIndex(sdlIndex);
  const std::string wanted = reported && *reported ? reported : "Joystick";
  if (!joystick) {
    m_refused.insert(instance);
    log("device \"" + wanted + "\" can't be opened: " + SDL_GetError() +
        " (check the permissions of /dev/input, then plug it in again)");
    return;
  }
  auto* device = new SdlDevice(joystick, distinctName(wanted), namesOf(sdlIndex));
  addDevice(device);
  log("device \"" + device->name + "\" is ready: " + device->summary());
}

void SdlDriver::log(const std::string& line) const {
  if (m_log) m_log(line);
}

}  // namespace orv::unidevice
