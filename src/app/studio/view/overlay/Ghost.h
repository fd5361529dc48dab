// The take before the one that is shown.
#pragma once

#include <unordered_set>
#include <vector>

#include "app/studio/view/overlay/TakeFilm.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class Scene;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws {
class CInterface;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app::view {

/// Films the nodes that the rigs of a run carry, and keeps the film of the run before, or, where
/// none was filmed, of the keys that the run replaces. The one that the scene does not show is the
/// ghost: of a take that was thrown away too, and beside a resimulation. What is fired has its part
/// from then on, also when the next run has removed it. Reads the scene alone.
class Ghost {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  /// Nodes that a film has at most: what one looks at, not a crowd.
  static constexpr std::size_t kMostActors = 256;
  /// And what comes while the run goes on.
  static constexpr std::size_t kMostRounds = 256;

  Ghost(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host)
      : m_core(core), m_host(host) {}

  /// Takes a look at the run: ahead of each picture, and when the steps of undo have changed, since
  /// a take that is thrown away goes then.
  void Follow();
  /// Nodes have come or gone.
  void NoteTree() { m_isTreeOld = true; }
  /// What stands beside the scene; null for nothing.
  const TakeFilm* GetFilm();
  /// Another number when a film has other actors, or others of their nodes are there.
  int GetSerial() const { return m_serial; }

 private:
  void Begin();
  void End();
  std::vector<HeadlessNode*> FindActors() const;
  void FindRounds();
  bool HasFilmed(const std::vector<HeadlessNode*>& actors) const;
  void FilmKeys(const std::vector<HeadlessNode*>& actors);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  TakeFilm m_latest, m_before;
  // Of the latest run: whose nodes it films, and all that was there or has been found.
  std::unordered_set<const rws::CInterface*> m_rigs;
  std::unordered_set<const HeadlessNode*> m_known;
  std::size_t m_rounds = 0;
  const rws::adaptor::headless::Scene* m_scene = nullptr;
  bool m_isRunning = false, m_isResimulation = false, m_isTreeOld = true;
  int m_serial = 0;
  // Which of them is the ghost: looked up when the scene has changed.
  const TakeFilm* m_shown = nullptr;
  int m_change = 0;
  bool m_isShownOld = true;
};

}  // namespace orv::app::view
