// Joysticks, wheels and pads through SDL's joystick interface.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "unidevice/Driver.h"

namespace orv::unidevice {

/// Driver of all game controllers that SDL sees; needs no window and no video. Devices appear and
/// vanish while it is polled.
///
/// Per device: each axis is an `Axis` in [-1, 1], each button a `Button` of 0 or 1, and each hat
/// two `Hat` controls of -1, 0 or 1: index 2 * hat is left to right, 2 * hat + 1 down to up. A
/// second device of the same name is called "<name> #2", and so on; the lowest free number is
/// taken, so a single device that returns gets its name back.
///
/// A machine without controllers, or without the right to open them, is fine: then there are no
/// devices. Main thread only.
class SdlDriver : public Driver {
 public:
  static constexpr const char* kName = "sdl";

  /// Gets one line, without a line end, for each thing worth noting.
  using LogFn = std::function<void(const std::string&)>;

  /// Initialises SDL's joystick part beside whatever else uses SDL in the process, and takes up the
  /// devices present. SDL installs no signal handlers. `log` may be empty.
  explicit SdlDriver(LogFn log = {});
  ~SdlDriver() override;

  /// False if SDL's joystick part could not be initialised; the driver has no devices then.
  bool available() const { return m_available; }

  /// Why `available` is false.
  const std::string& error() const { return m_error; }

  /// Takes up new devices, destroys those that are gone, and polls the rest.
  bool update() override;

 private:
  void takeEvents();
  void dropGone();
  void addNew();
  void open(int sdlIndex, int instance);
  std::string distinctName(const std::string& wanted) const;
  void log(const std::string& line) const;

  LogFn m_log;
  bool m_available = false;
  bool m_haptic = false;
  std::string m_error;
  std::set<int> m_refused;  ///< SDL's ids of devices that could not be opened
};

}  // namespace orv::unidevice
