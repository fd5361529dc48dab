// Collision shapes that many rigs on one ground share.
#pragma once

#include <memory>
#include <vector>

#include "plugins/common/ground/triMeshStorage.h"
#include "util/CMesh.h"

namespace orv::rws::addon {

/// Gives rigs that stand on equal ground one shape: a hundred cars build, and keep in the caches,
/// one tree and not a hundred. Owned by the rigs' factory. A shape lives as long as somebody uses
/// it; rays don't change it.
class GroundShapePool {
 public:
  /// The shape of `mesh` stretched by `scale`, for a surface that doesn't move.
  std::shared_ptr<const triMeshStorage> Get(util::CMesh mesh, const util::Vector3<double>& scale);

 private:
  struct Entry {
    util::CMesh mesh;
    util::Vector3<double> scale;
    std::weak_ptr<const triMeshStorage> shape;
  };
  std::vector<Entry> m_entries;
};

}  // namespace orv::rws::addon
