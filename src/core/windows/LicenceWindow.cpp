#include "core/windows/LicenceWindow.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "core/tools/Tool.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

const char* IconOf(LicenceState state) {
  if (state == LicenceState::kNotNeeded || state == LicenceState::kValid)
    return "[coreimages]/icons/info.png";
  return "[coreimages]/icons/warning.png";
}

std::string Listed(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : ", ") + text;
  return list;
}

}  // namespace

LicenceWindow::LicenceWindow(Windows& windows)
    : Window(windows, "Licence", "/core/layout/rws_licence.xml") {}

void LicenceWindow::ShowLicence() {
  Licensing& licensing = GetCore().GetLicensing();
  const LicenceState state = licensing.GetState();
  With<Label>(kLicenceIcon, [state](Label& label) { label.SetImage(IconOf(state)); });
  SetText(kLicenceText, licensing.GetText());
  // What a file says counts only when it is its signer's word.
  const bool isSigned = state == LicenceState::kValid || state == LicenceState::kExpired ||
                        state == LicenceState::kClockSetBack;
  if (gui::Component* fields = Find(kLicenceFields)) fields->SetVisible(isSigned);
  const Licence& licence = licensing.GetLicence();
  SetText(kLicenceOwner, licence.licensee);
  SetText(kLicenceNumber, licence.id);
  SetText(kLicenceUntil, licence.validUntil);
  SetText(kLicenceFeatures, Listed(licence.features));
  const bool needed = state != LicenceState::kNotNeeded;
  for (const int id : {int(kLicenceNeeded), int(kLicenceReload), int(kLicenceFolder)})
    if (gui::Component* component = Find(id)) component->SetVisible(needed);
  With<TextBox>(kLicenceFile, [](TextBox& box) { box.SetText(Licensing::GetPath()); });
  ShowKinds();
}

void LicenceWindow::ShowKinds() {
  std::vector<std::string> missing;
  for (Tool* tool : GetCore().GetLibrary().GetTools())
    if (!GetCore().GetLicensing().Allows(tool->GetLicenceName()))
      missing.push_back(Translate(tool->GetDisplayName()));
  SetText(kLicenceKinds,
          missing.empty()
              ? Translate("It covers all tools.")
              : Translate("Rigs of these tools open, show, export and save, and can't be made or "
                          "performed: %1.",
                          {Listed(missing)}));
}

void LicenceWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id != gui::kMsgClicked) return;
  const int id = source.GetId();
  if (id == kLicenceClose) GetWindows().Close(WindowKind::kLicence);
  if (id == kLicenceFolder)
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(DataRoot::Get())));
  if (id != kLicenceReload) return;
  GetCore().GetLicensing().Reload();
  // The tools show whether they are allowed, too.
  GetWindows().ShowSettings();
}

}  // namespace orv::rws::core::windows
