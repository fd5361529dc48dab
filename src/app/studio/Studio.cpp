#include "app/studio/Studio.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "app/session/anyhost/Names.h"
#include "app/session/document/RecentFiles.h"
#include "app/session/document/Recovery.h"
#include "app/studio/script/ScriptDriver.h"
#include "core/CoreImplementation.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CInterface.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "core/windows/AllWindows.h"
#include "core/windows/MenuIds.h"
#include "core/windows/Window.h"
#include "gui/Menu.h"
#include "gui/Texts.h"
#include "gui/component/qt/Theme.h"

namespace orv::app {

namespace {

using namespace rws::core::windows;
using gui::Translate;
using rws::core::LogEntry;
using rws::core::LogLevel;

std::string SceneFilter() {
  return Translate("Scenes (*.glb *.gltf)");
}

std::string TextOf(const Problem& problem) {
  std::string text = problem.what.empty() ? problem.why : problem.what + ": " + problem.why;
  if (!problem.hint.empty()) text += "\n\n" + problem.hint;
  return text;
}

}  // namespace

Studio::Studio(const StudioOptions& options)
    : m_options(options),
      m_systemPalette(QApplication::palette()),
      m_browser(m_document.GetCore(), m_document.GetAdaptor(),
                [this](double fps) { return TextOf(m_document.SetFrameRate(fps)); }),
      m_devices([](const std::string&) {}),
      m_windows(m_document.GetCore(), *this),
      m_keys(m_document.GetCore()) {
  AddAllWindows(m_windows);
  m_document.SetChangeHandler([this] { m_windows.TellSceneChanged(); });
  m_document.SetTroubleHandler([this](const Problem& problem) {
    LogEntry(LogLevel::kWarning, TextOf(problem));
    // Not within what has failed: it may be a take's first frame.
    QTimer::singleShot(0, this, [this, problem] { Show(Translate("Autosave"), problem); });
  });
  ApplyAppearance();
}

Studio::~Studio() = default;

bool Studio::Begin(std::string& problem) {
  if (!m_windows.OpenMainWindow(nullptr)) {
    problem = "the main window can't be opened (see core.log in the data root)";
    return false;
  }
  SetGeometry(m_options.geometry);
  if (!m_devices.GetProblem().empty()) LogEntry(LogLevel::kWarning, m_devices.GetProblem());
  m_document.NewScene();
  if (!m_options.scene.empty()) Open(m_options.scene);
  if (m_options.script.empty()) {
    QTimer::singleShot(0, this, [this] { OfferLeftovers(); });
    return true;
  }
  m_script = std::make_unique<ScriptDriver>(*this, m_options.seed);
  return m_script->Start(m_options.script, problem);
}

void Studio::SetGeometry(const std::string& geometry) {
  static const QRegularExpression pattern(R"(^(\d+)x(\d+)(?:([+-]\d+)([+-]\d+))?$)");
  const auto match = pattern.match(QString::fromStdString(geometry));
  QWidget* main = m_windows.GetMainWidget();
  if (!main || !match.hasMatch()) return;
  main->resize(match.captured(1).toInt(), match.captured(2).toInt());
  if (!match.captured(3).isEmpty())
    main->move(match.captured(3).toInt(), match.captured(4).toInt());
}

// --- what is shown ---

int Studio::Ask(const std::string& title, const std::string& text, unsigned flags) {
  return m_document.GetCore().MessageBox(title, text, flags);
}

void Studio::Show(const std::string& title, const Problem& problem) {
  Ask(title, TextOf(problem), rws::kButtonsOk | rws::kIconWarning);
}

bool Studio::ShowResult(const std::string& title, const DocumentResult& result) {
  for (const std::string& warning : result.warnings) LogEntry(LogLevel::kWarning, warning);
  if (result.problem) {
    Show(title, result.problem);
    return false;
  }
  if (!result.warnings.empty()) {
    constexpr std::size_t kMostShown = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(kMostShown, result.warnings.size()); ++i)
      text += (i ? "\n" : "") + result.warnings[i];
    if (result.warnings.size() > kMostShown)
      text += "\n" + Translate("%1 more stand in the log.",
                               {std::to_string(result.warnings.size() - kMostShown)});
    Ask(title, text, rws::kButtonsOk | rws::kIconWarning);
  }
  return true;
}

