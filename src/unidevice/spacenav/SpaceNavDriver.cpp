#include "unidevice/spacenav/SpaceNavDriver.h"

#include <spnav.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "unidevice/spacenav/SpaceNavDevice.h"

namespace orv::unidevice {

namespace {

constexpr auto kBetweenTries = std::chrono::seconds(2);

/// Whether the other end has closed the connection, which libspnav does not tell.
bool isClosed(int socket) {
  char byte = 0;
  const ssize_t got = recv(socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return got == 0 || (got < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

std::string deviceName() {
  std::array<char, 128> name{};
  const bool told = spnav_dev_name(name.data(), static_cast<int>(name.size())) > 0;
  return told && name[0] ? name.data() : "3D mouse";
}

}  // namespace

SpaceNavDriver::SpaceNavDriver(LogFn log) : Driver(kName), m_log(std::move(log)) {
  SpaceNavDriver::update();
}

SpaceNavDriver::~SpaceNavDriver() {
  m_log = nullptr;  // the mouse is still there
  disconnect();
}

bool SpaceNavDriver::update() {
  if (m_connected && isClosed(spnav_fd())) disconnect();
  if (!m_connected) connect();
  takeEvents();
  showDevice(m_there);
  return Driver::update();
}

void SpaceNavDriver::connect() {
  const auto now = std::chrono::steady_clock::now();
  if (now < m_nextTry) return;
  m_nextTry = now + kBetweenTries;
  m_connected = spnav_open() == 0;
  // An old service does not tell whether it has a mouse.
  m_there = m_connected && (spnav_protocol() < 1 || spnav_dev_type() >= 0);
}

void SpaceNavDriver::disconnect() {
  showDevice(false);
  if (m_connected) spnav_close();
  m_connected = m_there = false;
}

void SpaceNavDriver::takeEvents() {
  spnav_event event;
  while (const int type = m_connected ? spnav_poll_event(&event) : 0) {
    if (type == SPNAV_EVENT_DEV) m_there = event.dev.op == SPNAV_DEV_ADD;
    if (type != SPNAV_EVENT_MOTION && type != SPNAV_EVENT_BUTTON) continue;
    m_there = true;
    if (!m_device) continue;
    if (type == SPNAV_EVENT_BUTTON) {
      m_device->setButton(event.button.bnum, event.button.press != 0);
      continue;
    }
    const auto& m = event.motion;
    m_device->setAxes({m.x, m.y, m.z, m.rx, m.ry, m.rz});
  }
}

void SpaceNavDriver::showDevice(bool there) {
  if (there == (m_device != nullptr)) return;
  if (there) {
    m_device = new SpaceNavDevice(deviceName(), std::max(2, spnav_dev_buttons()));
    addDevice(m_device);
  }
  if (m_log)
    m_log("device \"" + m_device->name + "\" is " +
          (there ? "ready: a 3D mouse" : "gone: its inputs fall back to their offset"));
  if (there) return;
  std::exchange(m_device, nullptr)->destroy();
}

bool SpaceNavDriver::serves(unsigned vendor, unsigned product) const {
  // Of the first vendor only these are 3D mice; the other makes nothing else.
  static constexpr unsigned kProducts[] = {0xc603, 0xc605, 0xc606, 0xc621, 0xc623, 0xc625,
                                           0xc626, 0xc627, 0xc628, 0xc629, 0xc62b};
  if (!m_device) return false;
  return vendor == 0x256f ||
         (vendor == 0x046d && std::count(std::begin(kProducts), std::end(kProducts), product) > 0);
}

}  // namespace orv::unidevice
