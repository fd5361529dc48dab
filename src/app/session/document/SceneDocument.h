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
#include "app/session/anyhost/Problem.h"
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
  bool isAsked = false;  ///< the file has changed on the disk: done when asked with kOverwrite
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
/// ended, as its stop button ends it, by `newScene`, `open` and `restore`: who asks for another
/// scene wants this one to stop. So before a program asks about unsaved changes it calls `endRun`;
/// the question is then about the take too.
class SceneDocument : private util::MessageNode, private rws::adaptor::headless::HostObserver {
 public:
  /// With an empty scene; see newScene.
  SceneDocument();
  /// Leaves the autosave of unsaved changes for `findLeftovers`, unless `close` was called.
  ~SceneDocument() override;
  SceneDocument(const SceneDocument&) = delete;
  SceneDocument& operator=(const SceneDocument&) = delete;

  // The scene and its file. Unsaved changes are the caller's to ask about.

  /// A scene without a file: a plane of 1 km by 1 km, "ground", 25 frames per second, 0 to 10 s.
  DocumentResult newScene();
  /// Opens a `.glb` or `.gltf` in place of what is open, which stays when that fails. `clip` names
  /// the animation that is evaluated, by default the first.
  DocumentResult open(const std::string& path, const std::string& clip = {});
  /// Writes the file, whole or not at all. A scene without a file is refused: ask for a path.
  DocumentResult save(Overwrite overwrite = Overwrite::kRefuse);
  /// Writes the scene as `path`, which is its file from then on. That a file of somebody else's is
  /// there is for the caller to ask about.
  DocumentResult saveAs(const std::string& path, Overwrite overwrite = Overwrite::kRefuse);
  /// The user is done with the scene, unsaved changes and all: the autosave goes.
  void close();

  /// Absolute; empty while the scene has no file.
  const std::string& path() const { return m_path; }
  /// The file's name, or "Untitled".
  std::string title() const;
  /// Whether the scene differs from what was saved last. Undone to that state it is clean again;
  /// what is selected doesn't count. Always during a take or a resimulation.
  bool isDirty() const;
  /// After an edit of what the file stores that is no step of undo.
  void noteEdit();
  enum class DiskState { kSame, kChanged, kGone };
  /// Whether somebody else has changed the file since it was read or written here. A scene without
  /// a file is kSame.
  DiskState diskState() const;
  /// Frames per second; one undo step. An empty problem means success.
  Problem setFrameRate(double fps);

  /// Whether a take or a resimulation runs.
  bool isRunning() const;
  /// Ends it and keeps what it has come to, one undo step.
  void endRun();

  UndoList undoList() const;
  /// Undoes or redoes until so many steps are in force; false when that can't be, as in a take.
  bool goTo(std::size_t position);

  // Safety. Minutes between autosaves are the preference "autosave"; at 0 there is neither autosave
  // nor journal.

  /// Writes the autosave if the scene has changed since the last one. Not within a take. Done every
  /// few minutes and before each take by itself.
  Problem autosave();
  /// Opens the autosave of a program that is gone and puts the interrupted take in, as one undo
  /// step. The scene is the file's that it was, and dirty. On failure the leftover is offered
  /// again by the next findLeftovers.
  DocumentResult restore(Leftover leftover);

  /// Called when path, title, dirty or the undo list may have changed.
  void setChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }
  /// Told of what fails in the background: autosave, journal, list of recent files. Each once until
  /// it works again.
  void setTroubleHandler(std::function<void(const Problem&)> handler) {
    m_trouble = std::move(handler);
  }

  SceneSession& session() { return m_session; }
  rws::core::CoreImplementation& core() { return m_session.core(); }
  rws::adaptor::headless::HeadlessAdaptor& adaptor() { return m_session.adaptor(); }
  rws::adaptor::headless::Scene& scene() { return m_session.scene(); }

  /// Seconds of any origin, by which autosave and journal fall due. May be replaced, so that a test
  /// scripts them.
  std::function<double()> seconds;
  /// Looks whether an autosave is due; a timer calls it.
  void lookAtAutosave();

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

  State state();
  Problem checkReplaceable();
  void showScene(const std::string& path);
  DocumentResult write(const std::string& path, Overwrite overwrite);
  Problem writeAutosave();
  bool restoreJournal(const Leftover& leftover, DocumentResult& result);
  void beforeTake();
  void followTake();
  void endJournal();
  void tell(const Problem& problem, Problem& told);
  void tellChange();

  SceneSession m_session;
  std::string m_path;
  FileStamp m_stamp;  ///< of the file as it was read or written last
  State m_saved;      ///< what the file holds
  State m_autosaved;  ///< what the autosave holds
  int m_edits = 0;    ///< that are no step of undo
  bool m_closed = false;
  AutosaveFolder m_folder;
  double m_autosaveTime = 0.0;  ///< of the last autosave, by `seconds`
  TakeJournal m_journal;
  double m_journalTime = 0.0;  ///< of its last record, by `seconds`
  Problem m_toldAutosave, m_toldJournal, m_toldRecent;
  std::unique_ptr<QTimer> m_timer;
  std::function<void()> m_changed;
  std::function<void(const Problem&)> m_trouble;
};

}  // namespace orv::app
