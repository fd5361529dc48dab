// The devices of this machine, told on stderr.
#pragma once

#include "app/rigwright/Output.h"
#include "app/session/anyhost/Devices.h"

namespace orv::app {

/// Devices for as long as it lives. `output` must outlive it.
class DeviceNotes {
 public:
  explicit DeviceNotes(Output& output)
      : m_devices([&output](const std::string& line) { output.Note("devices: " + line); }) {
    if (!m_devices.GetProblem().empty()) output.Warn(m_devices.GetProblem());
  }

 private:
  const Devices m_devices;
};

}  // namespace orv::app
