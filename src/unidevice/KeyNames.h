// Names of the keys of a keyboard.
#pragma once

#include <string>
#include <vector>

namespace orv::unidevice {

/// Name of the device whose controls are keys.
inline constexpr const char* kKeyboardName = "Keyboard";

/// The types of the controls of a keyboard, one of each: letters and digits, then the others, such
/// as "Up_Arrow".
const std::vector<std::string>& keyNames();

}  // namespace orv::unidevice
