// The playback range and the frame rate of a scene.
#pragma once

#include <optional>

#include "app/session/anyhost/TimeSpan.h"

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

class SceneSession;

TimeSpan PlaybackRange(const rws::adaptor::headless::Scene& scene);
/// The playback range and all that is keyed.
TimeSpan KeyedRange(const rws::adaptor::headless::Scene& scene);

/// Time (s) of the last key of a rig's node; `none` when no rig has keyed any.
double LastKeyOfRigs(const SceneSession& session, double none);

/// Sets the playback range and, when given, the frame rate, as one undo step; keys keep their
/// times. False, with nothing changed, for what is no range or no rate.
bool SetTiming(SceneSession& session, const TimeSpan& range, std::optional<double> rate);

/// Makes the playback range reach over `span`, as a run does that goes beyond it: what was
/// simulated must not be cut off by the next run. Undoable in an open block.
void StretchRange(SceneSession& session, const TimeSpan& span);
/// Makes the playback range what a take performed, so that the next run repeats it and no more. Of
/// the range `before` stays what other keys and recorded inputs reach over. Undoable in an open
/// block.
void SettleRange(SceneSession& session, const TimeSpan& before, const TimeSpan& performed);

/// Whether some key of the scene stands between the frames of `rate`.
bool HasKeysOffTheGrid(const rws::adaptor::headless::Scene& scene, double rate);

}  // namespace orv::app
