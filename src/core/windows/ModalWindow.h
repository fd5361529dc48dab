// A window that asks something.
#pragma once

#include <string>

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Stands before all others until one of its two buttons, or its close button, is pressed.
class ModalWindow : public Window {
 protected:
  /// How large it is when it comes.
  enum class Size {
    kAsKept,   ///< as the user left it last
    kContent,  ///< as its content, which may be another each time
  };

  /// `accept` and `cancel` are the numbers of its buttons.
  ModalWindow(Windows& windows, const std::string& name, std::string document, int accept,
              int cancel, Size size);

  /// Builds it where needed and returns when it is closed: true when it was accepted.
  bool Ask();
  /// The button to accept is pressed, or what does the same: ends the question unless something is
  /// still amiss.
  virtual void Accept() { End(true); }
  void End(bool accepted);
  /// Derived ones call it with what they hear.
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  const int m_accept, m_cancel;
  const Size m_size;
};

}  // namespace orv::rws::core::windows
