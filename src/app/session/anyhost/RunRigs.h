// Runs of a scene's rigs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/TimeSpan.h"

class QTimer;

namespace orv::rws::core {
class CoreImplementation;
class InstanceReference;
}  // namespace orv::rws::core

namespace orv::app {

class OnlyRigs;
class UndoBlock;

/// Rows of rigs that alone take part in a run, checked or not; none: all that are checked.
using RowsToStep = std::vector<rws::core::InstanceReference*>;

/// How a run ended. One that was cancelled or could not begin has left the scene as it was.
struct RunResult {
  long frames = 0;       ///< stepped
  double seconds = 0.0;  ///< that it took
  bool began = false;
  bool cancelled = false;
};

/// Steps the rigs that take part over `span` from their recorded inputs, as fast as it can, and
/// writes the keys: one undo step. `afterFrame`, when given, is called after each frame.
RunResult Resimulate(rws::core::CoreImplementation& core, const TimeSpan& span,
                     const Monitor& monitor, const RowsToStep& only = {},
                     const std::function<void()>& afterFrame = {});

/// A take of a told length against the real clock, one undo step. It runs in Qt's event loop, which
/// the program keeps going until it is told of the end.
class TakeRun {
 public:
  explicit TakeRun(rws::core::CoreImplementation& core);
  /// Throws a take away that still runs.
  ~TakeRun();
  TakeRun(const TakeRun&) = delete;
  TakeRun& operator=(const TakeRun&) = delete;

  /// Begins at `start`, for so many `seconds` (not positive: until the core is told to stop).
  /// `ended` is called from the event loop. False, with nothing changed, when no take can begin.
  bool Begin(double start, double seconds, const Monitor& monitor, std::function<void()> ended,
             const RowsToStep& only = {});
  /// Called behind the last frame, within the take's undo step, unless it was thrown away; what it
  /// does belongs to the take.
  std::function<void(const TimeSpan& performed)> finish;
  /// When the core has ended the take: does now what the event loop would do in a moment.
  void Settle();
  const RunResult& GetResult() const { return m_result; }
  /// From its first frame to its last.
  TimeSpan GetPerformed() const { return m_performed; }

 private:
  void Look();
  void End();

  rws::core::CoreImplementation& m_core;
  std::unique_ptr<QTimer> m_look;
  std::unique_ptr<UndoBlock> m_block;  ///< while the take runs
  std::unique_ptr<OnlyRigs> m_only;    ///< the same
  const Monitor* m_monitor = nullptr;
  std::function<void()> m_ended;
  RunResult m_result;
  TimeSpan m_performed;
  double m_rate = 0.0;  ///< frames per second
  long m_first = 0, m_total = 0;
};

/// An input whose recorded movement a take would write over.
struct StakedInput {
  std::string name;  ///< "RIG:INPUT"
  TimeSpan moved;    ///< when it moved, from its last rest on
};

/// What a take that begins at `start` (s) would put an absent control's zeros in the place of.
std::vector<StakedInput> InputsAtStake(rws::core::CoreImplementation& core, double start,
                                       const RowsToStep& only = {});

}  // namespace orv::app
