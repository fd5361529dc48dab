// What is asked before a preview is written.
#pragma once

#include <string>
#include <vector>

#include "core/windows/ModalWindow.h"

namespace orv::app {

/// Asks through which camera, how large, and whether grid and signs, or the view's overlay, are to
/// be seen. Modal.
class PreviewWindow : public rws::core::windows::ModalWindow {
 public:
  struct Camera {
    std::string name;
    double aspect = 16.0 / 9.0;  ///< width over height
  };
  struct Choice {
    int camera = -1;  ///< of the list; -1: the present eye
    int width = 1280, height = 720;
    bool signs = false, overlay = false;
  };

  PreviewWindow(rws::core::windows::Windows& windows, std::vector<Camera> cameras,
                std::string frames);

  /// False when the user cancels.
  bool Run(Choice& choice);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowHeight();

  const std::vector<Camera> m_cameras;
  const std::string m_frames;
  Choice m_choice;
};

}  // namespace orv::app
