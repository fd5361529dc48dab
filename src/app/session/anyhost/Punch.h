// Takes that replace a part of another.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/TimeSpan.h"
#include "util/AVar_Linear.h"

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

/// What has been recorded ahead of a take, so that it can go on with that behind its end.
class Punch {
 public:
  /// Notes the tracks of the rigs that take part; `lastKey` (s) is what they have keyed last. The
  /// core must outlive this.
  Punch(rws::core::CoreImplementation& core, const RowsToStep& rows, double lastKey);

  /// Behind the take, in its undo step: with `goOn` what was recorded before goes on behind its
  /// last frame, else that is dropped, as takes do. Over `blend` seconds within the take, at its
  /// start and where something goes on at its end too, inputs go from the old values to the new
  /// ones and back. All is simulated again from the take's start on. False when nothing was
  /// changed, or nothing could be simulated.
  bool Join(const TimeSpan& performed, bool goOn, double blend, const Monitor& monitor);
  /// Where the old tracks and keys end (s).
  double GetEnd() const { return m_end; }

 private:
  using Track = util::AVar_Linear<double>;

  void JoinTracks(rws::core::Instance& rig, const std::vector<Track>& old,
                  const TimeSpan& performed, bool goOn, double blend);

  rws::core::CoreImplementation& m_core;
  RowsToStep m_rows;
  std::map<int, std::vector<Track>> m_tracks;  ///< by the rig's identity
  double m_end;
};

/// Arms the inputs that are named, "RIG:INPUT" or "RIG:*", for takes; all others play what they
/// have. No names at all arm every input, as if nothing had ever been said. What is wrong with a
/// name is returned; then nothing has changed.
std::string ArmInputs(rws::core::CoreImplementation& core, const std::vector<std::string>& names);

}  // namespace orv::app
