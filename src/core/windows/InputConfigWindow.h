// What feeds the inputs of a rig, and how they answer.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/take/DevicePolling.h"
#include "core/windows/CalibrationPanel.h"
#include "core/windows/InputRows.h"
#include "core/windows/ProfileRow.h"
#include "core/windows/ResponseEditor.h"
#include "core/windows/Window.h"
#include "unidevice/ControlFinder.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::rws::core::windows {

/// All inputs of one rig, with their mappings and values, and of the chosen one the response, the
/// calibration and "Press now!". The devices are awake while it is shown.
class InputConfigWindow : public Window {
 public:
  /// `row` is that of the rig.
  InputConfigWindow(Windows& windows, int row);
  ~InputConfigWindow() override;

  int GetRig() const { return m_row; }
  int GetInput() const { return m_input; }
  void Choose(int input);
  bool IsLooking() const { return m_finder.has_value(); }
  /// Looks for the moved control; by itself 60 times a second while one is looked for. `now` (s)
  /// never falls.
  void Look(double now);

  void OnLive() override;
  void OnSettingsChanged() override;

 protected:
  void OnBuilt() override;
  void OnShown() override;
  void OnHidden() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;

 private:
  Instance* FindRig() const;
  unidevice::Property* FindInput() const;

  /// Notes how all inputs stand; how many stand otherwise than when it was called last.
  int NoteInputs();
  void ShowAll();
  void ShowTitle();
  void ShowMappings();
  void Arm(int input, bool armed);
  void ShowChosen();
  void ShowTask();
  std::string WhyLocked() const;

  void OnButton(int id);
  void BeginLooking(bool pair);
  void EndLooking();
  void Tell(const std::string& text);

  const int m_row;
  std::string m_kind;  ///< Tool::GetDisplayId
  int m_input = 0;
  std::vector<std::pair<InputResponse, std::vector<unidevice::ControlChoice>>> m_noted;
  InputRows m_rows;
  ProfileRow m_profiles;
  ResponseEditor m_editor;
  CalibrationPanel m_calibration;
  std::optional<unidevice::ControlFinder> m_finder;
  std::optional<DevicePolling::Search> m_search;  ///< beside the finder
  QTimer m_watch;
  QElapsedTimer m_clock;
  std::unique_ptr<DevicePolling::Wake> m_wake;
};

}  // namespace orv::rws::core::windows
