#include "app/studio/windows/ProgressWindow.h"

#include <QCoreApplication>
#include <utility>

#include "app/studio/windows/StudioWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Progressbar.h"

namespace orv::app {

namespace {

using namespace gui::componentinterface;

constexpr double kPatience = 0.4;  ///< s of work before anything is shown
constexpr double kPeriod = 0.05;   ///< s

}  // namespace

ProgressWindow::ProgressWindow(rws::core::windows::Windows& windows, std::string title,
                               std::string text)
    : Window(windows, "Progress", "/core/layout/rws_progress.xml"),
      m_title(std::move(title)),
      m_text(std::move(text)) {}

ProgressWindow::~ProgressWindow() {
  Hide();
}

Monitor ProgressWindow::MakeMonitor() {
  return Monitor(
      [this](long done, long total, double seconds) {
        Tell(total > 0 ? static_cast<double>(done) / static_cast<double>(total) : -1.0, seconds);
      },
      &m_cancel);
}

void ProgressWindow::Tell(double done, double seconds) {
  if (seconds < kPatience || seconds < m_told + kPeriod) return;
  m_told = seconds;
  if (!IsShown()) {
    if (!Build()) return;
    if (auto* dialog = dynamic_cast<Dialog*>(GetRoot())) dialog->SetModal(true);
    Show();
  }
  With<Progressbar>(kProgressBar, [done](Progressbar& bar) { bar.SetProgress(done); });
  QCoreApplication::processEvents();
}

void ProgressWindow::OnBuilt() {
  SetTitle(m_title);
  SetText(kProgressText, m_text);
}

void ProgressWindow::OnComponent(gui::Component& source, util::Message& message) {
  const bool cancelled = message.id == gui::kMsgClicked && source.GetId() == kProgressCancel;
  if (cancelled || message.id == gui::kMsgClosed) m_cancel = true;
}

}  // namespace orv::app
