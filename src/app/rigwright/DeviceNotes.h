// The devices of this machine, told on stderr.
#pragma once

#include "app/rigwright/Output.h"
#include "app/session/anyhost/Devices.h"
#include "core/services/Preferences.h"

namespace orv::app {

/// Devices for as long as it lives. `output` must outlive it.
class DeviceNotes {
 public:
  explicit DeviceNotes(Output& output)
      : m_devices([&output](const std::string& line) { output.Note("devices: " + line); }) {
    rws::core::Preferences preferences;
    preferences.Load();
    for (const std::string& problem : {m_devices.GetProblem(), m_devices.Follow(preferences)})
      if (!problem.empty()) output.Warn(problem);
  }

 private:
  Devices m_devices;
};

}  // namespace orv::app
