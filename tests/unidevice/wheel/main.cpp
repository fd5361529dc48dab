// A wheel with force feedback that does not exist, to be run by umockdev-wrapper: how it is read,
// what of a force reaches it, and that it keeps its mapping when it is plugged in again.
#include <SDL.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/input.h>
#include <umockdev.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/FFEffect.h"
#include "unidevice/ForcePlayer.h"
#include "unidevice/Property.h"
#include "unidevice/sdl/SdlDriver.h"

namespace orv::unidevice {
namespace {

constexpr char kNode[] = "/dev/input/event9";

/// Answers of the kernel's input device.
class Wheel {
 public:
  Wheel() : m_bed(umockdev_testbed_new()), m_handler(umockdev_ioctl_base_new()) {
    for (const int type : {EV_SYN, EV_KEY, EV_ABS, EV_FF}) set(m_types, type);
    for (int i = 0; i < 10; ++i) set(m_keys, BTN_JOYSTICK + i);
    for (const int axis : {ABS_X, ABS_Y, ABS_Z}) set(m_axes, axis);
    for (const int force : {FF_CONSTANT, FF_SPRING, FF_PERIODIC, FF_SINE, FF_GAIN})
      set(m_forces, force);
    g_signal_connect(m_handler, "handle-ioctl", G_CALLBACK(&Wheel::onControl), this);
    const char* description =
        "P: /devices/fake/input/input9\nE: SUBSYSTEM=input\nE: ID_INPUT=1\n"
        "E: ID_INPUT_JOYSTICK=1\nE: PRODUCT=3/46d/c24f/111\n\n"
        "P: /devices/fake/input/input9/event9\nN: input/event9\nE: SUBSYSTEM=input\n"
        "E: DEVNAME=/dev/input/event9\nE: ID_INPUT=1\nE: ID_INPUT_JOYSTICK=1\nE: MAJOR=13\n"
        "E: MINOR=73\nA: dev=13:73\n\n";
    GError* error = nullptr;
    EXPECT_TRUE(umockdev_testbed_add_from_string(m_bed, description, &error)) << error->message;
    EXPECT_TRUE(umockdev_testbed_attach_ioctl(m_bed, kNode, m_handler, &error)) << error->message;
    plug();
  }
  ~Wheel() {
    g_object_unref(m_handler);
    g_object_unref(m_bed);
  }

  /// Told as the kernel tells it.
  void plug() { umockdev_testbed_uevent(m_bed, kSys, "add"); }
  void unplug() { umockdev_testbed_uevent(m_bed, kSys, "remove"); }
  void move(std::initializer_list<input_event> events) const {
    const int socket = umockdev_testbed_get_dev_fd(m_bed, kNode);
    for (const input_event& event : events)
      EXPECT_EQ(write(socket, &event, sizeof event), static_cast<ssize_t>(sizeof event));
  }
  /// The next event that the program has sent to it.
  input_event received() const {
    input_event event{};
    EXPECT_EQ(read(umockdev_testbed_get_dev_fd(m_bed, kNode), &event, sizeof event),
              static_cast<ssize_t>(sizeof event));
    return event;
  }

  ff_effect uploaded{};
  int removed = 0;

 private:
  static constexpr char kSys[] = "/sys/devices/fake/input/input9/event9";

  template <std::size_t N>
  static void set(unsigned char (&bits)[N], int bit) {
    bits[bit / 8] |= static_cast<unsigned char>(1 << (bit % 8));
  }

  static gboolean onControl(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    return static_cast<Wheel*>(self)->answer(client) ? TRUE : FALSE;
  }

