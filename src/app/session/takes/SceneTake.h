// A take of a scene, alone or in the place of a part of what was recorded.
#pragma once

#include <functional>
#include <memory>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Punch.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/TimeSpan.h"

namespace orv::app {

class SceneSession;

/// What is asked of a take. Times in seconds.
struct TakeWish {
  double from = 0.0;     ///< see `BeginOf`
  double seconds = 0.0;  ///< not positive: until the core is told to stop
  /// So long ahead of `from` time begins to run over what is keyed: the performer sees it coming,
  /// and nothing is written there.
  double preRoll = 0.0;
  bool goOn = false;   ///< behind the take with what was recorded before
  double blend = 0.0;  ///< within the take, between the old inputs and the new ones
  RowsToStep only;     ///< none: all that are checked
};

/// Performs one: a single undo step, and one of the scene's kept takes. It runs in Qt's event loop.
/// Which inputs it records is the rigs' own matter (`ArmInputs`).
class SceneTake {
 public:
  explicit SceneTake(SceneSession& session);

  /// Where a take asked for from `from` (s) on begins: where something stands ahead of that, at the
  /// frame that `from` lies in, so that its frames are those that stand there, and no key comes
  /// between.
  static double BeginOf(rws::core::CoreImplementation& core, double from, const RowsToStep& only);
  /// `ended` is called from the event loop; the monitor must live until then. False, with nothing
  /// changed, when no take can begin.
  bool Begin(TakeWish wish, const Monitor& monitor, std::function<void()> ended);
  /// When the core has ended it: does now what the event loop would do in a moment.
  void Settle() { m_run.Settle(); }
  const RunResult& GetResult() const { return m_run.GetResult(); }
  /// From its first frame to its last.
  TimeSpan GetPerformed() const { return m_run.GetPerformed(); }
  /// The same, with what goes on behind it.
  TimeSpan GetWhole() const { return m_whole; }

 private:
  void Finish(const TakeWish& wish, const Monitor& monitor, const TimeSpan& performed);

  SceneSession& m_session;
  std::unique_ptr<Punch> m_punch;
  TimeSpan m_whole;
  TakeRun m_run;  ///< last: it throws a take away that still runs
};

}  // namespace orv::app
