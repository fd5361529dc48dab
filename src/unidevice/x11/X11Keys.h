// Keys of an X server, whatever window has the focus.
#pragma once

#include <memory>
#include <string>

#include "unidevice/keyboard/KeySource.h"

namespace orv::unidevice {

/// Raw key events of XInput2 on a connection of its own. Events are asked for only while it
/// listens.
class X11Keys : public KeySource {
 public:
  /// Null, with `problem` filled, when there is no server or it has no XInput 2.1. An empty
  /// `display` means that of the environment.
  static std::unique_ptr<X11Keys> open(const std::string& display, std::string& problem);
  ~X11Keys() override;

  void listen(bool on) override;
  void poll(const Tell& tell) override;

 private:
  struct Server;
  explicit X11Keys(std::unique_ptr<Server> server);
  void tellHeld(const Tell& tell);

  std::unique_ptr<Server> m_server;
  bool m_begun = false;  ///< listens, and has not told yet what is held
};

}  // namespace orv::unidevice
