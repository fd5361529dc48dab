#include "core/windows/CountdownWindow.h"

#include "core/CoreImplementation.h"
#include "core/windows/SmallWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/Progressbar.h"

namespace orv::rws::core::windows {

CountdownWindow::CountdownWindow(Windows& windows)
    : Window(windows, "Countdown", "/core/layout/rws_countdown.xml") {}

void CountdownWindow::Set(int seconds, double fraction) {
  SetText(kCountdownSeconds, std::to_string(seconds));
  using gui::componentinterface::Progressbar;
  With<Progressbar>(kCountdownFraction,
                    [fraction](Progressbar& bar) { bar.SetProgress(fraction); });
}

void CountdownWindow::OnComponent(gui::Component& source, util::Message& message) {
  const bool closed = message.id == gui::kMsgClosed;
  if (closed || (message.id == gui::kMsgClicked && source.GetId() == kCountdownCancel))
    GetCore().StopRecording();
}

}  // namespace orv::rws::core::windows
