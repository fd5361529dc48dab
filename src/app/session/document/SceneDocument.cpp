#include "app/session/document/SceneDocument.h"

#include <QTimer>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/TakeSize.h"
#include "app/session/document/RecentFiles.h"
#include "app/session/document/StartScene.h"
#include "core/CoreImplementation.h"
#include "core/CoreRequest.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace fs = std::filesystem;
using rws::core::NewsIn;
using rws::core::RunState;
using rws::core::Translatable;
using rws::core::Translate;

namespace {

constexpr int kLookMs = 5000;           ///< between two looks whether an autosave is due
constexpr double kJournalPeriod = 0.5;  ///< s, so that a busy tick still loses less than 1 s

double GetSteadySeconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

Problem RunningProblem() {
  return {"the scene", "a take or resimulation runs", "stop it first", {}};
}

}  // namespace

SceneDocument::SceneDocument()
    : MessageNode("SceneDocument"), seconds(GetSteadySeconds), m_timer(std::make_unique<QTimer>()) {
  connect(&GetCore());
  GetAdaptor().GetObservers().Add(*this);
  GetCore().beforeTake = [this] { PrepareTake(); };
  m_autosaveTime = seconds();
  QObject::connect(m_timer.get(), &QTimer::timeout, [this] { LookAtAutosave(); });
  m_timer->start(kLookMs);
}

SceneDocument::~SceneDocument() {
  const bool isLeft = IsDirty() && !m_closed;
  GetCore().beforeTake = nullptr;
  GetAdaptor().GetObservers().Remove(*this);
  disconnect(&GetCore());
  m_journal.Close();
  if (!isLeft) m_folder.Remove();
}

void SceneDocument::Close() {
  EndRun();
  m_closed = true;
  m_journal.Close();
  m_folder.Remove();
}

// --- the scene ---

Problem SceneDocument::CheckReplaceable() {
  EndRun();
  GetCore().EndEdit();
  if (!GetAdaptor().IsUndoBlockOpen()) return {};
  return {"the scene", "something is being done to it that has not ended", "try again then", {}};
}

/// What is shown is a scene that has just been opened or made.
void SceneDocument::ShowScene(const std::string& path) {
  m_path = path;
  m_stamp = {};
  m_edits = 0;
  m_saved = m_autosaved = GetState();
  m_autosaveTime = seconds();
  m_closed = false;
  m_journal.Close();
  m_folder.Remove();
  m_isAutosaved = m_hasJournal = false;
  m_toldSize = {};
  m_sizedUntil = 0.0;
  GetCore().GetMessages().Tell(rws::core::TimeChanged{GetAdaptor().GetCurrentTime()});
}

DocumentResult SceneDocument::NewScene() {
  DocumentResult result;
  result.problem = CheckReplaceable();
  if (!result) return result;
  const rws::core::MessageQueue::Hold hold(GetCore().GetMessages());
  m_session.Clear();
  FillStartScene(GetScene());
  m_session.RestartLosses();
  ShowScene({});
  TellChange();
  return result;
}

DocumentResult SceneDocument::Open(const std::string& path, const std::string& clip) {
  const rws::core::MessageQueue::Hold hold(GetCore().GetMessages());
  const FileStamp stamp = FileStamp::Of(path);  // before: what changes meanwhile is told
  DocumentResult result = Read(path, clip);
  if (!result) return result;
  ShowScene(util::absolutePath(path));
  m_stamp = stamp;
  Tell(RecentFiles::Add(path), m_toldRecent);
  TellChange();
  return result;
}

DocumentResult SceneDocument::OpenCopy(const std::string& path) {
  const rws::core::MessageQueue::Hold hold(GetCore().GetMessages());
  DocumentResult result = Read(path, {});
  if (!result) return result;
  ShowScene({});
  TellChange();
  return result;
}

/// Reads a file in place of what is open.
DocumentResult SceneDocument::Read(const std::string& path, const std::string& clip) {
  DocumentResult result;
  result.problem = CheckReplaceable();
  if (!result) return result;
  const auto* const before = &GetScene();
  const std::string error = m_session.Open(path, clip);
  if (error.empty()) m_warnings.clear();
  result.warnings = TakeWarnings();
  if (error.empty()) return result;
  result.problem = {{}, error, {}, {}};
  if (before != &GetScene()) ShowScene({});  // the file went while it was looked through
  return result;
}

DocumentResult SceneDocument::Save(Overwrite overwrite) {
  if (!m_path.empty()) return Write(m_path, overwrite);
  DocumentResult result;
  result.problem = {"the scene", "it has no file yet", "choose one", {}};
  return result;
}

DocumentResult SceneDocument::SaveAs(const std::string& path, Overwrite overwrite) {
  return Write(util::absolutePath(path), overwrite);
}

