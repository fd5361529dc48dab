#include "app/studio/windows/PunchWindow.h"

#include <QLocale>
#include <string>

#include "app/studio/windows/StudioWindowIds.h"
#include "core/windows/WindowSettings.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Spinner.h"
#include "util/NumberText.h"

namespace orv::app {

using namespace gui::componentinterface;
using rws::core::windows::WindowSettings;

namespace {

constexpr char kPunchSettings[] = "Punch", kPreRollKey[] = "preroll", kBlendKey[] = "blend",
               kGoOnKey[] = "drop";

}  // namespace

PunchWindow::Choice PunchWindow::Read(const WindowSettings& settings) {
  Choice choice;
  util::parseNumber(settings.Get(kPunchSettings, kPreRollKey), choice.preRoll);
  util::parseNumber(settings.Get(kPunchSettings, kBlendKey), choice.blend);
  choice.goOn = settings.Get(kPunchSettings, kGoOnKey) != "yes";
  return choice;
}

void PunchWindow::Keep(WindowSettings& settings, const Choice& choice) {
  settings.Set(kPunchSettings, kPreRollKey, util::shortText(choice.preRoll));
  settings.Set(kPunchSettings, kBlendKey, util::shortText(choice.blend));
  settings.Set(kPunchSettings, kGoOnKey, choice.goOn ? "" : "yes");
}

PunchWindow::PunchWindow(rws::core::windows::Windows& windows, const TimeSpan& marks)
    : ModalWindow(windows, "Punch", "/core/layout/rws_punch.xml", kPunchAccept, kPunchCancel,
                  Size::kContent),
      m_marks(marks) {}

bool PunchWindow::Run(Choice& choice) {
  m_choice = choice;
  if (!Ask()) return false;
  choice = m_choice;
  return true;
}

void PunchWindow::OnBuilt() {
  const auto seconds = [](double value) { return QLocale().toString(value, 'f', 2).toStdString(); };
  SetText(kPunchText,
          gui::Translate("From %1 to %2 s inputs are recorded. What is ahead stays as it is.",
                         {seconds(m_marks.from), seconds(m_marks.to)}));
  With<Spinner>(kPunchPreRoll, [this](Spinner& spinner) { spinner.SetValue(m_choice.preRoll); });
  With<Spinner>(kPunchBlend, [this](Spinner& spinner) { spinner.SetValue(m_choice.blend); });
  With<CheckBox>(kPunchGoOn, [this](CheckBox& box) { box.SetOn(m_choice.goOn); });
}

void PunchWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  if (message.id != gui::kMsgValueChanged) return;
  const auto* spinner = dynamic_cast<Spinner*>(&source);
  if (source.GetId() == kPunchPreRoll && spinner) m_choice.preRoll = spinner->GetValue();
  if (source.GetId() == kPunchBlend && spinner) m_choice.blend = spinner->GetValue();
  if (source.GetId() == kPunchGoOn) m_choice.goOn = message.param != 0;
}

}  // namespace orv::app