  bool answer(UMockdevIoctlClient* client) {
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    if (_IOC_TYPE(request) != 'E') return false;
    const unsigned number = _IOC_NR(request);
    const auto give = [&](const void* bytes, std::size_t count) {
      const std::size_t size = _IOC_SIZE(request);
      std::string filled(static_cast<const char*>(bytes), std::min(count, size));
      filled.resize(size);
      UMockdevIoctlData* data =
          umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, nullptr);
      umockdev_ioctl_data_update(data, 0, reinterpret_cast<guint8*>(filled.data()),
                                 static_cast<int>(size));
      umockdev_ioctl_client_complete(client, static_cast<int>(std::min(count, size)), 0);
      return true;
    };
    const auto done = [&] { return umockdev_ioctl_client_complete(client, 0, 0), true; };
    if (request == EVIOCSFF) {
      UMockdevIoctlData* data = umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client),
                                                            0, sizeof uploaded, nullptr);
      std::memcpy(&uploaded, data->data, sizeof uploaded);
      if (uploaded.id < 0) uploaded.id = 3;
      umockdev_ioctl_data_update(data, 0, reinterpret_cast<guint8*>(&uploaded), sizeof uploaded);
      return done();
    }
    if (request == EVIOCRMFF) return ++removed, done();
    if (request == EVIOCGEFFECTS) {
      const int effects = 16;
      return give(&effects, sizeof effects);
    }
    if (request == EVIOCGVERSION) {
      const int version = EV_VERSION;
      return give(&version, sizeof version);
    }
    if (request == EVIOCGID) {
      const input_id id{BUS_USB, 0x046d, 0xc24f, 0x111};
      return give(&id, sizeof id);
    }
    if (number == _IOC_NR(EVIOCGNAME(0))) return give("Wheel of air", 13);
    if (number == _IOC_NR(EVIOCGPHYS(0)) || number == _IOC_NR(EVIOCGUNIQ(0)))
      return umockdev_ioctl_client_complete(client, -1, ENOENT), true;
    if (number == 0x20) return give(m_types, sizeof m_types);
    if (number == 0x20 + EV_KEY) return give(m_keys, sizeof m_keys);
    if (number == 0x20 + EV_ABS) return give(m_axes, sizeof m_axes);
    if (number == 0x20 + EV_FF) return give(m_forces, sizeof m_forces);
    if (number >= 0x40 && number < 0x40 + ABS_CNT) {
      input_absinfo info{};
      info.maximum = 65535;
      info.value = number == 0x40 ? 32768 : 0;
      return give(&info, sizeof info), true;
    }
    if (_IOC_DIR(request) & _IOC_READ) return give("", 0);
    return done();
  }

  UMockdevTestbed* m_bed;
  UMockdevIoctlBase* m_handler;
  unsigned char m_types[4] = {}, m_keys[KEY_MAX / 8 + 1] = {}, m_axes[8] = {}, m_forces[16] = {};
};

input_event moved(int type, int code, int value) {
  input_event event{};
  event.type = static_cast<__u16>(type);
  event.code = static_cast<__u16>(code);
  event.value = value;
  return event;
}

/// Polls until the hot plug has arrived.
bool pollUntil(SdlDriver& driver, int devices) {
  for (int i = 0; i < 100 && driver.deviceCount() != devices; ++i) {
    SDL_Delay(20);
    driver.update();
  }
  return driver.deviceCount() == devices;
}

