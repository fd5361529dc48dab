// Drawing tablets through Wintab.
#pragma once

#include "unidevice/tablet/TabletDriver.h"
#include "unidevice/win32/HiddenWindow.h"
#include "unidevice/win32/Wintab.h"

namespace orv::unidevice {

/// The device "Tablet" by Wintab; its position is that on the tablet. While another program's
/// window is the active one the pen is out of reach. Needs a thread that handles its window
/// messages, the one that wakes the devices.
class WintabDriver : public TabletDriver {
 public:
  explicit WintabDriver(const wintab::Api& api);
  ~WintabDriver() override;

  /// Begins to listen. False if there is no tablet.
  bool activate() override;
  bool deactivate() override;
  bool update() override;

 private:
  void take(UINT message, WPARAM wide, LPARAM param);
  PenState penOf(const wintab::Packet& packet) const;
  void close();

  const wintab::Api m_api;
  HiddenWindow m_hidden;
  wintab::Handle m_handle = nullptr;
  wintab::Context m_context{};
  wintab::Axis m_pressure{};
  wintab::Axis m_orientation[3]{};
  bool m_active = false;  ///< one of our windows was, when last looked
};

}  // namespace orv::unidevice
