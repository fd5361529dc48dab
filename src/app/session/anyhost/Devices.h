// The input devices of this machine.
#pragma once

namespace orv::app {

class Output;

/// Starts the drivers of this machine's devices, so that mappings of scenes opened from here on
/// find them. What comes and goes is told on stderr; having none is fine. `output` must outlive the
/// drivers: `stopDevices` ends them.
void startDevices(Output& output);
void stopDevices();

/// Devices for as long as it lives.
class DeviceSession {
 public:
  explicit DeviceSession(Output& output) { startDevices(output); }
  ~DeviceSession() { stopDevices(); }
  DeviceSession(const DeviceSession&) = delete;
  DeviceSession& operator=(const DeviceSession&) = delete;
};

}  // namespace orv::app
