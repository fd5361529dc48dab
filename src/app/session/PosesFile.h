// World poses as a table.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app {

class Monitor;
struct TimeSpan;

struct PosesResult {
  long frames = 0;
  bool cancelled = false;
  std::string error;  ///< why the file was not written; empty when it was
};

/// Writes `path` as CSV with a row per frame of `span` and node: time (s), name, world translation
/// (m), unit quaternion, scale. Without `only` all nodes count. Whole or not at all.
PosesResult WritePoses(const rws::adaptor::headless::Scene& scene,
                       const std::vector<const rws::adaptor::headless::SceneNode*>& only,
                       const TimeSpan& span, const std::string& path, const Monitor& monitor);

}  // namespace orv::app
