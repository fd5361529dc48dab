#include "core/windows/AboutWindow.h"

#include "core/services/Product.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::rws::core::windows {

AboutWindow::AboutWindow(Windows& windows)
    : Window(windows, "About", "/core/layout/rws_about.xml") {}

void AboutWindow::OnBuilt() {
  SetText(kAboutName, kProductName);
  SetText(kAboutVersion, gui::Translate("Version %1", {kProductVersion}));
}

void AboutWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id == gui::kMsgClicked && source.GetId() == kAboutClose)
    GetWindows().Close(WindowKind::kAbout);
}

}  // namespace orv::rws::core::windows
