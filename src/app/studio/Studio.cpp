#include "app/studio/Studio.h"

#include <QApplication>
#include <QDateTime>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Names.h"
#include "app/session/document/RecentFiles.h"
#include "app/session/document/Recovery.h"
#include "app/session/takes/SceneTake.h"
#include "app/studio/QtTexts.h"
#include "app/studio/StagePane.h"
#include "app/studio/script/ScriptDriver.h"
#include "app/studio/script/ScriptView.h"
#include "app/studio/timeline/CurveStrip.h"
#include "app/studio/timeline/Player.h"
#include "app/studio/timeline/Timeline.h"
#include "app/studio/windows/CurvesPage.h"
#include "app/studio/windows/HelpWindow.h"
#include "app/studio/windows/TakesPage.h"
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
#include "unidevice/x11/X11Keys.h"

namespace orv::app {

namespace {

using namespace rws::core::windows;
using gui::Translate;
using rws::core::LogEntry;
using rws::core::LogLevel;

constexpr char kBusy[] = "an import or export is at work; cancel it or wait";

std::string SceneFilter() {
  return Translate("Scenes (*.glb *.gltf)");
}

std::string SentencesOf(const Problem& problem) {
  std::string text = problem.what.empty() ? problem.why : problem.what + ": " + problem.why;
  if (problem.hint.empty()) return text;
  // A paragraph of its own here, and so a sentence.
  const QString hint = QString::fromStdString(Translate(problem.hint));
  return text + "\n\n" + (hint.left(1).toUpper() + hint.mid(1)).toStdString() + ".";
}

/// What leaves the scene alone, or ends a take by asking for another scene.
bool IsForTakes(int id) {
  static constexpr int kFree[] = {kCommandNew,        kCommandOpen,     kCommandRecent,
                                  kCommandQuit,       kCommandExamples, kCommandHelp,
                                  kCommandLicence,    kCommandUpdate,   kCommandLoop,
                                  kCommandEveryFrame, kCommandCurves};
  return id >= kFirstRecent || std::count(std::begin(kFree), std::end(kFree), id) != 0;
}

/// What a user is told of a leftover before choosing.
std::string LeftoverText(const Leftover& leftover) {
  const QDateTime kept = QDateTime::fromSecsSinceEpoch(leftover.note.time);
  std::string text =
      Translate("%1 was not saved when the program ended. It was kept on %2.",
                {leftover.title, QLocale().toString(kept, QLocale::ShortFormat).toStdString()});
  const std::string seconds = QString::number(leftover.GetTakeSeconds(), 'f', 1).toStdString();
  if (leftover.hasTake)
    text +=
        " " + (leftover.take.ended ? Translate("A take of %1 s had been recorded on it.", {seconds})
                                   : Translate("A take of %1 s was running.", {seconds}));
  if (leftover.fileIsNewer)
    text += "\n\n" + Translate("The file itself was written later: %1", {leftover.note.scene});
  return text + "\n\n" +
         Translate(
             "Yes opens what there is of it, No removes it for good, Cancel asks again at "
             "the next start.");
}

std::unique_ptr<unidevice::KeySource> OpenKeySource() {
  if (QGuiApplication::platformName() != "xcb") return {};
  std::string problem;
  auto keys = unidevice::X11Keys::open({}, problem);
  if (!keys)
    LogEntry(LogLevel::kWarning, "The keyboard is heard by windows' events alone: " + problem);
  return keys;
}

}  // namespace

Studio::Studio(const StudioOptions& options)
    : m_options(options),
      m_systemPalette(QApplication::palette()),
      m_browser(m_document.GetCore(), m_document.GetAdaptor(),
                [this](double fps) { return SentencesOf(m_document.SetFrameRate(fps)); }),
      m_devices([](const std::string&) {}),
      m_stage(std::make_unique<StagePane>(m_document.GetCore(), m_document.GetAdaptor(), m_browser,
                                          options.isFixedQuality)),
      m_player(std::make_unique<Player>(m_document.GetCore(), m_document.GetAdaptor())),
      m_timeline(
          std::make_unique<Timeline>(m_document.GetCore(), m_document.GetAdaptor(), m_browser)),
      m_curves(
          std::make_unique<CurveStrip>(m_document.GetCore(), m_document.GetAdaptor(), *m_timeline)),
      m_windows(m_document.GetCore(), *this),
      m_input(m_document.GetCore(), OpenKeySource()),
      m_keys(m_document.GetCore()) {
  m_stage->SetSettings(&m_windows.GetSettings());
  AddAllWindows(m_windows);
  BeginPlayback();
  m_document.SetChangeHandler([this] {
    FollowSound();
    m_windows.TellSceneChanged();
  });
  m_document.SetTroubleHandler([this](const Problem& problem) {
    LogEntry(LogLevel::kWarning, SentencesOf(problem));
    // No box: it may be a take's first frame.
    Tell(SentencesOf(problem));
  });
  ApplyAppearance();
}

Studio::~Studio() {
  m_watch.reset();
  m_take.reset();
  m_player->changed = nullptr;
  m_stage->SetSettings(nullptr);
}

gui::component::qt::ViewHandler* Studio::GetStage() {
  return m_stage.get();
}

gui::component::qt::ViewHandler* Studio::GetTimeline() {
  return m_timeline.get();
}

void Studio::MakePages(MainWindowFrame& window, const AddPage& add) {
  add(std::make_unique<CurvesPage>(window, *m_curves));
  TakesPage::Actions actions;
  actions.use = [this](int number) { UseTake(number); };
  actions.remove = [this](int number) { RemoveTake(number); };
  actions.exportOne = [this](int number) { ExportTake(number); };
  actions.import = [this] { ImportTakes(); };
  add(std::make_unique<TakesPage>(window, m_document, std::move(actions)));
}

Studio::Working::Working(Studio& studio) : at(studio) {
  ++at.m_working;
  QApplication::setOverrideCursor(Qt::BusyCursor);
}

Studio::Working::~Working() {
  QApplication::restoreOverrideCursor();
  --at.m_working;
}

bool Studio::Begin(std::string& problem) {
  if (!m_windows.OpenMainWindow(nullptr)) {
    problem = "the main window can't be opened (see core.log in the data root)";
    return false;
  }
  SetGeometry(m_options.geometry);
  if (!m_devices.GetProblem().empty()) LogEntry(LogLevel::kWarning, m_devices.GetProblem());
  OnPreferences();
  m_document.NewScene();
  if (!m_options.scene.empty()) Open(m_options.scene);
  QTimer::singleShot(0, this, [this] {
    OfferLeftovers();
    AskForUpdates();
  });
  if (m_options.script.empty()) return true;
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
  Ask(title, SentencesOf(problem), rws::kButtonsOk | rws::kIconWarning);
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
      text += "\n" + MoreInLog(result.warnings.size() - kMostShown);
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
  if (!LoadQtTexts(rws::core::GetLanguage()))
    LogEntry(LogLevel::kWarning, "File dialogs are English: Qt's translations are not installed");
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

void Studio::OnPreferences() {
  const std::string problem = m_devices.Follow(m_document.GetCore().GetPreferences());
  if (problem.empty()) return;
  LogEntry(LogLevel::kWarning, problem);
  Tell(problem);
}

// --- commands ---

const std::vector<Studio::Command>& Studio::Commands() {
  static const std::vector<Command> all{
      {kCommandNew, &Studio::NewScene},
      {kCommandOpen, &Studio::OpenScene},
      {kCommandSave, &Studio::SaveScene},
      {kCommandSaveAs, &Studio::SaveSceneAs},
      {kCommandImport, &Studio::ImportModel},
      {kCommandOpenModel, &Studio::AddModelFromMenu},
      {kCommandMakeModel, &Studio::MakeModel},
      {kCommandExportScene, &Studio::ExportScene},
      {kCommandExportPoses, &Studio::ExportPoses},
      {kCommandExportAnimation, &Studio::ExportAnimation},
      {kCommandExportPicture, &Studio::ExportPicture},
      {kCommandPreview, &Studio::ExportPreview},
      {kCommandPlay, &Studio::Play},
      {kCommandPlayBackwards, &Studio::PlayBackwards},
      {kCommandFrameBack, &Studio::FrameBack},
      {kCommandFrameOn, &Studio::FrameOn},
      {kCommandKeyBack, &Studio::KeyBack},
      {kCommandKeyOn, &Studio::KeyOn},
      {kCommandRangeBegin, &Studio::RangeBegin},
      {kCommandRangeEnd, &Studio::RangeEnd},
      {kCommandLoop, &Studio::SwitchLoop},
      {kCommandEveryFrame, &Studio::SwitchEveryFrame},
      {kCommandCurves, &Studio::SwitchCurves},
      {kCommandPunch, &Studio::RecordMarks},
      {kCommandPunchBegin, &Studio::MarkBegin},
      {kCommandPunchEnd, &Studio::MarkEnd},
      {kCommandFollow, &Studio::FollowLine},
      {kCommandSound, &Studio::ChooseSound},
      {kCommandBackdrop, &Studio::ChooseBackdrop},
      {kCommandHelp, &Studio::ShowHelp},
      {kCommandLicence, &Studio::ShowLicence},
      {kCommandUpdate, &Studio::CheckForUpdate},
      {kCommandQuit, &Studio::Quit},
  };
  return all;
}

bool Studio::HasCommand(int id) const {
  if (id == kCommandUpdate) return m_windows.GetCore().IsOffered();
  return id == kCommandRecent || id == kCommandExamples || id == kCommandTime ||
         std::any_of(Commands().begin(), Commands().end(),
                     [id](const Command& c) { return c.id == id; });
}

void Studio::RunCommand(int id) {
  if (m_working > 0) return;
  if (!IsForTakes(id) && IsLocked(Translate("That"))) return;
  if (id >= kFirstExample) return OpenExample(id - kFirstExample);
  if (id >= kFirstRecent) {
    const auto recent = RecentFiles::List();
    const auto index = static_cast<std::size_t>(id - kFirstRecent);
    if (index < recent.size() && MayDiscard()) Open(recent[index].path);
    return;
  }
  for (const Command& command : Commands())
    if (command.id == id) return (this->*command.run)();
}

void Studio::UpdateMenu(gui::Menu& menu) {
  const std::string locked = m_document.IsRunning() ? WhyLocked() : std::string();
  for (const Command& command : Commands())
    if (!IsForTakes(command.id)) menu.SetEnabled(command.id, locked.empty(), locked);
  menu.SetChecked(kCommandLoop, m_player->IsLoop());
  menu.SetChecked(kCommandEveryFrame, m_player->IsEveryFrame());
  menu.SetChecked(kCommandCurves, m_curves->IsVisible());
  std::vector<gui::MenuItem> items;
  int id = kFirstRecent;
  for (const RecentFile& file : RecentFiles::List()) {
    gui::MenuItem item;
    item.id = id++;
    item.label = gui::EscapeMnemonics(FileNameOf(file.path));
    item.tooltip = file.path;
    item.enabled = file.isThere;
    if (!file.isThere) item.whyDisabled = Translate("%1 is not there.", {file.path});
    items.push_back(std::move(item));
  }
  menu.SetItems(kCommandRecent, std::move(items));
  items.clear();
  id = kFirstExample;
  for (const Example& example : GetExamples()) {
    gui::MenuItem item;
    item.id = id++;
    item.label = Translate(example.label);
    item.tooltip = Translate(example.text);
    items.push_back(std::move(item));
  }
  menu.SetItems(kCommandExamples, std::move(items));
}

std::string Studio::WhyLocked() const {
  return Translate("A take or resimulation runs. Stop it first.");
}

bool Studio::IsLocked(const std::string& what) {
  if (!m_document.IsRunning()) return false;
  Tell(Translate("%1 has to wait: a take or resimulation runs. Stop it first.", {what}));
  return true;
}

void Studio::NewScene() {
  if (MayDiscard() && ShowResult(Translate("New scene"), m_document.NewScene())) Tell({});
}

void Studio::OpenScene() {
  if (!MayDiscard()) return;
  const std::string path = m_windows.ChooseFile(Translate("Open"), SceneFilter(), "scenes");
  if (!path.empty()) Open(path);
}

bool Studio::Open(const std::string& path) {
  const bool done = ShowResult(Translate("Open"), m_document.Open(path));
  if (done) Tell({});  // what it says is of the scene before
  return done;
}

bool Studio::Save() {
  if (m_document.GetPath().empty()) return SaveAs();
  DocumentResult result = m_document.Save();
  if (result.isAsked) {
    if (Ask(Translate("Save"), SentencesOf(result.problem),
            rws::kButtonsYesNo | rws::kIconQuestion) != rws::kAnswerYes)
      return false;
    result = m_document.Save(Overwrite::kOverwrite);
  }
  if (!ShowResult(Translate("Save"), result)) return false;
  TellUncovered();
  return true;
}

bool Studio::SaveAs() {
  const std::string path = m_windows.ChooseFileToSave(Translate("Save as"), SceneFilter(), "scenes",
                                                      m_document.GetTitle(), ".glb");
  if (path.empty()) return false;
  // The dialog has asked about a file that is there.
  if (!ShowResult(Translate("Save as"), m_document.SaveAs(path, Overwrite::kOverwrite)))
    return false;
  TellUncovered();
  return true;
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

bool Studio::MayClose() {
  return m_working == 0 && MayDiscard();
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
  std::vector<Leftover> all = FindLeftovers();
  for (Leftover& leftover : all) {
    const int answer = Ask(Translate("Recovery"), LeftoverText(leftover),
                           rws::kButtonsYesNoCancel | rws::kIconQuestion);
    if (answer == rws::kAnswerNo) Discard(std::move(leftover));
    if (answer != rws::kAnswerYes || !MayDiscard()) continue;
    DocumentResult restored;
    {
      const Working working(*this);
      restored = m_document.Restore(std::move(leftover));
    }
    ShowResult(Translate("Recovery"), restored);
    return;
  }
}

// --- the script ---

rws::core::CoreImplementation& Studio::ScriptedCore() {
  return m_document.GetCore();
}

std::string Studio::ScriptNew() {
  if (m_working > 0) return kBusy;
  return SentencesOf(m_document.NewScene().problem);
}

std::string Studio::ScriptOpen(const std::string& path) {
  if (m_working > 0) return kBusy;
  return SentencesOf(m_document.Open(path).problem);
}

std::string Studio::ScriptSave(const std::string& path) {
  if (m_working > 0) return kBusy;
  return SentencesOf(
      (path.empty() ? m_document.Save() : m_document.SaveAs(path, Overwrite::kOverwrite)).problem);
}

std::string Studio::ScriptPreview(const ScriptPreviewWish& wish) {
  if (m_working > 0) return kBusy;
  if (m_document.IsRunning()) return WhyLocked();
  PreviewOptions options = PreviewOfRange();
  if (!wish.camera.empty()) {
    options.camera = m_document.GetScene().Find(wish.camera);
    if (!options.camera || !options.camera->GetLens())
      return "there is no camera \"" + wish.camera + "\"";
  }
  if (wish.width > 0) options.width = wish.width;
  if (wish.height > 0) options.height = wish.height;
  options.signs = wish.signs;
  if (wish.overlay) options.overlay = &m_stage->UseOverlay();
  const Working working(*this);
  return SentencesOf(WritePreview(m_document.GetAdaptor(), options, wish.folder).problem);
}

nlohmann::json Studio::ScriptView(const ScriptLine& line) {
  return RunViewCommand(line, *m_stage, m_document.GetAdaptor());
}

nlohmann::json Studio::ScriptState() {
  auto& core = m_document.GetCore();
  static const char* const kRuns[] = {"idle", "countdown", "recording", "resimulating"};
  const UndoList undo = m_document.GetUndoList();
  const PictureFigures pictures = m_stage->GetFigures();
  nlohmann::json selection = nlohmann::json::array();
  for (const int row : core.GetSelection())
    if (const auto* found = core.FindRow(row)) selection.push_back(found->GetLabel());
  return {{"run", kRuns[static_cast<int>(core.GetRunState())]},
          {"time", m_document.GetAdaptor().GetCurrentTime()},
          {"frame", core.FrameIndex(m_document.GetAdaptor().GetCurrentTime())},
          {"playing", m_player->IsPlaying()},
          {"heard", m_player->IsHeard()},
          {"selection", selection},
          {"undo", undo.names},
          {"undoPosition", undo.position},
          {"dirty", m_document.IsDirty()},
          {"pictures",
           {{"painted", pictures.painted},
            {"dropped", pictures.dropped},
            {"perSecond", pictures.perSecond},
            {"latencies", pictures.latencies},
            {"latencyMedian", pictures.medianMs},
            {"latencyP95", pictures.p95Ms}}},
          {"path", m_document.GetPath()}};
}

void Studio::ScriptQuit(int status) {
  m_document.Close();
  QApplication::exit(status);
}

}  // namespace orv::app
