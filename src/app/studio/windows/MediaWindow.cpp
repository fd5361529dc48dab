#include "app/studio/windows/MediaWindow.h"

#include <cmath>
#include <utility>

#include "app/session/anyhost/Names.h"
#include "app/studio/windows/StudioWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Spinner.h"

namespace orv::app {

using namespace gui::componentinterface;
using gui::Translate;

MediaWindow::MediaWindow(rws::core::windows::Windows& windows, Kind kind,
                         std::function<util::Sentence(const std::string& file)> check)
    : ModalWindow(windows, "Media", "/core/layout/rws_media.xml", kMediaAccept, kMediaCancel,
                  Size::kContent),
      m_kind(kind),
      m_check(std::move(check)) {}

bool MediaWindow::Run(Choice& choice) {
  m_choice = choice;
  if (!Ask()) return false;
  choice = m_choice;
  return true;
}

void MediaWindow::OnBuilt() {
  const bool isSound = m_kind == Kind::kSound;
  SetTitle(isSound ? Translate("Sound") : Translate("Picture behind the camera"));
  SetText(kMediaText,
          isSound ? Translate("WAV, FLAC, Ogg or MP3. It is heard when the scene is played and in "
                              "takes that are not slowed.")
                  : Translate("A picture, or any one of a numbered sequence, which then shows a "
                              "picture a frame. It is seen when one looks through the camera."));
  SetText(kMediaFrameLabel,
          isSound ? Translate("Begins at frame") : Translate("The chosen one shows at frame"));
  if (gui::Component* row = Find(kMediaOpacityRow)) row->SetVisible(!isSound);
  With<Spinner>(kMediaFrame, [this](Spinner& spinner) { spinner.SetValue(m_choice.frame); });
  With<Spinner>(kMediaOpacity,
                [this](Spinner& spinner) { spinner.SetValue(100.0 * m_choice.opacity); });
  ShowFile();
}

void MediaWindow::ShowFile() {
  const std::string& file = m_choice.file;
  SetText(kMediaFile, file.empty() ? Translate("None") : FileNameOf(file));
  if (gui::Component* label = Find(kMediaFile)) label->SetTooltip(file);
  const std::string problem = file.empty() ? std::string() : Translate(m_check(file).text);
  SetText(kMediaNotice, problem.empty() ? problem : file + ": " + problem);
  if (gui::Component* notice = Find(kMediaNotice)) notice->SetVisible(!problem.empty());
  SetEnabled(kMediaAccept, problem.empty(), Translate("Choose a file that can be read, or none."));
  SetEnabled(kMediaNone, !file.empty(), Translate("There is none."));
}

void MediaWindow::ChooseAFile() {
  const std::string chosen =
      m_kind == Kind::kSound
          ? GetWindows().ChooseFile(
                Translate("Sound"),
                Translate("Sounds (*.wav *.flac *.ogg *.oga *.opus *.mp3 *.aif *.aiff)"), "media")
          : GetWindows().ChooseFile(Translate("Picture behind the camera"),
                                    Translate("Pictures (*.png *.jpg *.jpeg *.bmp)"), "media");
  if (chosen.empty()) return;
  m_choice.file = chosen;
  ShowFile();
}

void MediaWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  const int id = source.GetId();
  const auto* spinner = dynamic_cast<Spinner*>(&source);
  if (message.id == gui::kMsgValueChanged && spinner) {
    if (id == kMediaFrame) m_choice.frame = static_cast<int>(std::lround(spinner->GetValue()));
    if (id == kMediaOpacity) m_choice.opacity = spinner->GetValue() / 100.0;
  }
  if (message.id != gui::kMsgClicked) return;
  if (id == kMediaChoose) ChooseAFile();
  if (id == kMediaNone) {
    m_choice.file.clear();
    ShowFile();
  }
}

}  // namespace orv::app