DocumentResult SceneDocument::Write(const std::string& path, Overwrite overwrite) {
  DocumentResult result;
  if (IsRunning()) {
    result.problem = RunningProblem();
    return result;
  }
  GetCore().EndEdit();
  result.isAsked =
      overwrite == Overwrite::kRefuse && path == m_path && GetDiskState() == DiskState::kChanged;
  if (result.isAsked) {
    result.problem = {path,
                      "another program has changed the file since it was opened or saved here",
                      "save under another name, or replace what the other has written",
                      {}};
    return result;
  }
  const std::string error = m_session.Save(path);
  result.warnings = TakeWarnings();
  if (!error.empty()) {
    result.problem = {{}, error, {}, {}};
    return result;
  }
  result.losses = m_session.FindLosses();
  m_session.RestartLosses();
  m_path = path;
  m_stamp = FileStamp::Of(path);
  m_saved = m_autosaved = GetState();
  m_autosaveTime = seconds();
  m_folder.Clear();
  m_isAutosaved = m_hasJournal = false;
  Tell(RecentFiles::Add(path), m_toldRecent);
  TellChange();
  return result;
}

std::vector<std::string> SceneDocument::TakeWarnings() {
  std::vector<std::string> warnings = std::exchange(m_warnings, {});
  for (std::string& warning : m_session.TakeWarnings()) warnings.push_back(std::move(warning));
  return warnings;
}

std::string SceneDocument::GetTitle() const {
  return m_path.empty() ? "Untitled" : fs::path(m_path).filename().string();
}

SceneDocument::State SceneDocument::GetState() const {
  return {m_session.GetAdaptor().GetChangeId(), m_edits};
}

bool SceneDocument::IsDirty() const {
  return IsRunning() || !(GetState() == m_saved);
}

void SceneDocument::NoteEdit() {
  ++m_edits;
  TellChange();
}

SceneDocument::DiskState SceneDocument::GetDiskState() const {
  if (m_path.empty()) return DiskState::kSame;
  const FileStamp now = FileStamp::Of(m_path);
  if (now == m_stamp) return DiskState::kSame;
  return now.Exists() ? DiskState::kChanged : DiskState::kGone;
}

Problem SceneDocument::SetFrameRate(double fps) {
  if (IsRunning()) return RunningProblem();
  const rws::core::CoreRequest request(GetCore());
  GetAdaptor().BeginUndoBlock("Change frame rate");
  const bool done = GetAdaptor().SetFrameRate(fps);
  GetAdaptor().EndUndoBlock();
  return done ? Problem() : Problem{"the frame rate", "it must be a number above 0", {}, {}};
}

bool SceneDocument::IsRunning() const {
  return m_session.GetCore().GetRunState() != RunState::kIdle;
}

void SceneDocument::EndRun() {
  GetCore().StopRecording();
}

// --- undo ---

UndoList SceneDocument::GetUndoList() const {
  const auto& undo = m_session.GetAdaptor().GetUndo();
  UndoList list;
  list.names = undo.entryNames();
  list.position = list.names.size();
  for (std::string& name : undo.redoNames()) list.names.push_back(std::move(name));
  return list;
}

bool SceneDocument::GoTo(std::size_t position) {
  const rws::core::MessageQueue::Hold hold(GetCore().GetMessages());
  GetCore().EndEdit();
  const UndoList list = GetUndoList();
  if (IsRunning() || position > list.names.size()) return false;
  for (std::size_t at = list.position; at > position; --at)
    if (!GetCore().Undo()) return false;
  for (std::size_t at = list.position; at < position; ++at)
    if (!GetCore().Redo()) return false;
  return true;
}

void SceneDocument::OnUndo() {
  // A take that was undone, or thrown away, is none to be offered after a crash.
  if (!IsRunning() && !m_journal.IsOpen() && m_hasJournal && GetState() == m_autosaved)
    DropJournal();
  TellChange();
}

// --- safety ---

Problem SceneDocument::Autosave() {
  if (IsRunning()) return RunningProblem();
  if (!IsDirty() || GetState() == m_autosaved) return {};
  return WriteAutosave();
}

Problem SceneDocument::WriteAutosave() {
  m_autosaveTime = seconds();
  if (const Problem problem = m_folder.Make()) return problem;
  const AutosaveNote note{m_path, m_stamp, m_folder.NextFile(), std::time(nullptr),
                          GetScene().GetEvaluatedClip()};
  m_warnings = TakeWarnings();  // those are the user's, and those of this save are not
  const std::string error = m_session.Save(m_folder.PathOf(note.file));
  m_session.TakeWarnings();
  if (!error.empty())
    return {"the autosave", error, "see that the data root can be written and has room", {}};
  if (const Problem problem = m_folder.SetNote(note)) return problem;
  // Within a block that has begun to change the scene no step tells what the autosave holds.
  m_autosaved = GetAdaptor().GetUndo().lastInBlock() ? State{-2, 0} : GetState();
  m_isAutosaved = true;
  DropJournal();  // what its take came to is in the autosave
  return {};
}

