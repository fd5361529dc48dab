// Names of the keys of a keyboard.
#pragma once

#include <string>
#include <vector>

namespace orv::unidevice {

/// Name of the device whose controls are keys.
inline constexpr const char* kKeyboardName = "Keyboard";

/// A key by its place: the name is what a US keyboard has there, whatever the user's has.
struct Key {
  std::string name;  ///< type of its control, such as "Up_Arrow"
  int code;          ///< number of the place: the key codes of Linux' input events
};

/// All keys that can be mapped, one of each: letters and digits, then the others.
const std::vector<Key>& allKeys();

/// The types of the controls of a keyboard, in the order of `allKeys`.
const std::vector<std::string>& keyNames();

}  // namespace orv::unidevice
