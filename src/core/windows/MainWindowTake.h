// The transport of the main window.
#pragma once

#include <string>
#include <utility>

#include "core/windows/MainWindowPage.h"

namespace orv::rws::core::windows {

/// Takes and resimulations, the slow factor, time, range and frame rate.
class MainWindowTake : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCommand(int command) override;
  void ShowCommands() override;
  void OnCore(const util::Message& message) override;
  void OnLive() override;
  void OnSettingsChanged() override {
    ShowSlowFactor();
    ShowState();
  }

 private:
  void ShowState();
  void ShowSlowFactor();
  /// Time, range and frame rate, of which the host tells by no message.
  void ShowTimes();
  void SetSpinnerQuietly(int id, double value);
  std::string WhyNoTake() const;
  /// How many inputs of the checked rigs a take records, and of how many.
  std::pair<int, int> CountArmed() const;
  /// Whether the latest step of undo is a take.
  bool IsTakeLast() const;

  void Retry();
  void Resimulate();
  void SetTime(double time);
  void SetRange(double start, double end);
  void SetRate(double fps);

  std::string m_status;   ///< as it is shown
  std::string m_problem;  ///< shown in its place until the next run
};

}  // namespace orv::rws::core::windows
