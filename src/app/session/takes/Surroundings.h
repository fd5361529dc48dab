// What rigs stand on and read, by its content.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/session/takes/KeptTake.h"

namespace orv::util {
class CMesh;
}
namespace orv::rws::adaptor::headless {
class SceneNode;
}
namespace orv::rws::core {
class Instance;
}

namespace orv::app {

/// Tells whether the ground, a curve or whatever a rig hangs on has changed: a user's node that one
/// of the rig's hangs on counts with its place, its keys, those of the nodes above it, and all
/// meshes and curves below it but for what hangs on rigs. In single precision, as files have them.
class Surroundings {
 public:
  /// A node each, in the order of the rig's own.
  std::vector<KeptSurface> Of(const rws::core::Instance& rig);

 private:
  struct KnownMesh {
    std::weak_ptr<const util::CMesh> mesh;
    std::string hash;
  };

  std::string HashOf(const rws::adaptor::headless::SceneNode& node);
  const std::string& HashOf(const std::shared_ptr<const util::CMesh>& mesh);

  std::map<const util::CMesh*, KnownMesh> m_meshes;  ///< hashed once, since grounds are large
};

}  // namespace orv::app
