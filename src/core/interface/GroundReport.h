// What a rig meets in the scene, as it tells a user.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orv::rws {

/// The answer of a rig to kTellGround.
struct GroundReport {
  std::string title;               ///< what it is to the rig, such as "Ground"
  std::string declaredBy;          ///< the rig's node whose place tells it
  std::vector<std::string> nodes;  ///< that stand for it, each with its own mesh or those below
  int meshes = 0;
  std::int64_t triangles = 0;
  bool isStored = false;  ///< the rig keeps its own copy, whatever the scene holds
  std::string otherwise;  ///< what the rig does where there is no mesh
};

}  // namespace orv::rws
