#include "core/windows/WindowInput.h"

#include <QTimer>
#include <cmath>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/services/Preferences.h"
#include "core/take/DevicePolling.h"
#include "unidevice/DriverManager.h"
#include "unidevice/keyboard/KeyboardDriver.h"
#include "unidevice/tablet/TabletDriver.h"

namespace orv::rws::core::windows {

namespace {

constexpr int kEscape = 1;  ///< its code

}  // namespace

WindowInput::WindowInput(CoreImplementation& core, std::unique_ptr<unidevice::KeySource> source)
    : m_core(core),
      m_keyboard(new unidevice::KeyboardDriver(std::move(source))),
      m_tablet(new unidevice::TabletDriver),
      m_watch(*this) {
  auto& drivers = unidevice::DriverManager::instance();
  drivers.addDriver(std::unique_ptr<unidevice::Driver>(m_keyboard));
  drivers.addDriver(std::unique_ptr<unidevice::Driver>(m_tablet));
  // A field that was typed in before would keep all keys of the take. What stands in it is taken
  // then, which is a request, and so has to wait until the take has begun.
  m_keyboard->onActivate = [this] {
    QTimer::singleShot(0, &m_watch, [this] {
      if (IsInTake()) gui::component::qt::InputWatch::LeaveTextField();
    });
  };
  m_watch.TellState();
}

WindowInput::~WindowInput() {
  for (const char* name : {unidevice::TabletDriver::kName, unidevice::KeyboardDriver::kName})
    unidevice::DriverManager::instance().removeDriver(name);
}

bool WindowInput::IsInTake() const {
  return m_core.IsRecording() && !m_core.IsResimulating();
}

bool WindowInput::OnKey(int code, bool down) {
  m_keyboard->setKey(code, down);
  if (!m_keyboard->isListening()) return false;
  if (IsInTake()) return m_keyboard->isMapped(code);
  return m_core.GetDevices().IsSearched() && code != kEscape;
}

void WindowInput::OnActive(bool active) {
  m_keyboard->setActive(active);
  if (!active) m_tablet->leave();
}

void WindowInput::OnTyping(bool typing) {
  m_keyboard->setTyping(typing);
}

void WindowInput::OnPen(const gui::PenEvent& pen) {
  constexpr double kFullTilt = 60.0, kHalfTurn = 180.0;  // degrees
  const bool byWindow = m_core.GetPreferences().penArea == Preferences::PenArea::kWindow;
  unidevice::PenState state;
  state.x = 2.0 * (byWindow ? pen.left : pen.screenLeft) - 1.0;
  state.y = 1.0 - 2.0 * (byWindow ? pen.top : pen.screenTop);
  state.tiltX = pen.tiltRight / kFullTilt;
  state.tiltY = -pen.tiltNear / kFullTilt;
  state.twist = std::remainder(pen.twist, 2.0 * kHalfTurn) / kHalfTurn;
  state.pressure = pen.pressure;
  state.tip = pen.tip;
  state.firstButton = pen.firstButton;
  state.secondButton = pen.secondButton;
  state.isNear = true;
  m_tablet->setPen(state);
}

void WindowInput::OnPenGone() {
  m_tablet->leave();
}

}  // namespace orv::rws::core::windows
