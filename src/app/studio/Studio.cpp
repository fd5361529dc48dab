#include "app/studio/Studio.h"

#include <QApplication>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QTimer>
#include <QUrl>
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

std::string sceneFilter() {
  return Translate("Scenes (*.glb *.gltf)");
}

std::string textOf(const Problem& problem) {
  std::string text = problem.what.empty() ? problem.why : problem.what + ": " + problem.why;
  if (!problem.hint.empty()) text += "\n\n" + problem.hint;
  return text;
}

}  // namespace

Studio::Studio(const StudioOptions& options)
    : m_options(options),
      m_systemPalette(QApplication::palette()),
      m_devices([](const std::string&) {}),
      m_windows(m_document.core(), *this),
      m_keys(m_document.core()) {
  AddAllWindows(m_windows);
  m_document.setChangeHandler([this] { m_windows.TellSceneChanged(); });
  m_document.setTroubleHandler([this](const Problem& problem) {
    LogEntry(LogLevel::kWarning, textOf(problem));
    // Not within what has failed: it may be a take's first frame.
    QTimer::singleShot(0, this, [this, problem] { show(Translate("Autosave"), problem); });
  });
  ApplyAppearance();
}

Studio::~Studio() = default;

bool Studio::begin(std::string& problem) {
  if (!m_windows.OpenMainWindow(nullptr)) {
    problem = "the main window can't be opened (see core.log in the data root)";
    return false;
  }
  setGeometry(m_options.geometry);
  if (!m_devices.problem().empty()) LogEntry(LogLevel::kWarning, m_devices.problem());
  m_document.newScene();
  if (!m_options.scene.empty()) open(m_options.scene);
  if (m_options.script.empty()) {
    QTimer::singleShot(0, this, [this] { offerLeftovers(); });
    return true;
  }
  m_script = std::make_unique<ScriptDriver>(*this);
  return m_script->start(m_options.script, problem);
}

void Studio::setGeometry(const std::string& geometry) {
  static const QRegularExpression pattern(R"(^(\d+)x(\d+)(?:([+-]\d+)([+-]\d+))?$)");
  const auto match = pattern.match(QString::fromStdString(geometry));
  QWidget* main = m_windows.GetMainWidget();
  if (!main || !match.hasMatch()) return;
  main->resize(match.captured(1).toInt(), match.captured(2).toInt());
  if (!match.captured(3).isEmpty())
    main->move(match.captured(3).toInt(), match.captured(4).toInt());
}

// --- what is shown ---

int Studio::ask(const std::string& title, const std::string& text, unsigned flags) {
  return m_document.core().MessageBox(title, text, flags);
}

void Studio::show(const std::string& title, const Problem& problem) {
  ask(title, textOf(problem), rws::kButtonsOk | rws::kIconWarning);
}

bool Studio::showResult(const std::string& title, const DocumentResult& result) {
  for (const std::string& warning : result.warnings) LogEntry(LogLevel::kWarning, warning);
  if (result.problem) {
    show(title, result.problem);
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
    ask(title, text, rws::kButtonsOk | rws::kIconWarning);
  }
  return true;
}

std::string Studio::GetSceneTitle() const {
  return m_document.title();
}

bool Studio::IsSceneChanged() const {
  return m_document.isDirty();
}

