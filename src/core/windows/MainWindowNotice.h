// What the program has to say, in the main window.
#pragma once

#include <string>

#include "core/windows/MainWindowPage.h"

namespace orv::rws::core::windows {

/// Shows a notice until the user closes it or another takes its place, and the answer of a check
/// for newer versions with the page about it.
class MainWindowNotice : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override { Show({}, {}); }
  void OnNotice(const std::string& text) override { Show(text, {}); }
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;

 private:
  void Show(const std::string& text, const std::string& link);

  std::string m_link;  ///< https
};

}  // namespace orv::rws::core::windows