void SceneDocument::LookAtAutosave() {
  const int minutes = GetCore().GetPreferences().autosaveMinutes;
  if (minutes <= 0 || m_closed || IsRunning() || GetAdaptor().IsUndoBlockOpen()) return;
  if (seconds() - m_autosaveTime >= 60.0 * minutes) Tell(Autosave(), m_toldAutosave);
}

void SceneDocument::PrepareTake() {
  m_journal.Close();
  double start = 0.0, end = 0.0;
  GetAdaptor().GetTimeRange(start, end);
  LookAtSize({GetAdaptor().GetCurrentTime(), end});
  if (GetCore().GetPreferences().autosaveMinutes <= 0) return;
  // A retry finds the scene as the take before did, unless somebody has removed it.
  AutosaveNote note;
  if (!m_isAutosaved || !(GetState() == m_autosaved) || !m_folder.ReadNote(note)) {
    const Problem problem = WriteAutosave();
    Tell(problem, m_toldAutosave);
    if (problem || !m_folder.ReadNote(note)) return;
  }
  JournalHead head;
  head.autosave = note.file;
  head.start = GetCore().SnapToFrame(GetAdaptor().GetCurrentTime());
  head.frameRate = GetCore().GetFrameRate();
  Tell(m_journal.Begin(m_folder.PathOf(AutosaveFolder::kJournal), head), m_toldJournal);
  m_hasJournal = true;
  m_journalTime = seconds();
}

/// Of a longer range it is told again.
void SceneDocument::LookAtSize(const TimeSpan& take) {
  if (fs::path(m_path).extension() == ".gltf") return;
  if (take.to > m_sizedUntil) m_toldSize = {};
  m_sizedUntil = take.to;
  Problem problem;
  if (const util::Sentence why = WhyTakeTooLong(GetCore(), SizeOf(m_path), take))
    problem = {Translate("The take"),
               Translate(why.text, why.values),
               Translatable("stop before that, save as .gltf, perform fewer rigs at once, or lower "
                            "the frame rate"),
               {}};
  Tell(problem, m_toldSize);
}

void SceneDocument::DropJournal() {
  m_hasJournal = false;
  std::error_code ignored;
  fs::remove(m_folder.PathOf(AutosaveFolder::kJournal), ignored);
}

void SceneDocument::onMessage(util::Message& message, bool) {
  if (NewsIn<rws::core::TimeChanged>(message)) FollowTake();
  const auto* const run = NewsIn<rws::core::RunStateChanged>(message);
  if (!run) return;
  if (run->state != RunState::kIdle)
    m_journal.Follow(GetCore());
  else if (!IsRunning())
    Tell(m_journal.End(GetCore()), m_toldJournal);
  TellChange();
}

void SceneDocument::FollowTake() {
  if (GetCore().GetRunState() != RunState::kRecording) return;
  // A take that comes to the range's end may draw it out.
  if (GetCore().GetEndTime() > m_sizedUntil)
    LookAtSize({GetCore().GetStartTime(), GetCore().GetEndTime()});
  if (!m_journal.IsOpen()) return;
  const double now = seconds();
  if (now - m_journalTime < kJournalPeriod) return;
  m_journalTime = now;
  Tell(m_journal.Write(GetCore()), m_toldJournal);
}

DocumentResult SceneDocument::Restore(Leftover leftover, const Monitor& monitor) {
  const AutosaveNote note = leftover.note;
  const rws::core::MessageQueue::Hold hold(GetCore().GetMessages());
  DocumentResult result =
      Read(leftover.GetAutosave(), note.clip < 0 ? std::string() : std::to_string(note.clip));
  if (!result) return result;
  ShowScene({});
  m_path = note.scene;
  m_stamp = note.stamp;
  ++m_edits;
  m_folder = std::move(leftover.folder);
  m_autosaved = GetState();
  m_isAutosaved = true;
  for (std::string& warning : leftover.warnings) result.warnings.push_back(std::move(warning));
  if (leftover.hasTake) {
    RestoredTake take = RestoreTake(GetCore(), leftover.take, monitor);
    for (std::string& warning : take.warnings) result.warnings.push_back(std::move(warning));
    if (take.problem) result.warnings.push_back(take.problem.what + ": " + take.problem.why);
    m_hasJournal = !take.problem;
  }
  TellChange();
  return result;
}

// --- telling ---

void SceneDocument::Tell(const Problem& problem, Problem& told) {
  const bool isNew = problem.why != told.why;
  told = problem;
  if (!problem || !isNew) return;
  rws::core::LogEntry(rws::core::LogLevel::kWarning, problem.what + ": " + problem.why);
  if (m_trouble) m_trouble(problem);
}

void SceneDocument::TellChange() {
  if (m_changed) m_changed();
}

}  // namespace orv::app
