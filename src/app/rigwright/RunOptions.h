// What verbs that run a scene are told: which rigs, over which time, at which frame rate.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session/anyhost/TimeSpan.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI
namespace orv::rws::adaptor::headless {
class Scene;
}
namespace orv::rws::core {
class Instance;
class InstanceReference;
}  // namespace orv::rws::core

namespace orv::app {

class SceneJob;

/// The rows of these rigs. Refuses a run without a rig: without names one must be checked.
std::vector<rws::core::InstanceReference*> RowsToRun(SceneJob& job,
                                                     const std::vector<std::string>& names);
/// The rig of this name, or all without one.
std::vector<rws::core::Instance*> RigsNamed(SceneJob& job, const std::string& name);

/// Refuses times whose frames the engine can't number. `what` is to blame, `hint` says what to do.
void RequireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint);

/// "a:b" of the command line, what is missing from it taken from the playback range.
TimeSpan SpanOf(const rws::adaptor::headless::Scene& scene, const std::string& range);

/// Tells the object of the result the playback range, and people when it is not `before`.
void TellRange(SceneJob& job, const TimeSpan& before);

/// `--fps`: a number or a fraction such as 30000/1001.
CLI::Option* AddFrameRate(CLI::App& verb, std::optional<double>& rate);
/// Tells as a warning that a rate is new to the scene and some keys fall on none of its frames.
void WarnOfRate(SceneJob& job, double rate);
/// See SetTiming; refuses what is no range.
void ChangeTiming(SceneJob& job, const TimeSpan& range, std::optional<double> rate);

/// Refuses a scene without a rig.
void RequireRigs(SceneJob& job);

}  // namespace orv::app
