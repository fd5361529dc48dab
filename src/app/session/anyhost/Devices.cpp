#include "app/session/anyhost/Devices.h"

#include <memory>

#include "app/rigwright/Output.h"
#include "core/Log.h"
#include "unidevice/DriverManager.h"
#include "unidevice/sdl/SdlDriver.h"

namespace orv::app {

void startDevices(Output& output) {
  auto driver = std::make_unique<unidevice::SdlDriver>([&output](const std::string& line) {
    rws::core::LogEntry(rws::core::LogLevel::kInfo, line);
    output.note("devices: " + line);
  });
  if (!driver->available()) output.warn("no game controllers: " + driver->error());
  unidevice::DriverManager::instance().addDriver(std::move(driver));
}

void stopDevices() {
  unidevice::DriverManager::instance().removeDriver(unidevice::SdlDriver::kName);
}

}  // namespace orv::app