std::string Studio::GetSceneTitle() const {
  return m_document.GetTitle();
}

bool Studio::IsSceneChanged() const {
  return m_document.IsDirty();
}

void Studio::ApplyAppearance() {
  const auto& preferences = m_document.GetCore().GetPreferences();
  std::string language = m_options.language;
  if (language.empty() && preferences.Text("language") != "system")
    language = preferences.Text("language");
  rws::core::LoadLanguage(language);
  gui::SetTranslator([](const std::string& text) { return rws::core::Translate(text); });
  using Choice = rws::core::Preferences::Theme;
  Choice theme = preferences.theme;
  if (!m_options.theme.empty()) theme = m_options.theme == "light" ? Choice::kLight : Choice::kDark;
  // The system's own palette tells which one it prefers.
  if (theme == Choice::kSystem)
    theme = gui::component::qt::IsDark(m_systemPalette) ? Choice::kDark : Choice::kLight;
  gui::component::qt::ApplyTheme(*qApp, theme == Choice::kLight ? gui::component::qt::Theme::kLight
                                                                : gui::component::qt::Theme::kDark);
  m_windows.ShowSettings();
}

// --- commands ---

const std::vector<Studio::Command>& Studio::Commands() {
  static const std::vector<Command> all{
      {kCommandNew, &Studio::NewScene},
      {kCommandOpen, &Studio::OpenScene},
      {kCommandSave, &Studio::SaveScene},
      {kCommandSaveAs, &Studio::SaveSceneAs},
      {kCommandExportScene, &Studio::ExportScene},
      {kCommandExportPoses, &Studio::ExportPoses},
      {kCommandExportPicture, &Studio::ExportPicture},
      {kCommandQuit, &Studio::Quit},
  };
  return all;
}

bool Studio::HasCommand(int id) const {
  return id == kCommandRecent || std::any_of(Commands().begin(), Commands().end(),
                                             [id](const Command& c) { return c.id == id; });
}

void Studio::RunCommand(int id) {
  if (id >= kFirstRecent && id < kFirstExample) {
    const auto recent = RecentFiles::List();
    const auto index = static_cast<std::size_t>(id - kFirstRecent);
    if (index < recent.size() && MayDiscard()) Open(recent[index].path);
    return;
  }
  for (const Command& command : Commands())
    if (command.id == id) return (this->*command.run)();
}

void Studio::UpdateMenu(gui::Menu& menu) {
  std::vector<gui::MenuItem> items;
  int id = kFirstRecent;
  for (const RecentFile& file : RecentFiles::List()) {
    gui::MenuItem item;
    item.id = id++;
    item.label = FileNameOf(file.path);
    item.tooltip = file.path;
    item.enabled = file.isThere;
    items.push_back(std::move(item));
  }
  menu.SetItems(kCommandRecent, std::move(items));
}

void Studio::NewScene() {
  if (MayDiscard()) ShowResult(Translate("New scene"), m_document.NewScene());
}

void Studio::OpenScene() {
  if (!MayDiscard()) return;
  const std::string path = m_windows.ChooseFile(Translate("Open"), SceneFilter(), "scenes");
  if (!path.empty()) Open(path);
}

void Studio::Open(const std::string& path) {
  ShowResult(Translate("Open"), m_document.Open(path));
}

bool Studio::Save() {
  if (m_document.GetPath().empty()) return SaveAs();
  DocumentResult result = m_document.Save();
  if (result.isAsked) {
    if (Ask(Translate("Save"), TextOf(result.problem), rws::kButtonsYesNo | rws::kIconQuestion) !=
        rws::kAnswerYes)
      return false;
    result = m_document.Save(Overwrite::kOverwrite);
  }
  return ShowResult(Translate("Save"), result);
}

