// Where key presses come from.
#pragma once

#include <functional>

namespace orv::unidevice {

/// A platform's own way to hear of keys, which tells all of them whatever widget has the focus.
class KeySource {
 public:
  using Tell = std::function<void(int code, bool down)>;  ///< code as Key::code

  virtual ~KeySource() = default;

  /// Begins or ends to listen. After the beginning the next `poll` tells the keys that are held.
  virtual void listen(bool on) = 0;

  /// Tells what has happened since the last call; waits for nothing.
  virtual void poll(const Tell& tell) = 0;
};

}  // namespace orv::unidevice
