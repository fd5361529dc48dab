// Which rigs a run steps, over which time, and at which frame rate.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI
namespace orv::rws::adaptor::headless {
class Scene;
}
namespace orv::rws::core {
class InstanceReference;
}

namespace orv::app {

class SceneJob;

/// Steps only some rigs for as long as it lives; afterwards each row's check is what it was.
class OnlyRigs {
 public:
  /// Without names every row stays as it is; then one must be checked.
  OnlyRigs(SceneJob& job, const std::vector<std::string>& names);
  ~OnlyRigs();
  OnlyRigs(const OnlyRigs&) = delete;
  OnlyRigs& operator=(const OnlyRigs&) = delete;

 private:
  std::vector<std::pair<rws::core::InstanceReference*, bool>> m_before;
};

/// Seconds of a run.
struct TimeSpan {
  double from = 0.0;
  double to = 0.0;
};

/// A time as people read it, without what rounding adds to frames' times.
std::string timeText(double seconds);
/// "0 to 10 s".
std::string rangeText(const TimeSpan& span);

/// Refuses times whose frames the engine can't number. `what` is to blame, `hint` says what to do.
void requireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint);

/// "a:b" of the command line, what is missing from it taken from the playback range.
TimeSpan spanOf(const rws::adaptor::headless::Scene& scene, const std::string& range);

/// Makes the playback range reach over `span`, as a run does that goes beyond it: what was
/// simulated must not be cut off by the next run. Tells the object of the result, and people when
/// it changed.
void stretchRange(SceneJob& job, const TimeSpan& span);
/// Makes the playback range what a take performed, so that the next run repeats it and no more. Of
/// the range `before` stays what other keys and recorded inputs reach over. Told as above.
void settleRange(SceneJob& job, const TimeSpan& before, const TimeSpan& performed);

/// `--fps`: a number or a fraction such as 30000/1001.
CLI::Option* addFrameRate(CLI::App& verb, std::optional<double>& rate);
/// Gives the scene another frame rate; keys that no longer fall on frames are told as a warning.
void setFrameRate(SceneJob& job, double rate);

/// Refuses a scene without a rig.
void requireRigs(SceneJob& job);

}  // namespace orv::app
