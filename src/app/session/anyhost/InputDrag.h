// Recorded inputs that a hand changes while the rigs follow.
#pragma once

#include <memory>
#include <vector>

#include "util/AVar_Linear.h"

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

class UndoBlock;

/// One edit of recorded inputs that takes shape over many moves. With each of them the tracks of
/// before are there again, the given ones take their place, and a pass simulates the checked rigs
/// from the first frame that reads something else; the frames ahead of it stay as they are. A new
/// move drops the pass that runs. Nothing is kept unless `Keep` is called, and then it is one step
/// of undo.
///
/// It holds an undo block open from the first move on: nothing else may change the scene meanwhile.
/// The host's time stays where it is.
class InputDrag {
 public:
  using Track = util::AVar_Linear<double>;

  /// An input's track in its new shape.
  struct Edited {
    int rig = 0;    ///< Instance::GetIdentity
    int input = 0;  ///< its index
    Track track;
  };

  /// The core must outlive it.
  explicit InputDrag(rws::core::CoreImplementation& core);
  /// Leaves the scene as it was unless it was kept.
  ~InputDrag();
  InputDrag(const InputDrag&) = delete;
  InputDrag& operator=(const InputDrag&) = delete;

  /// Begins the pass with these tracks; inputs that are left out have theirs of before. False when
  /// a run of somebody else's goes on or no rig may be simulated; then all is as it was before the
  /// drag.
  bool Move(const std::vector<Edited>& tracks);
  /// Goes on with the pass for so long (s), at least one frame. True when none is left to go on
  /// with, and the keys are there.
  bool Go(double seconds);
  bool IsRunning() const { return m_isRunning; }
  /// Of the pass, 0 to 1.
  double GetProgress() const;
  /// Ends the pass and makes it a step of undo. False when nothing has changed.
  bool Keep();
  /// All is as it was before the first move.
  void Cancel();
  /// Lets go of the block as it stands, for somebody else has begun a run within it.
  void Abandon();

  /// Of a track: the last time up to which both read the same everywhere; infinite for equal ones.
  static double FindFirstChange(const Track& before, const Track& after);
  /// Whether a run from the middle finds all that the rig needs, to the bit, in what it keeps of
  /// its frames. Those others are simulated from the range's start on.
  static bool ResumesExactly(const rws::core::Instance& rig);

 private:
  double PutTracks(const std::vector<Edited>& tracks);
  bool Begin(double firstChange);
  void End();

  rws::core::CoreImplementation& m_core;
  std::unique_ptr<UndoBlock> m_block;
  double m_time = 0.0;  ///< the host's, which each pass ends with (s)
  bool m_isRunning = false;
  bool m_hasChanged = false;
};

}  // namespace orv::app
