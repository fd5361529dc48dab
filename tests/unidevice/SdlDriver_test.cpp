#include "unidevice/sdl/SdlDriver.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <tuple>

#include "unidevice/Control.h"
#include "unidevice/DriverManager.h"
#include "unidevice/FFEffect.h"
#include "unidevice/Property.h"
#include "unidevice/sdl/SdlDevice.h"

namespace orv::unidevice {
namespace {

/// What SDL is made to refuse. The two functions below stand before the library's own.
bool g_initFails = false, g_openFails = false;

template <class Function>
Function original(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

struct Rumble {
  int calls = 0;
  Uint16 low = 0;
};

/// A controller plugged into SDL by software. SDL itself must be running.
class VirtualPad {
 public:
  explicit VirtualPad(const char* name, Rumble* rumble = nullptr) {
    SDL_VirtualJoystickDesc desc;
    SDL_zero(desc);
    desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    desc.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    desc.naxes = 3;
    desc.nbuttons = 4;
    desc.nhats = 2;
    desc.name = name;
    desc.userdata = rumble;
    if (rumble) {
      desc.Rumble = [](void* data, Uint16 low, Uint16) {
        ++static_cast<Rumble*>(data)->calls;
        static_cast<Rumble*>(data)->low = low;
        return 0;
      };
    }
    const int index = SDL_JoystickAttachVirtualEx(&desc);
    EXPECT_GE(index, 0) << SDL_GetError();
    joystick = SDL_JoystickOpen(index);
    EXPECT_NE(joystick, nullptr) << SDL_GetError();
  }
  ~VirtualPad() {
    if (joystick) unplug();
  }

  void unplug() {
    const SDL_JoystickID id = SDL_JoystickInstanceID(joystick);
    for (int i = 0; i < SDL_NumJoysticks(); ++i)
      if (SDL_JoystickGetDeviceInstanceID(i) == id) SDL_JoystickDetachVirtual(i);
    SDL_JoystickClose(joystick);
    joystick = nullptr;
  }

  SDL_Joystick* joystick = nullptr;
};

/// The driver in the process's list for the time of a test, with no raw USB access.
struct Sdl {
  Sdl() {
    SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
    auto owned =
        std::make_unique<SdlDriver>([this](const std::string& line) { log += line + "\n"; });
    driver = owned.get();
    EXPECT_TRUE(driver->available()) << driver->error();
    real = driver->deviceCount();
    DriverManager::instance().addDriver(std::move(owned));
  }
  ~Sdl() {
    if (driver) DriverManager::instance().removeDriver(SdlDriver::kName);
  }
  Device* find(const std::string& name) { return DriverManager::instance().findDevice(name); }

  std::string log;
  SdlDriver* driver = nullptr;
  int real = 0;
};

TEST(SdlDriver, AxesButtonsAndHatsArriveNormalised) {
  struct sigaction before, after;
  sigaction(SIGINT, nullptr, &before);
  Sdl sdl;
  sigaction(SIGINT, nullptr, &after);
  EXPECT_EQ(before.sa_handler, after.sa_handler) << "an interrupt is the program's own business";
  VirtualPad pad("Test Pad");
  sdl.driver->update();
  Device* device = sdl.find("Test Pad");
  ASSERT_NE(device, nullptr);
  EXPECT_NE(sdl.log.find("device \"Test Pad\" is ready: 3 axes, 4 buttons, 2 hats"),
            std::string::npos);
  ASSERT_EQ(device->controlCount(), 3 + 4 + 4);
  EXPECT_TRUE(!device->control(11) && !device->control(-1));
  const std::pair<Sint16, double> axis[] = {
      {32767, 1.0}, {-32768, -1.0}, {16384, 16384 / 32767.0}, {-16384, -0.5}};
  for (const auto& [raw, value] : axis) {
    SDL_JoystickSetVirtualAxis(pad.joystick, 1, raw);
    EXPECT_TRUE(device->update());
    EXPECT_EQ(device->control(1)->current, value);
    EXPECT_EQ(device->control(0)->current, 0.0);
  }
  SDL_JoystickSetVirtualButton(pad.joystick, 3, 1);
  SDL_JoystickSetVirtualHat(pad.joystick, 0, SDL_HAT_LEFTUP);
  SDL_JoystickSetVirtualHat(pad.joystick, 1, SDL_HAT_DOWN);
  sdl.driver->update();
  using Row = std::tuple<int, std::uint32_t, std::string, int, double>;
  for (const Row& row : {Row{0, kInfiniteControl, "Axis", 0, 0.0},
                         {5, kBinaryControl, "Button", 2, 0.0},
                         {6, kBinaryControl, "Button", 3, 1.0},
                         {7, kFiniteControl, "Hat", 0, -1.0},
                         {8, kFiniteControl, "Hat", 1, 1.0},
                         {9, kFiniteControl, "Hat", 2, 0.0},
                         {10, kFiniteControl, "Hat", 3, -1.0}}) {
    const int at = std::get<0>(row);
    const Control& control = *device->control(at);
    EXPECT_EQ(Row(at, control.flags, control.type, control.index, control.current), row);
    EXPECT_EQ(control.detectionThreshold, 0.1) << at;
  }
  EXPECT_TRUE(device->settle());
  EXPECT_EQ(device->detectControl(nullptr), nullptr);
  SDL_JoystickSetVirtualAxis(pad.joystick, 2, -9000);
  EXPECT_EQ(sdl.driver->detect(nullptr), device->control(2));
}

TEST(SdlDriver, IdenticalDevicesAreToldApartAndComeAndGo) {
  Sdl sdl;
  VirtualPad first("Twin"), second("Twin");
  sdl.driver->update();
  EXPECT_EQ(sdl.driver->deviceCount(), sdl.real + 2);
  ASSERT_TRUE(sdl.find("Twin") && sdl.find("Twin #2"));
  Property gas("Gas"), brake("Brake");
  gas.offset = 0.25;
  gas.deadzone = brake.deadzone = 0.0;
  gas.assign(sdl.find("Twin")->control(0));
  brake.assign(sdl.find("Twin #2")->control(0));
  SDL_JoystickSetVirtualAxis(first.joystick, 0, 32767);
  SDL_JoystickSetVirtualAxis(second.joystick, 0, -32768);
  sdl.driver->update();
  EXPECT_EQ(gas.read(), 1.25);
  EXPECT_EQ(brake.read(), -1.0);

  // Movements do not fill the queue that plugs arrive by.
  for (int i = 0; i < 70000; ++i) {
    SDL_JoystickSetVirtualAxis(first.joystick, 0, static_cast<Sint16>(i % 2 ? 32767 : -32768));
    sdl.find("Twin")->update();
  }
  EXPECT_EQ(SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_JOYAXISMOTION, SDL_JOYBUTTONUP), 0);
  // In the middle of a take: one falls back to its offset, the other goes on.
  first.unplug();
  EXPECT_FALSE(sdl.find("Twin")->update());
  sdl.driver->update();
  EXPECT_EQ(sdl.find("Twin"), nullptr);
  EXPECT_EQ(gas.read(), 0.25);
  EXPECT_EQ(brake.read(), -1.0);
  EXPECT_NE(sdl.log.find("device \"Twin\" is gone"), std::string::npos);
  EXPECT_EQ(sdl.log.find("device \"Twin #2\" is gone"), std::string::npos);
  DriverManager::instance().removeDriver(SdlDriver::kName);
  sdl.driver = nullptr;
  EXPECT_EQ(brake.control, nullptr);
  EXPECT_EQ(brake.read(), 0.0);
  second.joystick = nullptr;  // SDL has closed it with the last user
}

TEST(SdlDriver, PadsAreDescribedByTheirMakeAndKeepTheirNumbers) {
  Sdl sdl;
  VirtualPad pad("Known Pad");  // SDL knows its first axes and its buttons
  sdl.driver->update();
  Device* device = sdl.find("Known Pad");
  ASSERT_NE(device, nullptr);
  const char* expected[] = {
      "Left stick (left/right)", "Left stick (up/down)", "Z-Axis", "A", "B", "X", "Y",
      "Hat 1 (left/right)"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(device->control(i)->description, expected[i]) << i;
  EXPECT_EQ(device->control(6)->type + std::to_string(device->control(6)->index), "Button3");

  const PadNames expectedNames{{{'a', 0}, "Left stick (up/down)"},
                               {{'a', 2}, "Left trigger / Right trigger"},
                               {{'b', 3}, "A"},
                               {{'b', 77}, "Guide"},
                               {{'h', 0}, "D-pad"}};
  EXPECT_EQ(
      padNames("03000000,A pad: a,-lefty:-a0,+lefty:+a0~,lefttrigger:+a2,righttrigger:-a2,a:b3,"
               "dpup:h0.1,dpleft:h0.8,guide:b77,odd:b1,start:,back:b,x:b12345678901,"
               "platform:Linux,:,"),
      expectedNames);
}

TEST(SdlDriver, WhatSpeaksInAnotherDriverAppearsOnce) {
  bool elsewhere = true;
  SDL_SetHint(SDL_HINT_JOYSTICK_HIDAPI, "0");
  SdlDriver driver({}, [&elsewhere](unsigned, unsigned) { return elsewhere; });
  VirtualPad pad("Mouse");
  driver.update();
  EXPECT_EQ(driver.deviceCount(), 0);
  elsewhere = false;
  driver.update();
  EXPECT_EQ(driver.deviceCount(), 1);
  elsewhere = true;
  driver.update();
  EXPECT_EQ(driver.deviceCount(), 0);
}

TEST(SdlDriver, WhatCanNotBeStartedOrOpenedIsReportedOnceAndTheDriverGoesOn) {
  g_initFails = true;
  std::string log;
  SdlDriver driver([&log](const std::string& line) { log += line; });
  g_initFails = false;
  EXPECT_FALSE(driver.available());
  EXPECT_EQ(driver.error(), log);
  EXPECT_EQ(log,
            "joysticks can't be used: no such luck (check that /dev/input is present and may "
            "be read)");
  EXPECT_TRUE(driver.update() && driver.activate() && !driver.settle());
  EXPECT_EQ(driver.detect(nullptr), nullptr);

  Sdl sdl;
  VirtualPad pad("Locked");
  g_openFails = true;
  for (int i = 0; i < 3; ++i) sdl.driver->update();
  g_openFails = false;
  sdl.driver->update();
  EXPECT_EQ(sdl.find("Locked"), nullptr);
  const std::string line = "device \"Locked\" can't be opened: no such luck";
  EXPECT_NE(sdl.log.find(line), std::string::npos);
  EXPECT_EQ(sdl.log.find(line), sdl.log.rfind(line));
}

TEST(SdlDriver, RumbleFollowsItsEffectAndOutlivesItsDevice) {
  Sdl sdl;
  Rumble motor;
  VirtualPad pad("Shaker", &motor), quiet("Quiet");
  sdl.driver->update();
  Control* axis = sdl.find("Shaker")->control(0);
  ASSERT_TRUE(axis->hasForceFeedback());
  EXPECT_FALSE(sdl.find("Quiet")->control(0)->hasForceFeedback());
  EXPECT_EQ(axis->createEffect(FFKind::kSpring), nullptr);  // a motor is no spring

  Property property("Gas");
  FFEffect* effect = axis->createEffect(FFKind::kRumble);
  ASSERT_NE(effect, nullptr);
  property.effects.push_back(effect);
  property.bind(axis);
  EXPECT_TRUE(effect->setMagnitude(0.5));
  EXPECT_EQ(motor.calls, 0);
  EXPECT_TRUE(effect->start());
  EXPECT_EQ(motor.low, 32768);
  EXPECT_TRUE(effect->setMagnitude(7.0) && effect->isPlaying());
  EXPECT_EQ(motor.low, 65535);
  for (const double bad : {-1.0, std::nan(""), 1e9}) EXPECT_FALSE(effect->setDuration(bad));
  EXPECT_FALSE(effect->setMagnitude(std::nan("")) || effect->setPeriod(0.0));
  effect->valid = false;  // as when the control is gone and the device is not
  EXPECT_FALSE(effect->stop());
  effect->valid = true;
  EXPECT_TRUE(effect->stop());
  EXPECT_EQ(motor.low, 0);

  pad.unplug();
  sdl.driver->update();
  EXPECT_FALSE(effect->valid || effect->start() || effect->setMagnitude(0.25));
  EXPECT_EQ(effect->magnitude(), 1.0);
}

TEST(SdlDriver, EffectsReachSdlInItsOwnUnits) {
  const double pi = std::acos(-1.0);
  // SDL names where the force comes from: a push to the right comes from the left (-x), one away
  // from the user from the user's side (+y).
  const auto constant = toSdlEffect(FFKind::kConstant, {0.5, 0.0, 2.0, 0.1}).constant;
  const auto sine = toSdlEffect(FFKind::kSine, {1.0, pi / 2, 0.0, 0.05}).periodic;
  const auto damper = toSdlEffect(FFKind::kDamper, {0.5, 0.0, 0.0, 0.1}).condition;
  const auto rumble = toSdlEffect(FFKind::kRumble, {1.0, 0.0, 0.0001, 0.1}).leftright;
  const std::pair<double, double> rows[] = {{constant.type, SDL_HAPTIC_CONSTANT},
                                            {constant.direction.dir[0], -10000},
                                            {constant.direction.dir[1], 0},
                                            {constant.length, 2000},
                                            {constant.level, 16384},
                                            {sine.direction.dir[0], 0},
                                            {sine.direction.dir[1], 10000},
                                            {sine.length, SDL_HAPTIC_INFINITY},
                                            {sine.period, 50},
                                            {sine.magnitude, 32767},
                                            {damper.type, SDL_HAPTIC_DAMPER},
                                            {damper.left_coeff[1], 16384},
                                            {rumble.large_magnitude, 65535},
                                            {rumble.length, 1} /* never 0 by rounding */};
  for (const auto& [is, expected] : rows) EXPECT_EQ(is, expected);
}

}  // namespace
}  // namespace orv::unidevice

extern "C" int SDL_InitSubSystem(Uint32 flags) {
  if (orv::unidevice::g_initFails) return SDL_SetError("no such luck");
  return orv::unidevice::original<int (*)(Uint32)>("SDL_InitSubSystem")(flags);
}

extern "C" SDL_Joystick* SDL_JoystickOpen(int index) {
  if (orv::unidevice::g_openFails) return SDL_SetError("no such luck"), nullptr;
  return orv::unidevice::original<SDL_Joystick* (*)(int)>("SDL_JoystickOpen")(index);
}
