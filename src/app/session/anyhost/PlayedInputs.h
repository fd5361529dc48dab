// Inputs of rigs fed by a file during a take.
#pragma once

#include "app/session/anyhost/InputFile.h"

namespace orv::unidevice {
class SoftwareDevice;
}

namespace orv::app {

/// Feeds inputs of rigs from a file for as long as it lives; afterwards each has its own mapping
/// again.
class PlayedInputs {
 public:
  PlayedInputs(rws::core::CoreImplementation& core, InputFile file);
  ~PlayedInputs();
  PlayedInputs(const PlayedInputs&) = delete;
  PlayedInputs& operator=(const PlayedInputs&) = delete;

 private:
  InputFile m_file;
  unidevice::SoftwareDevice* m_device;  ///< owned by the dummy driver
};

}  // namespace orv::app