TEST(Wheel, PushesAndKeepsItsMappingWhenPluggedInAgain) {
  const char* ahead = std::getenv("LD_PRELOAD");
  if (!ahead || !std::strstr(ahead, "umockdev")) GTEST_SKIP() << "run it by umockdev-wrapper";
  Wheel wheel;
  auto owned = std::make_unique<SdlDriver>();
  SdlDriver& driver = *owned;
  ASSERT_TRUE(driver.available()) << driver.error();
  DriverManager::instance().addDriver(std::move(owned));
  ASSERT_TRUE(pollUntil(driver, 1));
  Property steer("Steer"), pedal("Pedal");
  steer.deadzone = pedal.deadzone = 0.0;
  steer.offset = 0.25;
  steer.assign(driver.device(0)->control(0));
  pedal.assign(driver.device(0)->control(2));
  // Both pedals rest at the end of their axis.
  DriverManager::instance().calibrations().set({driver.device(0)->name, "Axis", 2},
                                               {Calibration::Kind::kPedal, -1.0, 1.0, -1.0});
  wheel.move({moved(EV_ABS, ABS_X, 65535), moved(EV_KEY, BTN_JOYSTICK + 2, 1),
              moved(EV_SYN, SYN_REPORT, 0)});
  SDL_Delay(50);
  driver.update();
  EXPECT_EQ(steer.read(), 1.25);
  EXPECT_EQ(pedal.read(), 0.0) << "at rest";
  EXPECT_EQ(driver.device(0)->control(3 + 2)->read(), 1.0);
  {
    const std::unique_ptr<FFEffect> push(
        driver.device(0)->control(0)->createEffect(FFKind::kConstant));
    ASSERT_TRUE(push);
    EXPECT_TRUE(push->setMagnitude(0.5));
    EXPECT_EQ(wheel.uploaded.type, FF_CONSTANT);
    EXPECT_EQ(wheel.uploaded.u.constant.level, 16384);
    EXPECT_TRUE(push->start());
    const input_event run = wheel.received();
    EXPECT_TRUE(run.type == EV_FF && run.value == 1);
  }
  EXPECT_EQ(wheel.removed, 1);

  // What a rig says of its input, there, back, and away with the device.
  ForcePlayer player;
  const std::vector<Property*> inputs{&pedal, &steer};
  const ForceGains half{0.5, 0.0, 0.0};
  steer.feel.push = 1.0;
  player.play(inputs, half, 10.0);
  EXPECT_EQ(wheel.uploaded.type, FF_CONSTANT);
  EXPECT_EQ(wheel.uploaded.u.constant.level, 16384);
  EXPECT_EQ(wheel.uploaded.replay.length, 500) << "silent by itself, should nobody ask any more";
  EXPECT_EQ(wheel.received().value, 1);
  const int right = wheel.uploaded.direction;
  player.play(inputs, half, 10.1);
  steer.feel.push = -0.5;
  player.play(inputs, half, 10.25);
  EXPECT_EQ(wheel.uploaded.u.constant.level, 8192);
  EXPECT_EQ(std::abs(wheel.uploaded.direction - right), 0x8000);
  EXPECT_EQ(wheel.received().value, 1) << "begun anew";
  const int before = wheel.removed;
  player.stop(inputs);
  EXPECT_EQ(wheel.received().value, 0);
  EXPECT_EQ(wheel.removed, before + 2);
  EXPECT_TRUE(steer.effects.empty() && pedal.effects.empty());
  player.play(inputs, half, 11.0);

  wheel.unplug();
  ASSERT_TRUE(pollUntil(driver, 0));
  player.play(inputs, half, 11.1);
  EXPECT_EQ(steer.read(), 0.25);
  const auto generation = DriverManager::generation();
  wheel.plug();
  ASSERT_TRUE(pollUntil(driver, 1));
  EXPECT_NE(DriverManager::generation(), generation);
  EXPECT_TRUE(steer.rebind() && pedal.rebind());
  wheel.uploaded = {};
  player.play(inputs, half, 12.0);
  EXPECT_EQ(wheel.uploaded.u.constant.level, 8192) << "its forces too";
  player.stop(inputs);
  wheel.move({moved(EV_ABS, ABS_X, 0), moved(EV_ABS, ABS_Z, 65535), moved(EV_SYN, SYN_REPORT, 0)});
  SDL_Delay(50);
  driver.update();
  EXPECT_EQ(steer.read(), -0.75);
  EXPECT_EQ(pedal.read(), 1.0) << "its calibration too";
  DriverManager::instance().removeDriver(SdlDriver::kName);
}

}  // namespace
}  // namespace orv::unidevice