void Studio::ApplyAppearance() {
  const auto& preferences = m_document.core().GetPreferences();
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

const std::vector<Studio::Command>& Studio::commands() {
  static const std::vector<Command> all{
      {kCommandNew, &Studio::newScene},
      {kCommandOpen, &Studio::openScene},
      {kCommandSave, &Studio::saveScene},
      {kCommandSaveAs, &Studio::saveSceneAs},
      {kCommandExportScene, &Studio::exportScene},
      {kCommandExportPoses, &Studio::exportPoses},
      {kCommandExportPicture, &Studio::exportPicture},
      {kCommandQuit, &Studio::quit},
      {kCommandHelp, &Studio::showHelp},
  };
  return all;
}

bool Studio::HasCommand(int id) const {
  return id == kCommandRecent || std::any_of(commands().begin(), commands().end(),
                                             [id](const Command& c) { return c.id == id; });
}

void Studio::RunCommand(int id) {
  if (id >= kFirstRecent && id < kFirstExample) {
    const auto recent = RecentFiles::list();
    const auto index = static_cast<std::size_t>(id - kFirstRecent);
    if (index < recent.size() && mayDiscard()) open(recent[index].path);
    return;
  }
  for (const Command& command : commands())
    if (command.id == id) return (this->*command.run)();
}

void Studio::UpdateMenu(gui::Menu& menu) {
  std::vector<gui::MenuItem> items;
  int id = kFirstRecent;
  for (const RecentFile& file : RecentFiles::list()) {
    gui::MenuItem item;
    item.id = id++;
    item.label = fileNameOf(file.path);
    item.tooltip = file.path;
    item.enabled = file.isThere;
    item.translated = false;
    items.push_back(std::move(item));
  }
  menu.SetItems(kCommandRecent, std::move(items));
}

void Studio::newScene() {
  if (mayDiscard()) showResult(Translate("New scene"), m_document.newScene());
}

void Studio::openScene() {
  if (!mayDiscard()) return;
  const std::string path = m_windows.ChooseFile(Translate("Open"), sceneFilter(), "scenes");
  if (!path.empty()) open(path);
}

void Studio::open(const std::string& path) {
  showResult(Translate("Open"), m_document.open(path));
}

bool Studio::save() {
  if (m_document.path().empty()) return saveAs();
  DocumentResult result = m_document.save();
  if (result.isAsked) {
    if (ask(Translate("Save"), textOf(result.problem), rws::kButtonsYesNo | rws::kIconQuestion) !=
        rws::kAnswerYes)
      return false;
    result = m_document.save(Overwrite::kOverwrite);
  }
  return showResult(Translate("Save"), result);
}

bool Studio::saveAs() {
  const std::string path = m_windows.ChooseFileToSave(Translate("Save as"), sceneFilter(), "scenes",
                                                      m_document.title(), ".glb");
  if (path.empty()) return false;
  // The dialog has asked about a file that is there.
  return showResult(Translate("Save as"), m_document.saveAs(path, Overwrite::kOverwrite));
}

bool Studio::mayDiscard() {
  m_document.endRun();
  if (!m_document.isDirty()) return true;
  const int answer =
      ask(Translate("Unsaved changes"), Translate("Save the changes of %1?", {m_document.title()}),
          rws::kButtonsYesNoCancel | rws::kIconQuestion);
  if (answer == rws::kAnswerYes) return save();
  return answer == rws::kAnswerNo;
}

void Studio::OpenDropped(const std::vector<std::string>& paths) {
  if (!paths.empty() && mayDiscard()) open(paths.front());
}

bool Studio::MayClose() {
  return mayDiscard();
}

void Studio::OnMainWindowClosed() {
  m_document.close();
  QApplication::quit();
}

void Studio::quit() {
  m_windows.CloseMainWindow();
}

void Studio::showHelp() {
  QDesktopServices::openUrl(QUrl("https://github.com/"));
}

void Studio::offerLeftovers() {
  for (Leftover& leftover : findLeftovers()) {
    std::string text = Translate("%1 was not saved when the program ended.", {leftover.title});
    if (leftover.hasTake)
      text += " " + Translate("A take of %1 s was running.",
                              {QString::number(leftover.takeSeconds(), 'f', 1).toStdString()});
    text += "\n\n" + Translate("Open what there is of it? No removes it for good.");
    const int answer =
        ask(Translate("Recovery"), text, rws::kButtonsYesNoCancel | rws::kIconQuestion);
    if (answer == rws::kAnswerNo) discard(std::move(leftover));
    if (answer != rws::kAnswerYes) continue;
    showResult(Translate("Recovery"), m_document.restore(std::move(leftover)));
    return;
  }
}

// --- the script ---

rws::core::CoreImplementation& Studio::scriptedCore() {
  return m_document.core();
}

std::string Studio::scriptNew() {
  return textOf(m_document.newScene().problem);
}

std::string Studio::scriptOpen(const std::string& path) {
  return textOf(m_document.open(path).problem);
}

std::string Studio::scriptSave(const std::string& path) {
  return textOf(
      (path.empty() ? m_document.save() : m_document.saveAs(path, Overwrite::kOverwrite)).problem);
}

nlohmann::json Studio::scriptState() {
  auto& core = m_document.core();
  static const char* const kRuns[] = {"idle", "countdown", "recording", "resimulating"};
  const UndoList undo = m_document.undoList();
  nlohmann::json selection = nlohmann::json::array();
  for (const int row : core.GetSelection())
    if (const auto* found = core.FindRow(row)) selection.push_back(found->GetLabel());
  return {{"run", kRuns[static_cast<int>(core.GetRunState())]},
          {"time", m_document.adaptor().GetCurrentTime()},
          {"frame", core.FrameIndex(m_document.adaptor().GetCurrentTime())},
          {"selection", selection},
          {"undo", undo.names},
          {"undoPosition", undo.position},
          {"dirty", m_document.isDirty()},
          {"path", m_document.path()}};
}

void Studio::scriptQuit(int status) {
  m_document.close();
  QApplication::exit(status);
}

}  // namespace orv::app
