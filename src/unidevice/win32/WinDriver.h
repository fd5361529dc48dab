// Joysticks, wheels and pads through DirectInput 8.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "unidevice/Driver.h"
#include "unidevice/win32/DirectInput.h"
#include "unidevice/win32/HiddenWindow.h"

namespace orv::unidevice {

/// Driver of all game controllers that DirectInput sees. Devices appear and vanish while it is
/// polled: Windows tells its windows when hardware has changed, and only then it is looked for,
/// since that takes DirectInput tenths of a second.
///
/// Per device: axes X, Y, Z and their rotations, those that are there, are `Axis` 0 and on, its
/// sliders `Slider` 0 and 1, all in [-1, 1]; buttons and hats are as in the SDL driver. A second
/// device of the same name is called "<name> #2", and so on.
///
/// Needs a thread that handles its window messages, the one that polls.
class WinDriver : public Driver {
 public:
  static constexpr const char* kName = "windriver";

  /// Gets one line, without a line end, for each thing worth noting.
  using LogFn = std::function<void(const std::string&)>;

  /// With a null `input` (see `openDirectInput`) there are no devices.
  explicit WinDriver(ComPointer<IDirectInput8W> input, LogFn log = {});
  ~WinDriver() override;

  /// Takes up new devices and destroys those that are gone when hardware has changed, and polls the
  /// rest.
  bool update() override;

  /// A HWND; the devices are opened on behalf of this window from the next `activate` on.
  void setWindow(void* window) override;

 private:
  void dropGone();
  void addNew();
  void open(const DIDEVICEINSTANCEW& found);
  void log(const std::string& line) const;

  LogFn m_log;
  HiddenWindow m_hidden;  ///< hears of hardware; stands for the program's window until it is told
  ComPointer<IDirectInput8W> m_input;
  HWND m_window;
  std::vector<GUID> m_refused;   ///< devices that could not be opened, until hardware changes
  int m_looks = 1;               ///< how often to look for devices yet
  std::uint64_t m_nextLook = 0;  ///< when (ms since the system began)
};

}  // namespace orv::unidevice
