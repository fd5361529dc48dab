// The take before the one that is shown.
#pragma once

#include <vector>

#include "app/studio/view/overlay/TakeFilm.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class Scene;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app::view {

/// Films the nodes that the rigs of a run carry, and keeps the film of the run before, or, where
/// none was filmed, of the keys that the run replaces. The one that the scene does not show is the
/// ghost: of a take that was thrown away too, and beside a resimulation. Reads the scene alone.
class Ghost {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  /// Nodes that a film has at most: what one looks at, not a crowd.
  static constexpr std::size_t kMostActors = 256;

  Ghost(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host)
      : m_core(core), m_host(host) {}

  /// Takes a look at the run: ahead of each picture, and when the steps of undo have changed, since
  /// a take that is thrown away goes then.
  void Follow();
  /// What stands beside the scene; null for nothing.
  const TakeFilm* GetFilm();
  /// Another number when a film has other actors.
  int GetSerial() const { return m_serial; }

 private:
  void Begin();
  void End();
  std::vector<HeadlessNode*> FindActors() const;
  bool HasFilmed(const std::vector<HeadlessNode*>& actors) const;
  void FilmKeys(std::vector<HeadlessNode*> actors);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  TakeFilm m_latest, m_before;
  const rws::adaptor::headless::Scene* m_scene = nullptr;
  bool m_isRunning = false, m_isResimulation = false;
  int m_serial = 0;
  // Which of them is the ghost: looked up when the scene has changed.
  const TakeFilm* m_shown = nullptr;
  int m_change = 0;
  bool m_isShownOld = true;
};

}  // namespace orv::app::view
