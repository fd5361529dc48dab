#include "unidevice/osc/OscDriver.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <lo/lo.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "unidevice/software/GrowingDevice.h"
#include "util/NumberText.h"

namespace orv::unidevice {

/// What is heard goes to the driver's device, which asks the driver for it.
class OscDevice : public GrowingDevice {
 public:
  OscDevice()
      : GrowingDevice(OscDriver::kDevice,
                      {{"Axis", kInfiniteControl, OscDriver::kControls, -1.0, 1.0, describe<'a'>},
                       {"Slider", kInfiniteControl, OscDriver::kControls, 0.0, 1.0, describe<'s'>},
                       {"Button", kBinaryControl, OscDriver::kControls, 0.0, 1.0, describe<'b'>}}) {
  }

  bool update() override {
    if (driver) static_cast<OscDriver*>(driver)->poll();
    return true;
  }

 private:
  template <char kType>
  static std::string describe(int index) {
    const char* type = kType == 'a' ? "/axis/" : kType == 's' ? "/slider/" : "/button/";
    return type + std::to_string(index);
  }
};

namespace {

constexpr std::size_t kLongestPacket = 65536;
constexpr int kMostPackets = 1000;  ///< at one poll, so that a flood does not hold a take up
constexpr int kMostDepth = 8;

/// The control that an address names; null for none.
const char* typeOf(std::string_view address, int& index) {
  constexpr std::pair<std::string_view, const char*> kPrefixes[] = {
      {"/axis/", "Axis"}, {"/slider/", "Slider"}, {"/button/", "Button"}};
  for (const auto& [prefix, type] : kPrefixes)
    if (address.substr(0, prefix.size()) == prefix &&
        util::parseNumber(std::string(address.substr(prefix.size())), index) && index >= 0)
      return type;
  return nullptr;
}

/// False for a value that is no number.
bool readValue(lo_type type, lo_arg* value, double& result) {
  if (type == LO_TRUE || type == LO_FALSE) {
    result = type == LO_TRUE ? 1.0 : 0.0;
    return true;
  }
  if (!lo_is_numerical_type(type)) return false;
  result = static_cast<double>(lo_hires_val(type, value));
  return true;
}

}  // namespace

OscDriver::OscDriver(int port, bool open, LogFn log)
    : Driver(kName), m_log(std::move(log)), m_packet(kLongestPacket) {
  m_socket = socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(open ? INADDR_ANY : INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (m_socket < 0 || bind(m_socket, plain, size) != 0 ||
      getsockname(m_socket, plain, &size) != 0) {
    fail("port " + std::to_string(port));
    return;
  }
  m_port = ntohs(address.sin_port);
  m_device = new OscDevice;
  addDevice(m_device);
  if (m_log)
    m_log("device \"OSC\" is ready: port " + std::to_string(m_port) +
          (open ? ", for all machines" : ", for this machine alone"));
}

OscDriver::~OscDriver() {
  if (m_socket >= 0) close(m_socket);
}

void OscDriver::fail(const std::string& what) {
  m_error = "no OSC: " + what + " can't be listened to: " + std::strerror(errno) +
            " (close the program that has the port, or choose another)";
  if (m_socket >= 0) close(std::exchange(m_socket, -1));
}

void OscDriver::poll() {
  for (int i = 0; m_socket >= 0 && i < kMostPackets; ++i) {
    const ssize_t size = recv(m_socket, m_packet.data(), m_packet.size(), 0);
    if (size < 0) return;
    takePacket(m_packet.data(), static_cast<std::size_t>(size), 0);
  }
}

void OscDriver::takePacket(char* data, std::size_t size, int depth) {
  constexpr std::string_view kBundle("#bundle\0", 8);
  constexpr std::size_t kHead = 16;  // and a time
  if (size < kHead || std::string_view(data, kBundle.size()) != kBundle)
    return takeMessage(data, size);
  if (depth > kMostDepth) return refuse("a bundle within bundles");
  for (std::size_t at = kHead; at + 4 <= size;) {
    std::uint32_t length = 0;
    std::memcpy(&length, data + at, 4);
    length = ntohl(length);
    at += 4;
    if (length > size - at) return refuse("a bundle that is cut off");
    takePacket(data + at, length, depth + 1);
    at += length;
  }
}

void OscDriver::takeMessage(char* data, std::size_t size) {
  int problem = 0;
  lo_message message = lo_message_deserialise(data, size, &problem);
  if (!message) return refuse("a packet that is no message");
  // The address stands at the head, and was checked to end within the packet.
  const std::string address = lo_get_path(data, static_cast<ssize_t>(size));
  int index = 0;
  const char* type = typeOf(address, index);
  bool good = type != nullptr;
  lo_arg** values = lo_message_get_argv(message);
  const char* types = lo_message_get_types(message);
  for (int i = 0; good && i < lo_message_get_argc(message); ++i) {
    double value = 0.0;
    good = index + i < kControls && readValue(static_cast<lo_type>(types[i]), values[i], value);
    if (good && *type == 'B') value = value != 0.0 ? 1.0 : 0.0;
    good = good && m_device->hear(type, index + i, value);
  }
  lo_message_free(message);
  if (!good) refuse(address);
}

void OscDriver::refuse(const std::string& address) {
  if (!std::exchange(m_refused, true) && m_log)
    m_log("OSC: " + address +
          " is not understood; send numbers to /axis/0, /slider/0 or /button/0, " +
          "and up to 63 (told once)");
}

}  // namespace orv::unidevice
