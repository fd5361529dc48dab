// Controls that are told by OSC and MIDI.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <lo/lo.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <tuple>

#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/Property.h"
#include "unidevice/midi/MidiDevice.h"
#include "unidevice/midi/MidiDriver.h"
#include "unidevice/osc/OscDriver.h"

namespace orv::unidevice {
namespace {

double valueOf(Device& device, const char* type, int index) {
  const Control* control = device.findControl(ControlChoice{device.name, type, index}.tag());
  return control ? control->read() : -99.0;
}

/// The driver at a free port, and somebody who sends to it.
struct Network {
  Network() {
    auto owned =
        std::make_unique<OscDriver>(0, false, [this](const std::string& line) { log += line; });
    driver = owned.get();
    EXPECT_EQ(driver->error(), "");
    DriverManager::instance().addDriver(std::move(owned));
    to = lo_address_new("127.0.0.1", std::to_string(driver->port()).c_str());
    plain = socket(AF_INET, SOCK_DGRAM, 0);
  }
  ~Network() {
    close(plain);
    lo_address_free(to);
    DriverManager::instance().removeDriver(OscDriver::kName);
  }
  void sendBytes(const std::string& bytes) const {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(driver->port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sendto(plain, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr*>(&address),
           sizeof address);
  }
  Device& device() const { return *driver->device(0); }

  std::string log;
  OscDriver* driver;
  lo_address to;
  int plain;
};

TEST(Network, OscMessagesMoveControlsByTheirAddress) {
  Network network;
  Device& osc = network.device();
  Property steer("Steer");
  steer.deadzone = 0.0;
  steer.offset = 0.125;
  EXPECT_EQ((ControlChoice{"OSC", "Axis", 7}.check().why), "") << "before it was ever heard";
  EXPECT_FALSE((ControlChoice{"", "Axis", 63}.present())) << "any device is no reason to make one";
  steer.assign(osc.findControl(ControlChoice{"OSC", "Axis", 7}.tag()));
  ASSERT_TRUE(steer.control);
  const auto before = DriverManager::generation();
  lo_send(network.to, "/axis/7", "f", 0.5f);
  network.driver->update();
  EXPECT_EQ(steer.read(), 0.625);
  EXPECT_EQ(DriverManager::generation(), before);
  lo_send(network.to, "/slider/0", "dihTF", 0.25, 1, static_cast<std::int64_t>(9));
  lo_send(network.to, "/button/3", "f", 0.2f);
  lo_send(network.to, "/axis/8", "f", -7.0f);
  // A bundle within a bundle.
  lo_bundle inner = lo_bundle_new(LO_TT_IMMEDIATE), outer = lo_bundle_new(LO_TT_IMMEDIATE);
  lo_message message = lo_message_new();
  lo_message_add_float(message, 0.75f);
  lo_bundle_add_message(inner, "/axis/9", message);
  lo_bundle_add_bundle(outer, inner);
  lo_send_bundle(network.to, outer);
  lo_bundle_free_recursive(outer);
  EXPECT_TRUE(osc.update());
  EXPECT_GT(DriverManager::generation(), before) << "new ones, which inputs may wait for";
  using Row = std::tuple<const char*, int, double>;
  for (const auto& [type, index, value] :
       {Row{"Slider", 0, 0.25}, Row{"Slider", 1, 1.0}, Row{"Slider", 2, 1.0}, Row{"Slider", 3, 1.0},
        Row{"Slider", 4, 0.0}, Row{"Button", 3, 1.0}, Row{"Axis", 8, -1.0}, Row{"Axis", 9, 0.75}})
    EXPECT_EQ(valueOf(osc, type, index), value) << type << index;
  EXPECT_EQ(network.log.find("understood"), std::string::npos) << network.log;

  // Whatever comes does no harm and is told once.
  const int controls = osc.controlCount();
  lo_send(network.to, "/axis/999", "f", 1.0f);
  lo_send(network.to, "/axis/7", "s", "text");
  lo_send(network.to, "/axis/7", "f", std::nanf(""));
  std::mt19937 random(7);
  const std::string bundle("#bundle\0\0\0\0\0\0\0\0\1", 16);
  for (int i = 0; i < 400; ++i) {
    std::string bytes = i % 2 ? bundle + std::string("\0\0\0\x14", 4) : "";
    for (unsigned n = random() % 40; n > 0; --n) bytes += static_cast<char>(random());
    network.sendBytes(bytes + (i % 3 ? "/axis/1\0,f\0\0" : ""));
    if (i % 50 == 0) network.driver->update();
  }
  std::string nested(bundle);
  for (int i = 0; i < 2000; ++i) {
    const std::uint32_t size = htonl(static_cast<std::uint32_t>(nested.size()));
    nested = bundle + std::string(reinterpret_cast<const char*>(&size), 4) + nested;
  }
  network.sendBytes(nested);
  network.driver->update();
  EXPECT_EQ(steer.read(), 0.625);
  EXPECT_EQ(osc.controlCount(), controls);
  EXPECT_EQ(network.log.find("understood"), network.log.rfind("understood"));

  const OscDriver second(network.driver->port(), false);
  EXPECT_NE(second.error().find(std::to_string(network.driver->port())), std::string::npos);
  EXPECT_EQ(second.deviceCount(), 0);
}

TEST(Network, OscHearsThisMachineAloneUnlessTold) {
  const auto boundTo = [](const OscDriver& driver) {
    // As the kernel lists it: address and port in hexadecimal digits.
    char wanted[16];
    std::snprintf(wanted, sizeof wanted, ":%04X ", static_cast<unsigned>(driver.port()));
    std::FILE* list = std::fopen("/proc/net/udp", "r");
    char line[512];
    std::string address;
    while (list && std::fgets(line, sizeof line, list))
      if (const char* at = std::strstr(line, wanted)) address = std::string(at - 8, 8);
    if (list) std::fclose(list);
    return address;
  };
  EXPECT_EQ(boundTo(OscDriver(0, false)), "0100007F");
  EXPECT_EQ(boundTo(OscDriver(0, true)), "00000000");
}

TEST(Network, MidiMessagesMoveControlsByChannelAndNumber) {
  MidiDevice keys("Keys");
  const auto take = [&keys](std::initializer_list<int> bytes) {
    keys.take(std::vector<unsigned char>(bytes.begin(), bytes.end()));
  };
  take({0xb0, 7, 127});
  take({0xb9, 7, 0});
  take({0x92, 60, 100});
  EXPECT_EQ(valueOf(keys, "Slider", 7), 1.0);
  EXPECT_EQ(valueOf(keys, "Slider", 9 * 128 + 7), 0.0);
  EXPECT_EQ(valueOf(keys, "Button", 2 * 128 + 60), 1.0);
  EXPECT_EQ(keys.control(2)->description, "Note 60 (channel 3)");
  take({0x92, 60, 0});
  EXPECT_EQ(valueOf(keys, "Button", 2 * 128 + 60), 0.0);
  take({0x92, 60, 1});
  take({0x82, 60, 64});
  EXPECT_EQ(valueOf(keys, "Button", 2 * 128 + 60), 0.0);
  const std::tuple<int, int, double> bends[] = {{127, 127, 1.0}, {0, 0, -1.0}, {0, 64, 0.0}};
  for (const auto& [low, high, value] : bends) {
    take({0xe1, low, high});
    EXPECT_EQ(valueOf(keys, "Axis", 1), value);
  }
  for (const auto& odd : {std::vector<unsigned char>{},
                          {0xf8},
                          {0xb0, 7},
                          {0xb0, 200, 3},
                          {0xc0, 5},
                          {0xf0, 1, 2, 3}})
    keys.take(odd);
  EXPECT_EQ(keys.controlCount(), 4);
}

TEST(Network, MidiIsSilentWhereThereIsNoSequencer) {
  testing::internal::CaptureStderr();
  std::string error;
  {
    MidiDriver driver;
    error = driver.error();
    EXPECT_TRUE(driver.activate() && driver.update() && driver.deactivate());
    EXPECT_TRUE(error.empty() || driver.deviceCount() == 0);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  if (error.empty()) return;
  EXPECT_NE(error.find("/dev/snd/seq"), std::string::npos) << "what is missing: " << error;
}

}  // namespace
}  // namespace orv::unidevice
