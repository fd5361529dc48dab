// A 3D mouse by a service of the test's own.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "support/TempFolder.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/Property.h"
#include "unidevice/spacenav/SpaceNavDriver.h"

namespace orv::unidevice {
namespace {

using Words = std::array<std::int32_t, 8>;

/// Answers the first client as an old service does, which has no questions and no names.
class Service {
 public:
  explicit Service(const std::string& path) : m_listener(socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    unlink(path.c_str());
    if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(m_listener, 1) != 0)
      ADD_FAILURE() << "no socket";
    m_greeter = std::thread([this] {
      pollfd look{m_listener, POLLIN, 0};
      if (poll(&look, 1, 10000) != 1) return;
      m_client = accept(m_listener, nullptr, nullptr);
      std::int32_t wanted = 0;
      if (read(m_client, &wanted, sizeof wanted) != sizeof wanted) return;
      const std::int32_t old = wanted & ~0xff;
      m_greeted = write(m_client, &old, sizeof old) == sizeof old;
    });
  }
  ~Service() {
    if (m_greeter.joinable()) m_greeter.join();
    if (m_client >= 0) close(m_client);
    close(m_listener);
  }
  void send(const Words& event) {
    if (m_greeter.joinable()) m_greeter.join();
    EXPECT_TRUE(m_greeted);
    EXPECT_EQ(write(m_client, event.data(), sizeof event), static_cast<ssize_t>(sizeof event));
  }

 private:
  int m_listener, m_client = -1;
  bool m_greeted = false;
  std::thread m_greeter;
};

TEST(SpaceNav, AxesAndButtonsComeAndGoWithTheService) {
  const tests::TempFolder folder;
  const std::string path = folder.path + "/mouse";
  setenv("SPNAV_SOCKET", path.c_str(), 1);
  std::string log;
  {
    SpaceNavDriver none([&log](const std::string& line) { log += line; });
  }
  EXPECT_EQ(log, "") << "no service is nothing to talk about";
  auto service = std::make_unique<Service>(path);
  auto& drivers = DriverManager::instance();
  auto owned = std::make_unique<SpaceNavDriver>([&log](const std::string& line) { log += line; });
  SpaceNavDriver& driver = *owned;
  drivers.addDriver(std::move(owned));
  ASSERT_EQ(driver.deviceCount(), 1) << log;
  Device& mouse = *driver.device(0);
  EXPECT_EQ(mouse.name, "3D mouse");
  ASSERT_EQ(mouse.controlCount(), 6 + 2);
  Property lift("Lift");
  lift.deadzone = 0.0;
  lift.offset = 0.25;
  lift.assign(mouse.control(1));
  // Kind of event; then pushes and turns by x, y, z, and the time since the last.
  service->send({0, 350, -175, 35, 9999, -9999, 0, 16});
  service->send({1, 1, 1, 0, 0, 0, 0, 0});
  service->send({1, 99, 1, 0, 0, 0, 0, 0});  // a button that it has not
  driver.update();
  const double expected[] = {1.0, -0.5, 0.1, 1.0, -1.0, 0.0, 0.0, 1.0};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(mouse.control(i)->read(), expected[i]) << i;
  EXPECT_EQ(lift.read(), -0.25);
  service->send({2, 1, 0, 0, 0, 0, 0, 0});
  EXPECT_TRUE(mouse.update());
  EXPECT_EQ(mouse.control(7)->read(), 0.0);
  EXPECT_TRUE(driver.serves(0x256f, 0xc635) && driver.serves(0x046d, 0xc626));
  EXPECT_FALSE(driver.serves(0x046d, 0xc24f)) << "a wheel of the same maker";

  service.reset();
  driver.update();
  EXPECT_EQ(driver.deviceCount(), 0);
  EXPECT_EQ(lift.read(), 0.25);
  EXPECT_FALSE(driver.serves(0x256f, 0xc635)) << "then it may be a joystick";
  EXPECT_NE(log.find("\"3D mouse\" is gone"), std::string::npos);
  drivers.removeDriver(SpaceNavDriver::kName);
  unsetenv("SPNAV_SOCKET");
}

}  // namespace
}  // namespace orv::unidevice
