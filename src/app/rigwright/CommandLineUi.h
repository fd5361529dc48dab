// What the core shows, on a terminal.
#pragma once

#include <string>

#include "core/UserInterface.h"

namespace orv::app {

class Output;
class ProgressBar;

/// Message boxes print their text and take the default answer, or yes under --yes; the countdown is
/// told on stderr. There are no windows.
class CommandLineUi : public rws::core::UserInterface {
 public:
  CommandLineUi(Output& output, bool yes) : m_output(output), m_yes(yes) {}

  rws::core::CountdownDialog* CreateCountdownDialog() override;
  int MessageBox(const std::string& title, const std::string& text, unsigned flags) override;

  /// Where the countdown is shown; not owned, null for nowhere.
  void SetProgress(ProgressBar* progress) { m_progress = progress; }

 private:
  class Countdown;

  Output& m_output;
  const bool m_yes;
  ProgressBar* m_progress = nullptr;
};

}  // namespace orv::app
