// The example scenes that come with the program.
#pragma once

#include <string>

namespace orv::app {

/// Writes drive.glb, shaky.glb and tank.glb into `folder`, where Car.prm and Tank.prm lie. Throws
/// std::runtime_error with what is wrong.
void MakeExamples(const std::string& folder);

}  // namespace orv::app
