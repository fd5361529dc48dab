// What is asked of a sound, or of a picture behind a camera.
#pragma once

#include <functional>
#include <string>

#include "core/windows/ModalWindow.h"
#include "util/Sentence.h"

namespace orv::app {

/// Asks for the file and the frame where it begins, and for a picture how much of it is seen.
/// Modal.
class MediaWindow : public rws::core::windows::ModalWindow {
 public:
  enum class Kind { kSound, kBackdrop };

  struct Choice {
    std::string file;  ///< empty for none
    int frame = 0;
    double opacity = 1.0;  ///< [0, 1]
  };

  /// `check` tells what is wrong with a file, empty for nothing.
  MediaWindow(rws::core::windows::Windows& windows, Kind kind,
              std::function<util::Sentence(const std::string& file)> check);

  /// Begins with what `choice` holds. False when the user cancels.
  bool Run(Choice& choice);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowFile();
  void ChooseAFile();

  const Kind m_kind;
  const std::function<util::Sentence(const std::string&)> m_check;
  Choice m_choice;
};

}  // namespace orv::app
