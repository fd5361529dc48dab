// What rigs meet in a scene, told to a user.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

class SceneJob;

/// What the rig meets if a take begins now, as it tells it itself: title, nodes, meshes, triangles,
/// and what counts where there are none. Null for a rig that meets nothing by its nature.
nlohmann::ordered_json groundJson(rws::core::Instance& rig);
/// The same in one line, without the rig's name; empty for such a rig.
std::string groundText(const nlohmann::ordered_json& ground);

/// What each rig of a scene meets, to be compared with what it meets after a change.
class GroundWatch {
 public:
  explicit GroundWatch(SceneJob& job);
  /// Tells, for each rig that meets something else than before or that tells it by `node`, what it
  /// meets now; also as "grounds" of the result.
  void tellChanges(const std::string& node) const;

 private:
  SceneJob& m_job;
  std::string m_before;  ///< an array of groundJson, in the rigs' order
};

}  // namespace orv::app
