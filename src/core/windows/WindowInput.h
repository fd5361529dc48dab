// Keyboard and pen among the input devices.
#pragma once

#include <memory>

#include "gui/InputSink.h"
#include "gui/component/qt/InputWatch.h"
#include "unidevice/keyboard/KeySource.h"

namespace orv::unidevice {
class KeyboardDriver;
class TabletDriver;
}  // namespace orv::unidevice
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::core::windows {

/// Plugs in the devices "Keyboard" and, once a pen has been heard of, "Tablet" while it lives: by
/// a source of keys where it is given one, else by the events of the process's windows. In a take
/// widgets don't get keys that are mapped, and while a control is looked for none but Escape.
class WindowInput : public gui::InputSink {
 public:
  explicit WindowInput(CoreImplementation& core, std::unique_ptr<unidevice::KeySource> source = {});
  ~WindowInput() override;

  bool OnKey(int code, bool down) override;
  void OnActive(bool active) override;
  void OnTyping(bool typing) override;
  void OnPen(const gui::PenEvent& pen) override;
  void OnPenGone() override;

 private:
  bool IsInTake() const;

  CoreImplementation& m_core;
  unidevice::KeyboardDriver* m_keyboard;  ///< owned by the DriverManager
  unidevice::TabletDriver* m_tablet;      ///< likewise
  gui::component::qt::InputWatch m_watch;
};

}  // namespace orv::rws::core::windows