bool Studio::SaveAs() {
  const std::string path = m_windows.ChooseFileToSave(Translate("Save as"), SceneFilter(), "scenes",
                                                      m_document.GetTitle(), ".glb");
  if (path.empty()) return false;
  // The dialog has asked about a file that is there.
  return ShowResult(Translate("Save as"), m_document.SaveAs(path, Overwrite::kOverwrite));
}

bool Studio::MayDiscard() {
  m_document.EndRun();
  if (!m_document.IsDirty()) return true;
  const int answer = Ask(Translate("Unsaved changes"),
                         Translate("Save the changes of %1?", {m_document.GetTitle()}),
                         rws::kButtonsYesNoCancel | rws::kIconQuestion);
  if (answer == rws::kAnswerYes) return Save();
  return answer == rws::kAnswerNo;
}

void Studio::OpenDropped(const std::vector<std::string>& paths) {
  if (!paths.empty() && MayDiscard()) Open(paths.front());
}

bool Studio::MayClose() {
  return MayDiscard();
}

void Studio::OnMainWindowClosed() {
  m_document.Close();
  if (!m_keepOpen) return QApplication::quit();
  QTimer::singleShot(0, this, [this] {
    m_document.NewScene();
    m_windows.OpenMainWindow(nullptr);
  });
}

void Studio::Quit() {
  m_windows.CloseMainWindow();
}

void Studio::OfferLeftovers() {
  for (Leftover& leftover : FindLeftovers()) {
    std::string text = Translate("%1 was not saved when the program ended.", {leftover.title});
    if (leftover.hasTake)
      text += " " + Translate("A take of %1 s was running.",
                              {QString::number(leftover.GetTakeSeconds(), 'f', 1).toStdString()});
    text += "\n\n" + Translate("Open what there is of it? No removes it for good.");
    const int answer =
        Ask(Translate("Recovery"), text, rws::kButtonsYesNoCancel | rws::kIconQuestion);
    if (answer == rws::kAnswerNo) Discard(std::move(leftover));
    if (answer != rws::kAnswerYes) continue;
    ShowResult(Translate("Recovery"), m_document.Restore(std::move(leftover)));
    return;
  }
}

// --- the script ---

rws::core::CoreImplementation& Studio::ScriptedCore() {
  return m_document.GetCore();
}

std::string Studio::ScriptNew() {
  return TextOf(m_document.NewScene().problem);
}

std::string Studio::ScriptOpen(const std::string& path) {
  return TextOf(m_document.Open(path).problem);
}

std::string Studio::ScriptSave(const std::string& path) {
  return TextOf(
      (path.empty() ? m_document.Save() : m_document.SaveAs(path, Overwrite::kOverwrite)).problem);
}

nlohmann::json Studio::ScriptState() {
  auto& core = m_document.GetCore();
  static const char* const kRuns[] = {"idle", "countdown", "recording", "resimulating"};
  const UndoList undo = m_document.GetUndoList();
  nlohmann::json selection = nlohmann::json::array();
  for (const int row : core.GetSelection())
    if (const auto* found = core.FindRow(row)) selection.push_back(found->GetLabel());
  return {{"run", kRuns[static_cast<int>(core.GetRunState())]},
          {"time", m_document.GetAdaptor().GetCurrentTime()},
          {"frame", core.FrameIndex(m_document.GetAdaptor().GetCurrentTime())},
          {"selection", selection},
          {"undo", undo.names},
          {"undoPosition", undo.position},
          {"dirty", m_document.IsDirty()},
          {"path", m_document.GetPath()}};
}

void Studio::ScriptQuit(int status) {
  m_document.Close();
  QApplication::exit(status);
}

}  // namespace orv::app
