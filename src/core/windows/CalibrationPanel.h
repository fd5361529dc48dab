// Calibration of a control, asked for step by step.
#pragma once

#include <QTimer>
#include <optional>
#include <string>
#include <vector>

#include "unidevice/CalibrationMeasure.h"

namespace orv::gui {
class Component;
}
namespace orv::util {
class Message;
}

namespace orv::rws::core::windows {

class Windows;

/// Part of a window: shows how a control is calibrated, measures it and forgets it. The window
/// keeps the devices awake.
class CalibrationPanel {
 public:
  explicit CalibrationPanel(Windows& windows);

  /// Makes it in `into`.
  void Build(gui::Component& into);
  /// The controls that it may be about; a measurement of another one ends.
  void SetControls(std::vector<unidevice::ControlChoice> controls);
  /// Brings what is shown to what there is now.
  void Show();
  /// The hardware's values, where one is measured.
  void ShowLive();
  bool IsMeasuring() const { return m_measure.has_value(); }
  void Cancel();
  /// Takes the hardware's values; by itself 60 times a second while it measures.
  void Look();
  /// False when it was none of the panel's.
  bool OnComponent(gui::Component& source, const util::Message& message);

 private:
  /// Null when there is none.
  const unidevice::ControlChoice* GetControl() const;
  void Begin(unidevice::Calibration::Kind kind);
  void Next();
  void End(const std::string& text);
  void ShowState();
  void ShowButtons();
  void SetText(int id, const std::string& text);

  Windows& m_windows;
  gui::Component* m_root = nullptr;  ///< its window's
  std::vector<unidevice::ControlChoice> m_controls;
  std::size_t m_index = 0;  ///< of the one that is meant
  std::optional<unidevice::CalibrationMeasure> m_measure;
  std::string m_notice;  ///< how the last one ended, or why a step must be done again
  QTimer m_watch;
};

/// "Rests at -1, full at 0.98", or that there is none.
std::string CalibrationWords(const unidevice::Calibration* calibration);

}  // namespace orv::rws::core::windows
