#include <memory>
#include <string>

#include "Check.h"
#include "FakeInput.h"
#include "unidevice/Device.h"
#include "unidevice/Property.h"
#include "unidevice/win32/WinDevice.h"
#include "unidevice/win32/WinDriver.h"
#include "util/Angles.h"
#include "util/xml/Tag.h"

namespace orv::tests {

namespace {

using namespace orv::unidevice;

/// Windows' news of hardware, to the driver's own window.
void tellOfHardware() {
  SendMessageW(FindWindowW(L"RigwrightDevices", nullptr), WM_DEVICECHANGE, 7, 0);
}

double read(Device& device, const char* type, int index) {
  util::xml::Tag tag("control");
  tag.setAttribute("device", "");
  tag.setAttribute("type", type);
  tag.setAttribute("index", std::to_string(index));
  const Control* control = device.findControl(tag);
  return control ? control->read() : 1e9;
}

void testControls(FakeInput& input, Device& device) {
  FakeWheel& wheel = input.wheel;
  CHECK_EQ("R\u00e4d", device.name);
  CHECK_EQ(7, device.controlCount());
  wheel.state.lX = -wheel.end;
  wheel.state.lRz = wheel.end;
  wheel.state.rglSlider[0] = wheel.end / 5;
  wheel.state.rgbButtons[5] = 0x80;
  wheel.state.rgdwPOV[0] = 13500;
  CHECK(device.update());
  CHECK_EQ(-1.0, read(device, "Axis", 0));
  CHECK_EQ(1.0, read(device, "Axis", 1));
  CHECK_NEAR(0.2, read(device, "Slider", 0));
  CHECK_EQ(0.0, read(device, "Button", 0));
  CHECK_EQ(1.0, read(device, "Button", 1));
  CHECK_EQ(1.0, read(device, "Hat", 0));
  CHECK_EQ(-1.0, read(device, "Hat", 1));
  wheel.locked = true;
  wheel.Unacquire();
  CHECK(!device.update());
  CHECK_EQ(-1.0, read(device, "Axis", 0));
  wheel.locked = false;
  CHECK(device.update());
}

void testForce(FakeInput& input, Device& device, std::unique_ptr<FFEffect>& effect) {
  FakeEffect& force = input.wheel.effect;
  CHECK(!input.wheel.alone);
  effect.reset(device.control(0)->createEffect(FFKind::kConstant));
  CHECK(effect && input.wheel.alone && input.wheel.acquired);
  if (!effect) return;
  CHECK(!device.control(0)->createEffect(FFKind::kRumble));
  CHECK(effect->setMagnitude(0.5) && effect->setDuration(0.25) && effect->start());
  CHECK(effect->isPlaying());
  // To the right is away from the side of +x, which DirectInput would have it come from.
  CHECK_EQ(1u, force.axes);
  CHECK_EQ(1, force.direction);
  CHECK_EQ(-5000, force.level);
  CHECK_EQ(250000u, force.duration);
  CHECK(effect->setDirection(2 * util::kQuarterTurn));
  CHECK_EQ(5000, force.level);
  CHECK(!effect->setMagnitude(std::nan("")));
  CHECK(effect->stop() && !effect->isPlaying());
}

void testHats() {
  const int right[] = {0, 1, 1, 1, 0, -1, -1, -1}, up[] = {1, 1, 0, -1, -1, -1, 0, 1};
  for (DWORD step = 0; step < 8; ++step) {
    for (const DWORD off : {0u, 2249u, 33751u}) {
      const HatDirections hat = hatDirections((4500 * step + off) % 36000);
      CHECK_EQ(right[step], hat.right);
      CHECK_EQ(up[step], hat.up);
    }
  }
  for (const DWORD centre : {0xFFFFu, 0xFFFFFFFFu})
    CHECK(hatDirections(centre).right == 0 && hatDirections(centre).up == 0);
}

}  // namespace

void testJoysticks() {
  testHats();
  std::string problem;
  { WinDriver real(openDirectInput(problem)); }  // whatever there is
  CHECK_EQ("", problem);

  std::string log;
  FakeInput input;
  std::unique_ptr<FFEffect> effect;
  WinDriver driver(ComPointer<IDirectInput8W>(&input),
                   [&log](const std::string& line) { log += line + "\n"; });
  CHECK_EQ(1, driver.deviceCount());
  if (driver.deviceCount() != 1) return;
  testControls(input, *driver.device(0));
  driver.setWindow(GetDesktopWindow());
  CHECK(driver.activate());
  CHECK_EQ(GetDesktopWindow(), input.wheel.window);
  testForce(input, *driver.device(0), effect);

  Property gas("Gas");
  gas.offset = 3.0;
  gas.bind(driver.device(0)->control(0));
  input.there = false;
  driver.update();
  CHECK_EQ(1, driver.deviceCount());
  tellOfHardware();
  driver.update();
  CHECK_EQ(0, driver.deviceCount());
  CHECK_EQ(3.0, gas.read());
  CHECK(effect && !effect->start());
  input.there = true;
  tellOfHardware();
  driver.update();
  CHECK_EQ(1, driver.deviceCount());
  CHECK_EQ(
      "device \"R\u00e4d\" is ready: 7 controls\n"
      "device \"R\u00e4d\" is gone: its inputs fall back to their offset\n"
      "device \"R\u00e4d\" is ready: 7 controls\n",
      log);
}

}  // namespace orv::tests
