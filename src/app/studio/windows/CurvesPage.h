// The curves of inputs in the main window.
#pragma once

#include <string>
#include <vector>

#include "core/windows/MainWindowPage.h"

namespace orv::app {

class CurveStrip;

/// Shows the strip below the time line, with the inputs to choose from and its tools beside it.
class CurvesPage : public rws::core::windows::MainWindowPage {
 public:
  CurvesPage(rws::core::windows::MainWindowFrame& window, CurveStrip& strip);
  ~CurvesPage() override;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnSettingsChanged() override;

 private:
  void Show();
  void Keep();

  CurveStrip& m_strip;
  std::vector<std::string> m_shown;  ///< names of inputs as the tree has them
};

}  // namespace orv::app
