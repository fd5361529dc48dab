#include "core/windows/MessageBoxWindow.h"

#include <utility>
#include <vector>

#include "core/interface/CInterface.h"
#include "core/windows/SmallWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;

constexpr unsigned kButtons = 15;
/// What RunModal gives for a box that was closed.
constexpr int kClosed = 0;

std::vector<int> AnswersOf(unsigned flags) {
  switch (flags & kButtons) {
    case kButtonsYesNo:
      return {kAnswerYes, kAnswerNo};
    case kButtonsYesNoCancel:
      return {kAnswerYes, kAnswerNo, kAnswerCancel};
    case kButtonsOkCancel:
      return {kAnswerOk, kAnswerCancel};
    default:
      return {kAnswerOk};
  }
}

const char* IconOf(unsigned flags) {
  switch (flags & ~kButtons) {
    case kIconQuestion:
      return "[coreimages]/icons/question.png";
    case kIconCritical:
      return "[coreimages]/icons/error.png";
    case kIconWarning:
      return "[coreimages]/icons/warning.png";
    default:
      return nullptr;
  }
}

}  // namespace

MessageBoxWindow::MessageBoxWindow(Windows& windows, std::string title, std::string text,
                                   unsigned flags)
    : Window(windows, "MessageBox", "/core/layout/rws_message.xml"),
      m_title(std::move(title)),
      m_text(std::move(text)),
      m_flags(flags) {}

void MessageBoxWindow::OnBuilt() {
  SetTitle(m_title);
  SetText(kBoxText, m_text);
  if (const char* icon = IconOf(m_flags))
    With<Label>(kBoxIcon, [icon](Label& label) {
      label.SetImage(icon);
      label.GetComponent().SetVisible(true);
    });
  const std::vector<int> answers = AnswersOf(m_flags);
  for (int answer = kAnswerOk; answer <= kAnswerNo; ++answer)
    if (gui::Component* button = Find(kBoxFirstAnswer + answer))
      button->SetVisible(std::count(answers.begin(), answers.end(), answer) != 0);
}

int MessageBoxWindow::Run() {
  if (!Build()) return kAnswerCancel;
  if (gui::Component* button = Find(kBoxFirstAnswer + AnswersOf(m_flags).front()))
    button->TakeFocus();
  auto* dialog = dynamic_cast<Dialog*>(GetRoot());
  if (!dialog) return kAnswerCancel;
  dialog->FitToContent();
  // Answers count from 0, which is also what a box gives that was closed.
  const int answer = dialog->RunModal();
  return answer == kClosed ? kAnswerCancel : answer - 1;
}

void MessageBoxWindow::OnComponent(gui::Component& source, util::Message& message) {
  const int answer = source.GetId() - kBoxFirstAnswer;
  if (message.id != gui::kMsgClicked || answer < kAnswerOk || answer > kAnswerNo) return;
  if (auto* dialog = dynamic_cast<Dialog*>(GetRoot())) dialog->EndModal(answer + 1);
}

}  // namespace orv::rws::core::windows
