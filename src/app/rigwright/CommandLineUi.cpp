#include "app/rigwright/CommandLineUi.h"

#include "app/rigwright/Output.h"
#include "app/rigwright/ProgressBar.h"
#include "core/interface/CInterface.h"

namespace orv::app {

class CommandLineUi::Countdown : public rws::core::CountdownDialog {
 public:
  explicit Countdown(CommandLineUi& ui) : m_ui(ui) {}

  void Set(int seconds, double) override {
    m_seconds = seconds;
    if (m_shown) Show();
  }
  void Show() override {
    m_shown = true;
    if (m_ui.m_progress)
      m_ui.m_progress->Say("take: starts in " + std::to_string(m_seconds) + " s");
  }
  void Hide() override {
    if (m_shown && m_ui.m_progress) m_ui.m_progress->Say("take: go");
    m_shown = false;
  }

 private:
  CommandLineUi& m_ui;
  int m_seconds = 0;
  bool m_shown = false;
};

rws::core::CountdownDialog* CommandLineUi::CreateCountdownDialog() {
  return new Countdown(*this);
}

int CommandLineUi::MessageBox(const std::string& title, const std::string& text, unsigned flags) {
  constexpr unsigned kButtons = 15;  // the low four bits
  if (m_progress) m_progress->Clear();
  const std::string said = (title.empty() ? "" : title + ": ") + text;
  switch (flags & kButtons) {
    case rws::kButtonsYesNo:
    case rws::kButtonsYesNoCancel:
      m_output.Warn(said + (m_yes ? " Answered: yes" : " Answered: no (--yes answers yes)"));
      return m_yes ? rws::kAnswerYes : rws::kAnswerNo;
    case rws::kButtonsOkCancel:
      m_output.Warn(said + (m_yes ? " Answered: OK" : " Answered: cancel (--yes answers OK)"));
      return m_yes ? rws::kAnswerOk : rws::kAnswerCancel;
    default:
      m_output.Warn(said);
      return rws::kAnswerOk;
  }
}

}  // namespace orv::app
