#include "app/session/anyhost/Devices.h"

#include <memory>
#include <utility>

#include "core/services/Log.h"
#include "unidevice/DriverManager.h"
#include "unidevice/sdl/SdlDriver.h"

namespace orv::app {

Devices::Devices(const std::function<void(const std::string&)>& told) {
  auto driver = std::make_unique<unidevice::SdlDriver>([told](const std::string& line) {
    rws::core::LogEntry(rws::core::LogLevel::kInfo, line);
    told(line);
  });
  if (!driver->available()) m_problem = "no game controllers: " + driver->error();
  unidevice::DriverManager::instance().addDriver(std::move(driver));
}

Devices::~Devices() {
  unidevice::DriverManager::instance().removeDriver(unidevice::SdlDriver::kName);
}

}  // namespace orv::app
