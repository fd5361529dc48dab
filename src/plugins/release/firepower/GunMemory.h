// What a gun remembers of each frame, so that a take may go on from any.
#pragma once

#include <vector>

#include "util/Matrix.h"

namespace orv::util {
class DataChunk;
}

namespace orv::rws::addon {

/// Two times of a gun this close are one (s): sums of frame durations are rounded.
inline constexpr double kSameTime = 1e-9;

class SaveReader;

/// Time since the last round of a gun that has fired none (s): longer than any rate waits.
inline constexpr double kNoRound = 1e6;

/// What a frame changes.
struct GunState {
  double fireTimer = kNoRound;      ///< time since the last round (s)
  double fire = 0.0;                ///< the input; any number but 0 is a press
  bool okToFire = false;            ///< firing may go on
  int nrFirePressed = 0;            ///< presses since the count began
  bool firstFired = false;          ///< the count for the first discharge is over
  bool timeDelayActivated = false;  ///< a delay runs
  double timeDelayStart = 0.0;      ///< of the latest delay (s)
  bool delayed = false;             ///< the present press has had its delay
  double recoil = -1.0;             ///< time in the recoil's cycle (s); below 0 at rest
  double currentRecoil = 0.0;       ///< part of the depth that the barrel is back, smoothed
  double barrelBack = 0.0;          ///< how far the barrel stands back, in its own scale (m)
  int nrDischarges = 0;             ///< discharges so far; picks the next one's rhythm
  int nrBullets = 0;                ///< projectiles so far; the latest one's number
};

/// The states by time and the barrel's place. A value like any other, for undo.
class GunMemory {
 public:
  /// Drops the frames from `time` on.
  void Cut(double time);
  void Store(double time, const GunState& state);
  /// The state to go on from in the frame behind `before`. A gun that has not been simulated up to
  /// there is let go meanwhile: nothing is pressed, delayed or recoiling.
  GunState Resume(double before) const;

  void Save(util::DataChunk& chunk) const;
  void Load(SaveReader& reader);

  /// Once the recoil has moved the barrel, its place in its parent without any recoil; the rig
  /// writes the barrel in every frame from then on.
  bool hasRest = false;
  util::Matrix<double> rest;  ///< against the parent (m)

 private:
  struct Frame {
    double time;
    GunState state;
  };
  std::vector<Frame> m_frames;  ///< in rising time
};

}  // namespace orv::rws::addon
