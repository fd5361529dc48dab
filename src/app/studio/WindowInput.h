// Keyboard and pen among the input devices.
#pragma once

#include "gui/InputSink.h"
#include "gui/component/qt/InputWatch.h"

namespace orv::rws::core {
class CoreImplementation;
}
namespace orv::unidevice {
class KeyboardDriver;
class TabletDriver;
}  // namespace orv::unidevice

namespace orv::app {

/// Plugs in the devices "Keyboard" and, once a pen has been heard of, "Tablet" while it lives: by
/// the X server's own events where the program's windows stand on one, else by those of the
/// windows. In a take widgets don't get keys that are mapped, and while a control is looked for
/// none but Escape.
class WindowInput : public gui::InputSink {
 public:
  explicit WindowInput(rws::core::CoreImplementation& core);
  ~WindowInput() override;

  bool OnKey(int code, bool down) override;
  void OnActive(bool active) override;
  void OnTyping(bool typing) override;
  void OnPen(const gui::PenEvent& pen) override;
  void OnPenGone() override;

 private:
  bool IsInTake() const;

  rws::core::CoreImplementation& m_core;
  unidevice::KeyboardDriver* m_keyboard;  ///< owned by the DriverManager
  unidevice::TabletDriver* m_tablet;      ///< likewise
  gui::component::qt::InputWatch m_watch;
};

}  // namespace orv::app
