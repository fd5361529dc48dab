// The driver without hardware.
#pragma once

#include "unidevice/Driver.h"

namespace orv::unidevice {

/// Holds devices that are software, notably the trinary emulator. The DriverManager makes the only
/// one of a process.
class DummyDriver : public Driver {
 public:
  static constexpr const char* kName = "dummydriver";

  DummyDriver() : Driver(kName) {}
};

}  // namespace orv::unidevice
