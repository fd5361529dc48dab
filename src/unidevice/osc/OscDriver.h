// Controls that come over the network as Open Sound Control messages.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "unidevice/Driver.h"

namespace orv::unidevice {

class OscDevice;

/// Listens at a UDP port, and has one device, "OSC". The address /axis/3 is the control Axis 3,
/// and likewise /slider/N and /button/N; a message's second value is for the next number, and so
/// on. Bundles are taken at once, whatever their time. Polled: nothing waits. Main thread only.
class OscDriver : public Driver {
 public:
  static constexpr const char* kName = "osc";
  static constexpr const char* kDevice = "OSC";
  static constexpr int kControls = 64;  ///< of each type

  /// Gets one line, without a line end, for each thing worth noting.
  using LogFn = std::function<void(const std::string&)>;

  /// Hears this machine alone, or with `open` any that can reach it. Port 0 takes a free one.
  OscDriver(int port, bool open, LogFn log = {});
  ~OscDriver() override;

  /// Why it hears nothing; empty when it listens.
  const std::string& error() const { return m_error; }
  int port() const { return m_port; }

  /// Takes the packets that have come.
  void poll();

 private:
  void fail(const std::string& what);
  /// `depth`: of bundles in bundles.
  void takePacket(char* data, std::size_t size, int depth);
  void takeMessage(char* data, std::size_t size);
  void refuse(const std::string& address);

  LogFn m_log;
  OscDevice* m_device = nullptr;
  int m_socket = -1;
  int m_port = 0;
  std::string m_error;
  std::vector<char> m_packet;
  bool m_refused = false;  ///< something was not understood, which is told once
};

}  // namespace orv::unidevice
