// The takes of a scene.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/session/anyhost/Monitor.h"
#include "app/session/takes/Surroundings.h"
#include "app/session/takes/TakeCode.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

class SceneSession;

/// How `KeptTakes::Use` ended.
struct UseResult {
  std::string problem;  ///< why nothing has changed; empty when it has
  bool cancelled = false;
  bool isSame = false;         ///< the poses are those of the take, to the bit
  std::set<std::string> rigs;  ///< that were put back
};

/// Keeps every take that the session's core performs, unless the preferences say otherwise, outside
/// undo: what a retry or an undo drops of the scene stays here, marked. Takes that are kept are
/// written with the scene. So is what else the scene's keys come from, such as a simulation with
/// other parameters, from which a take may go on; no list shows it.
class KeptTakes {
 public:
  /// Oldest first.
  using Chain = std::vector<const KeptTake*>;

  /// Listens to the core's takes as long as it lives.
  explicit KeptTakes(SceneSession& session);
  ~KeptTakes();
  KeptTakes(const KeptTakes&) = delete;
  KeptTakes& operator=(const KeptTakes&) = delete;

  /// Takes over what the scene that was opened holds. An empty text, or a warning: what can't be
  /// read is written back as it is, and no take is kept beside it.
  std::string Load();
  /// To be called ahead of a save.
  void Store();

  const std::vector<KeptTake>& GetTakes() const { return m_list.takes; }
  /// Null when there is none of this number.
  const KeptTake* Find(int number) const;
  /// Number of the take that the scene shows, simulated again or not; 0: none.
  int GetCurrent() const { return ShownOf(m_list.current); }
  /// Number of the take that one went on from, simulated again or not; 0: none that is there.
  int GetPredecessor(const KeptTake& take) const { return ShownOf(take.predecessor); }
  /// The same, and those that others of its rigs went on from.
  std::set<int> GetPredecessors(const KeptTake& take) const;
  /// What the scene's keys come from, oldest first: each goes on within those before, or stands
  /// beside them. Empty when that is not known.
  Chain GetChain();
  Surroundings& GetSurroundings() { return m_surroundings; }

  /// Puts parameters, mappings, tracks and start back and simulates the take, behind those that it
  /// went on from, one after the other: one undo step.
  UseResult Use(int number, const Monitor& monitor);
  // Outside undo. False when there is no such take.
  bool SetName(int number, const std::string& name);
  bool SetNote(int number, const std::string& note);
  bool SetStars(int number, int stars);
  /// An empty text, or why it has to stay.
  std::string Delete(int number);
  /// A take, with those that it went on from, as the bytes of a file.
  std::string Export(int number) const;
  /// Adds the takes of such a file behind the present ones. An empty text, or why not.
  std::string Import(const std::string& bytes, std::vector<int>& numbers);

  /// While one lives, what is simulated counts as no run of its own.
  class Pause {
   public:
    explicit Pause(KeptTakes& takes) : m_takes(takes) { m_takes.m_isPaused = true; }
    ~Pause() { m_takes.m_isPaused = false; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    KeptTakes& m_takes;
  };
  /// What was done to the inputs and simulated within the step of the take that ended last counts
  /// as its own, up to `end` (s).
  void TakeOverInputs(double end);

  /// When a take ended, in the program's own words; asked behind the take.
  std::function<std::string()> now;
  std::string version;  ///< of the program

 private:
  class MarksUndo;
  using Names = std::set<std::string>;  ///< of rigs
  /// What undo and redo change.
  struct Marks {
    int current = 0;
    std::vector<int> beside;
    std::map<int, std::pair<bool, bool>> flags;  ///< retried and undone, by number
  };

  Marks GetMarks() const;
  void PutMarks(const Marks& marks);
  /// Of those too that no list shows.
  const KeptTake* FindAny(int number) const;
  int ShownOf(int number) const;
  KeptTake* Edit(int number);
  KeptTake* EditShown(int number);
  bool IsTracking() const;
  void BeginTake();
  bool IsInPlaceOf(const KeptTake& old) const;
  void StopTake(bool isTake);
  void EndTake();
  void FollowNames();
  void Hide(int number);
  void KeepToLimit();
  void ForgetUnneeded(std::size_t most);
  std::set<int> FindNeeded() const;
  TakeList GetNeeded() const;
  Chain StandingAt(double start, const Names& rigs);
  void GoOnFrom(const Chain& chain);
  bool Stands(const KeptTake& last, const Names& but);
  void ReadInputs(KeptTake& take);
  void NoteStart(rws::core::Instance& rig, KeptRig& kept);
  void NotePoses(KeptTake& take);
  std::string HashOf(const KeptTake& take);
  std::map<std::string, std::uint64_t> MarksOf(const KeptTake& take);
  static Names NamesOf(const Chain& chain);
  static Names WholeIn(const Chain& chain);
  static int MissingIn(const Chain& chain);
  Chain LineOf(int number) const;
  Chain ChainAhead(const KeptTake& take) const;
  Chain ChainOf(int number) const;
  std::vector<int> GetTips() const;
  std::vector<Chain> LinesOf(const Names& rigs) const;
  std::vector<int> Uncovered(const std::vector<int>& tips, Names covered) const;
  std::string WhyNot(const Chain& chain);
  bool ClearFor(const KeptTake& take, const Names& rigs, const Monitor& monitor);
  std::string PutBackStarts(const KeptTake& take, const Names& rigs, const Monitor& monitor);
  std::string PutBackRig(const KeptTake& take, const KeptRig& kept);
  bool Simulate(const KeptTake& take, const Monitor& monitor);
  std::string Replay(const Chain& chain, const Monitor& monitor);

  SceneSession& m_session;
  Surroundings m_surroundings;
  TakeList m_list;
  std::map<int, std::string> m_names;  ///< of the scene's rigs, as the list has them
  KeptTake m_running;
  std::shared_ptr<int> m_life = std::make_shared<int>(0);
  bool m_changed = false;  ///< since `Load`
  bool m_damaged = false;
  bool m_isTracking = false;  ///< the run that goes on, or ended last
  bool m_isPaused = false;
};

}  // namespace orv::app
