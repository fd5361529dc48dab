// A question or a message that waits for its answer.
#pragma once

#include <string>

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Modal. Flags and answers are those of CInterface::MessageBox.
class MessageBoxWindow : public Window {
 public:
  MessageBoxWindow(Windows& windows, std::string title, std::string text, unsigned flags);

  /// Shows it and returns the answer; kAnswerCancel when its document can't be used.
  int Run();

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  std::string m_title, m_text;
  unsigned m_flags;
};

}  // namespace orv::rws::core::windows
