// The dialog that fits a car to a user's model.
#pragma once

#include <vector>

#include "core/windows/ModalWindow.h"
#include "core/windows/SceneBrowser.h"

namespace orv::rws::core::windows {

/// Asks which nodes are body and wheels. Modal.
class FitCarWindow : public ModalWindow {
 public:
  FitCarWindow(Windows& windows, SceneBrowser& browser, int rigRow);

  /// Begins with what `car` holds. False when the user cancels.
  bool Run(SceneBrowser::Car& car);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  /// Null for a number that no component has.
  static int* PartOf(SceneBrowser::Car& car, int id);
  void ShowAccept();

  SceneBrowser& m_browser;
  const int m_rig;
  SceneBrowser::Car m_car;
};

}  // namespace orv::rws::core::windows
