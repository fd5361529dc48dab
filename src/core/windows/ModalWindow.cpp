#include "core/windows/ModalWindow.h"

#include <utility>

#include "gui/GuiMessages.h"
#include "gui/componentinterface/Dialog.h"

namespace orv::rws::core::windows {

using gui::componentinterface::Dialog;

ModalWindow::ModalWindow(Windows& windows, const std::string& name, std::string document,
                         int accept, int cancel, Size size)
    : Window(windows, name, std::move(document)),
      m_accept(accept),
      m_cancel(cancel),
      m_size(size) {}

bool ModalWindow::Ask() {
  if (!Build()) return false;
  auto* dialog = dynamic_cast<Dialog*>(GetRoot());
  if (!dialog) return false;
  if (m_size == Size::kContent) dialog->FitToContent();
  return dialog->RunModal() == Dialog::kAccepted;
}

void ModalWindow::End(bool accepted) {
  if (auto* dialog = dynamic_cast<Dialog*>(GetRoot()))
    dialog->EndModal(accepted ? Dialog::kAccepted : Dialog::kCancelled);
}

void ModalWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id != gui::kMsgClicked) return;
  if (source.GetId() == m_accept) Accept();
  if (source.GetId() == m_cancel) End(false);
}

}  // namespace orv::rws::core::windows
