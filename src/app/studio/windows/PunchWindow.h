// What is asked before a take in the place of a part.
#pragma once

#include "app/session/anyhost/TimeSpan.h"
#include "core/windows/ModalWindow.h"

namespace orv::rws::core::windows {
class WindowSettings;
}

namespace orv::app {

/// Asks how a take between the marks begins and what becomes of what lies behind it. Modal.
class PunchWindow : public rws::core::windows::ModalWindow {
 public:
  struct Choice {
    double preRoll = 2.0;  ///< s
    double blend = 0.2;    ///< s
    bool goOn = true;      ///< with the old inputs behind it
  };
  /// As it was chosen the last time.
  static Choice Read(const rws::core::windows::WindowSettings& settings);
  static void Keep(rws::core::windows::WindowSettings& settings, const Choice& choice);

  PunchWindow(rws::core::windows::Windows& windows, const TimeSpan& marks);

  /// False when the user cancels.
  bool Run(Choice& choice);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  const TimeSpan m_marks;
  Choice m_choice;
};

}  // namespace orv::app
