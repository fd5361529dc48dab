#include "core/windows/MainWindowNotice.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include "core/CoreImplementation.h"
#include "core/services/Product.h"
#include "core/windows/MainWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::rws::core::windows {

using gui::Translate;

void MainWindowNotice::Show(const std::string& text, const std::string& link) {
  m_link = link;
  GetWindow().SetText(kMainNoticeText, text);
  if (gui::Component* bar = GetWindow().Find(kMainNotice)) bar->SetVisible(!text.empty());
  if (gui::Component* button = GetWindow().Find(kMainNoticeLink)) {
    button->SetVisible(!link.empty());
    button->SetTooltip(link);
  }
}

void MainWindowNotice::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id != gui::kMsgClicked) return;
  if (source.GetId() == kMainNoticeClose) Show({}, {});
  if (source.GetId() == kMainNoticeLink && !m_link.empty())
    QDesktopServices::openUrl(QUrl(QString::fromStdString(m_link)));
}

void MainWindowNotice::OnCore(const util::Message& message) {
  const auto* checked = NewsIn<UpdateChecked>(message);
  if (!checked) return;
  if (!checked->problem.empty())
    return Show(Translate("The check for newer versions failed: %1", {checked->problem}), {});
  if (!checked->isNewer)
    return Show(Translate("This is the newest version: %1.", {kProductVersion}), {});
  const std::string text =
      Translate("Version %1 is there; this is %2.", {checked->version, kProductVersion});
  Show(checked->link.empty() ? text : text + " " + checked->link, checked->link);
}

}  // namespace orv::rws::core::windows
