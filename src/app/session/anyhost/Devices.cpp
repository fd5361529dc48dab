#include "app/session/anyhost/Devices.h"

#include <memory>
#include <utility>

#include "core/services/Log.h"
#include "core/services/Preferences.h"
#include "unidevice/DriverManager.h"
#include "unidevice/midi/MidiDriver.h"
#include "unidevice/osc/OscDriver.h"
#include "unidevice/sdl/SdlDriver.h"
#include "unidevice/spacenav/SpaceNavDriver.h"

namespace orv::app {

using namespace unidevice;

Devices::Devices(std::function<void(const std::string&)> told)
    : m_told([told = std::move(told)](const std::string& line) {
        rws::core::LogEntry(rws::core::LogLevel::kInfo, line);
        told(line);
      }) {
  auto& drivers = DriverManager::instance();
  auto mice = std::make_unique<SpaceNavDriver>(m_told);
  auto pads =
      std::make_unique<SdlDriver>(m_told, [mice = mice.get()](unsigned vendor, unsigned product) {
        return mice->serves(vendor, product);
      });
  if (!pads->available()) m_problem = "no game controllers: " + pads->error();
  drivers.addDriver(std::move(pads));
  drivers.addDriver(std::move(mice));
}

Devices::~Devices() {
  // The pads ask the mice.
  for (const char* name :
       {OscDriver::kName, MidiDriver::kName, SdlDriver::kName, SpaceNavDriver::kName})
    DriverManager::instance().removeDriver(name);
}

std::string Devices::Follow(const rws::core::Preferences& preferences) {
  auto& drivers = DriverManager::instance();
  std::string problem;
  const auto add = [&](auto driver) {
    if (!driver->error().empty()) problem += (problem.empty() ? "" : "; ") + driver->error();
    drivers.addDriver(std::move(driver));
  };
  if (m_oscPort != preferences.oscPort || m_oscOpen != preferences.oscOpen) {
    m_oscPort = preferences.oscPort;
    m_oscOpen = preferences.oscOpen;
    drivers.removeDriver(OscDriver::kName);
    if (m_oscPort > 0) add(std::make_unique<OscDriver>(m_oscPort, m_oscOpen, m_told));
  }
  if (m_midi != preferences.midi) {
    m_midi = preferences.midi;
    drivers.removeDriver(MidiDriver::kName);
    if (m_midi) add(std::make_unique<MidiDriver>(m_told));
  }
  return problem;
}

}  // namespace orv::app
