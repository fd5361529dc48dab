// Which rigs a run steps, and over which time.
#pragma once

#include <string>
#include <utility>
#include <vector>

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
  /// Without names every row stays as it is.
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

/// Refuses times whose frames the engine can't number. `what` is to blame, `hint` says what to do.
void requireFrameNumbers(const TimeSpan& span, double frameRate, const std::string& what,
                         const std::string& hint);

/// "a:b" of the command line, what is missing from it taken from the playback range.
TimeSpan spanOf(const rws::adaptor::headless::Scene& scene, const std::string& range);

/// Refuses a scene without a rig that could be stepped.
void requireRigs(SceneJob& job);

}  // namespace orv::app
