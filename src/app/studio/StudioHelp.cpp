// The help menu: examples, pages, licence, check for newer versions.
#include <QFile>
#include <QTemporaryDir>

#include "app/session/anyhost/Names.h"
#include "app/studio/Studio.h"
#include "app/studio/windows/HelpWindow.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CInterface.h"
#include "core/tools/Tool.h"
#include "gui/Texts.h"

namespace orv::app {

using gui::Translate;

const std::vector<Studio::Example>& Studio::GetExamples() {
  static const std::vector<Example> all{
      {"drive.glb", "A &drive over hills",
       "A car with a recorded take: change its parameters and resimulate"},
      {"shaky.glb", "A &shaky camera, smoothed",
       "A camera on a shaking carrier, and the one that follows it calmly"},
      {"tank.glb", "A &tank on a range", "Two belts under a hull, a gun, and walls to fire at"},
  };
  return all;
}

void Studio::OpenExample(int number) {
  const auto& all = GetExamples();
  if (number < 0 || static_cast<std::size_t>(number) >= all.size() || !MayDiscard()) return;
  const Example& example = all[static_cast<std::size_t>(number)];
  const QTemporaryDir folder;
  const QString copy = folder.filePath(example.file);
  if (!QFile::copy(QString(":/examples/") + example.file, copy))
    return Show(Translate("Examples"), Problem{copy.toStdString(),
                                               Translate("the example can't be unpacked there"),
                                               Translate("see that the disk has room"),
                                               {}});
  const auto opened = m_document.OpenCopy(QFile::encodeName(copy).toStdString());
  if (ShowResult(Translate("Examples"), opened)) Tell(Translate(example.text));
}

void Studio::ShowHelp() {
  if (!m_help) m_help = std::make_unique<HelpWindow>(m_windows);
  m_help->Show();
}

void Studio::ShowLicence() {
  m_windows.Open(rws::core::windows::WindowKind::kLicence);
}

void Studio::TellUncovered() {
  auto& core = m_document.GetCore();
  std::vector<std::string> rigs;
  std::string why;
  for (rws::core::Instance* rig : core.List(false)) {
    const std::string missing = core.GetLicensing().WhyNot(rig->GetTool()->GetLicenceName());
    if (missing.empty()) continue;
    rigs.push_back(rig->GetInstanceName());
    why = missing;
  }
  if (!rigs.empty())
    Tell(Translate("Saved, with rigs that can't be performed: %1. %2", {Joined(rigs), why}));
}

void Studio::AskForUpdates() {
  auto& core = m_document.GetCore();
  if (core.MustAskConsent()) {
    const int answer =
        Ask(Translate("Newer versions"),
            Translate("May the program ask a server for newer versions once a week? It sends its "
                      "version and the kind of this computer, and nothing else. The preferences "
                      "change the answer at any time."),
            rws::kButtonsYesNo | rws::kIconQuestion);
    const std::string problem = core.SetConsent(answer == rws::kAnswerYes);
    if (!problem.empty()) Tell(problem);
  }
  core.CheckWhenDue();
}

void Studio::CheckForUpdate() {
  auto& core = m_document.GetCore();
  if (!core.HasConsent()) {
    if (m_document.IsRunning()) {
      IsLocked(Translate("That"));
      return;
    }
    if (Ask(Translate("Newer versions"),
            Translate("The check for newer versions is switched off. Switch it on, and look now?"),
            rws::kButtonsYesNo | rws::kIconQuestion) != rws::kAnswerYes)
      return;
    const std::string problem = core.SetConsent(true);
    if (!problem.empty()) Tell(problem);
  }
  const std::string problem = core.CheckNow();
  Tell(problem.empty() ? Translate("Looking for a newer version...") : problem);
}

}  // namespace orv::app
