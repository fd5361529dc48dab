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
/// two `Hat` controls of -1, 0 or 1: index 2 * hat is left to right, 2 * hat + 1 down to up. Where
/// SDL knows the make of a pad its names stand in the descriptions; types and numbers stay. A
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

  /// Whether hardware of this USB id speaks in another driver now, and so must not appear here.
  using ElsewhereFn = std::function<bool(unsigned vendor, unsigned product)>;

  /// Initialises SDL's joystick part beside whatever else uses SDL in the process, and takes up the
  /// devices present. SDL installs no signal handlers. `log` and `elsewhere`, which is asked at
  /// each `update`, may be empty.
  explicit SdlDriver(LogFn log = {}, ElsewhereFn elsewhere = {});
  ~SdlDriver() override;

  /// False if SDL's joystick part could not be initialised; the driver has no devices then.
  bool available() const { return m_available; }

  /// Why `available` is false.
  const std::string& error() const { return m_error; }

  /// Takes up new devices, destroys those that are gone, and polls the rest.
  bool update() override;

 private:
  void takeEvents();
  bool speaksElsewhere(unsigned vendor, unsigned product) const;
  void dropGone();
  void addNew();
  void open(int sdlIndex, int instance);
  void log(const std::string& line) const;

  LogFn m_log;
  ElsewhereFn m_elsewhere;
  bool m_available = false;
  bool m_haptic = false;
  std::string m_error;
  std::set<int> m_refused;  ///< SDL's ids of devices that could not be opened
};

}  // namespace orv::unidevice
