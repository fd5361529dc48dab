// The scene that a program with windows works on.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "app/session/Losses.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Problem.h"
#include "app/session/anyhost/TimeSpan.h"
#include "app/session/document/AutosaveFolder.h"
#include "app/session/document/FileStamp.h"
#include "app/session/document/Recovery.h"
#include "app/session/document/TakeJournal.h"
#include "util/MessageNode.h"

class QTimer;

namespace orv::app {

/// What opening or saving came to.
struct DocumentResult {
  Problem problem;       ///< why it was not done, and the scene is as it was; empty when it was
  bool isAsked = false;  ///< refused since the file has changed on the disk; see Overwrite
  std::vector<std::string> warnings;  ///< what could not be read or kept, a sentence each
  LossReport losses;  ///< of a save: keys and recorded inputs that the file does not hold any more

  explicit operator bool() const { return !problem; }
};

/// Whether a file is replaced that somebody else has changed since it was read or written here.
enum class Overwrite { kRefuse, kOverwrite };

/// The steps of undo, oldest first; those before `position` are in force.
struct UndoList {
  std::vector<std::string> names;
  std::size_t position = 0;
};

/// One scene with its file, its autosave and the journal of its takes, on a core that stays the
/// same over any number of scenes: windows go on listening, and are told that the old rows are
/// deleted and the new ones created. Main thread only; the autosave needs Qt's event loop.
///
/// A take or resimulation that runs is refused a save, which would catch the scene half way. It is
/// ended, as its stop button ends it, by `NewScene`, `Open` and `Restore`: who asks for another
/// scene wants this one to stop. So before a program asks about unsaved changes it calls `EndRun`;
/// the question is then about the take too.
class SceneDocument : private util::MessageNode, private rws::adaptor::headless::HostObserver {
 public:
  /// With an empty scene; see NewScene.
  SceneDocument();
  /// Leaves the autosave of unsaved changes for `FindLeftovers`, unless `Close` was called.
  ~SceneDocument() override;
  SceneDocument(const SceneDocument&) = delete;
  SceneDocument& operator=(const SceneDocument&) = delete;

  // The scene and its file. Unsaved changes are the caller's to ask about.

  /// A scene without a file: a plane of 1 km by 1 km, "ground", 25 frames per second, 0 to 10 s.
  DocumentResult NewScene();
  /// Opens a `.glb` or `.gltf` in place of what is open, which stays when that fails. `clip` names
  /// the animation that is evaluated, by default the first.
  DocumentResult Open(const std::string& path, const std::string& clip = {});
  /// The same as a scene without a file, such as an example: what is saved goes elsewhere.
  DocumentResult OpenCopy(const std::string& path);
  /// Writes the file, whole or not at all. A scene without a file is refused: ask for a path.
  DocumentResult Save(Overwrite overwrite = Overwrite::kRefuse);
  /// Writes the scene as `path`, which is its file from then on. That a file of somebody else's is
  /// there is for the caller to ask about.
  DocumentResult SaveAs(const std::string& path, Overwrite overwrite = Overwrite::kRefuse);
  /// The user is done with the scene, unsaved changes and all: the autosave goes.
  void Close();

  /// Hands over, and forgets, what takes and other work have had to say since the last result, such
  /// as poses that could not be written. In place of the session's.
  std::vector<std::string> TakeWarnings();

  /// Absolute; empty while the scene has no file.
  const std::string& GetPath() const { return m_path; }
  /// The file's name, or "Untitled".
  std::string GetTitle() const;
  /// Whether the scene differs from what was saved last. Undone to that state it is clean again;
  /// what is selected doesn't count. Always during a take or a resimulation.
  bool IsDirty() const;
  /// After an edit of what the file stores that is no step of undo.
  void NoteEdit();
  enum class DiskState { kSame, kChanged, kGone };
  /// Whether somebody else has changed the file since it was read or written here. A scene without
  /// a file is kSame.
  DiskState GetDiskState() const;
  /// Frames per second; one undo step. An empty problem means success.
  Problem SetFrameRate(double fps);

