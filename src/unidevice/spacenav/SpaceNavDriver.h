// 3D mice through spacenavd.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "unidevice/Driver.h"

namespace orv::unidevice {

class SpaceNavDevice;

/// Driver of the 3D mouse that spacenavd, the service for such mice, serves at the socket that the
/// variable SPNAV_SOCKET names, else at its usual place. The service may come and go while it is
/// polled. No service, or one without a mouse, is fine: then there is no device. The process can
/// have one connection, and so one driver. Main thread only.
class SpaceNavDriver : public Driver {
 public:
  static constexpr const char* kName = "spacenav";

  /// Gets one line, without a line end, for each thing worth noting.
  using LogFn = std::function<void(const std::string&)>;

  explicit SpaceNavDriver(LogFn log = {});
  ~SpaceNavDriver() override;

  /// Looks for the service when it is not there, else takes what it has sent.
  bool update() override;

  /// Takes what the service has sent to the device that is there; part of `update`.
  void takeEvents();

  /// Whether hardware of this USB id is a 3D mouse that this driver serves now, so that it must not
  /// appear as a joystick as well.
  bool serves(unsigned vendor, unsigned product) const;

 private:
  void connect();
  void disconnect();
  void showDevice(bool there);

  LogFn m_log;
  SpaceNavDevice* m_device = nullptr;  ///< null without a mouse
  bool m_connected = false;
  bool m_there = false;  ///< the service has a mouse, as far as it has told
  std::chrono::steady_clock::time_point m_nextTry{};
};

}  // namespace orv::unidevice
