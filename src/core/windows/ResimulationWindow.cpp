#include "core/windows/ResimulationWindow.h"

#include "core/CoreImplementation.h"
#include "core/WindowIds.h"
#include "core/take/ResimulateWindow.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Progressbar.h"

namespace orv::rws::core::windows {

namespace {

/// The label in the group of the current frame.
constexpr int kCurrentFrameLabel = 105;

}  // namespace

ResimulationWindow::ResimulationWindow(Windows& windows)
    : Window(windows, "Resimulation", kResimulationLayout) {}

void ResimulationWindow::Open(bool canShowFrames, bool updateViewport) {
  if (!Build()) return;
  using gui::componentinterface::CheckBox;
  With<CheckBox>(kUpdateViewport, [=](CheckBox& box) {
    box.SetOn(updateViewport);
    box.GetComponent().SetVisible(canShowFrames);
  });
  if (gui::Component* label = Find(kUpdateViewportLabel)) label->SetVisible(canShowFrames);
  Show();
}

void ResimulationWindow::SetStatus(const ResimulationStatus& status) {
  SetTitle(status.title);
  SetText(kRangeLabel, status.range);
  SetText(kCurrentFrameLabel, status.currentFrame);
  SetText(kFramesDoneLabel, status.framesDone);
  SetText(kRemainingLabel, status.remaining);
  SetProgress(status.progress);
}

void ResimulationWindow::SetProgress(float progress) {
  using gui::componentinterface::Progressbar;
  With<Progressbar>(kProgressBar, [progress](Progressbar& bar) { bar.SetProgress(progress); });
}

void ResimulationWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (!GetCore().IsResimulating()) return;
  auto& run = GetCore().GetResimulateWindow();
  if (message.id == gui::kMsgClosed ||
      (message.id == gui::kMsgClicked && source.GetId() == kStopButton))
    run.OnStopButton();
  else if (message.id == gui::kMsgChecked && source.GetId() == kUpdateViewport)
    run.OnUpdateViewport(message.param != 0);
}

}  // namespace orv::rws::core::windows
