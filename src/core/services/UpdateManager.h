// The subsystem that knows the version of the program.
#pragma once

#include <string>

#include "core/CoreSubSystem.h"

namespace orv::rws::core {

/// Tells the version of this program. A check for newer ones needs a window to show its answer and
/// runs only where one is open.
class UpdateManager : public CoreSubSystem {
 public:
  static std::string GetProductName() { return "Orvel Rigwright"; }
  static std::string GetVersion() { return "7.0"; }
};

}  // namespace orv::rws::core