  /// Whether a take or a resimulation runs.
  bool IsRunning() const;
  /// Ends it and keeps what it has come to, one undo step.
  void EndRun();

  UndoList GetUndoList() const;
  /// Undoes or redoes until so many steps are in force; false when that can't be, as in a take.
  bool GoTo(std::size_t position);

  // Safety. Minutes between autosaves are the preference "autosave"; at 0 there is neither autosave
  // nor journal.

  /// Writes the autosave if the scene has changed since the last one. Not within a take. Done every
  /// few minutes and before each take by itself.
  Problem Autosave();
  /// Opens the autosave of a program that is gone and puts the interrupted take in, as one undo
  /// step. The scene is the file's that it was, and dirty. On failure the leftover is offered
  /// again by the next FindLeftovers. The monitor is that of the take's resimulation.
  DocumentResult Restore(Leftover leftover, const Monitor& monitor = Monitor());

  /// Called when path, title, dirty or the undo list may have changed.
  void SetChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }
  /// Told of what fails in the background: autosave, journal, list of recent files. Each once until
  /// it works again.
  void SetTroubleHandler(std::function<void(const Problem&)> handler) {
    m_trouble = std::move(handler);
  }

  SceneSession& GetSession() { return m_session; }
  rws::core::CoreImplementation& GetCore() { return m_session.GetCore(); }
  rws::adaptor::headless::HeadlessAdaptor& GetAdaptor() { return m_session.GetAdaptor(); }
  rws::adaptor::headless::Scene& GetScene() { return m_session.GetScene(); }

  /// Seconds of any origin, by which autosave and journal fall due. May be replaced, so that a test
  /// scripts them.
  std::function<double()> seconds;
  /// Looks whether an autosave is due; a timer calls it.
  void LookAtAutosave();

 private:
  /// What the scene holds, as far as undo tells: the step that it stands at, and how many edits
  /// there were beside.
  struct State {
    int step = -1;
    int edits = 0;
  };
  friend bool operator==(const State& a, const State& b) {
    return a.step == b.step && a.edits == b.edits;
  }

  // util::MessageNode, adaptor::headless::HostObserver
  void onMessage(util::Message& message, bool broadcast) override;
  void OnUndo() override;

  State GetState() const;
  Problem CheckReplaceable();
  DocumentResult Read(const std::string& path, const std::string& clip);
  void ShowScene(const std::string& path);
  DocumentResult Write(const std::string& path, Overwrite overwrite);
  Problem WriteAutosave();
  void PrepareTake();
  void FollowTake();
  void LookAtSize(const TimeSpan& take);
  void DropJournal();
  void Tell(const Problem& problem, Problem& told);
  void TellChange();

  SceneSession m_session;
  std::string m_path;
  FileStamp m_stamp;  ///< of the file as it was read or written last
  State m_saved;      ///< what the file holds
  State m_autosaved;  ///< what the autosave, or the file without one, holds
  int m_edits = 0;    ///< that are no step of undo
  bool m_closed = false;
  std::vector<std::string> m_warnings;  ///< not handed over yet
  AutosaveFolder m_folder;
  bool m_isAutosaved = false;   ///< there is one, and it holds m_autosaved
  double m_autosaveTime = 0.0;  ///< of the last autosave, by `seconds`
  TakeJournal m_journal;
  bool m_hasJournal = false;   ///< one of the take that was recorded on m_autosaved
  double m_journalTime = 0.0;  ///< of its last record, by `seconds`
  Problem m_toldAutosave, m_toldJournal, m_toldRecent, m_toldSize;
  double m_sizedUntil = 0.0;  ///< end of the longest take that was looked at (s)
  std::unique_ptr<QTimer> m_timer;
  std::function<void()> m_changed;
  std::function<void(const Problem&)> m_trouble;
};

}  // namespace orv::app
