// What of a scene rays meet, and what nodes stand on.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "util/Box.h"
#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::util {
class MeshRays;
}
namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class SceneNode;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

/// The visible meshes of a scene as they stand at one time; it is made anew when something moves.
/// World space (m).
class SceneSurfaces {
 public:
  using SceneNode = rws::adaptor::headless::SceneNode;

  struct Hit {
    double distance = 0.0;  ///< in lengths of the direction
    util::Vector3<double> point;
    const SceneNode* node = nullptr;
  };

  /// Without these nodes, what hangs below them, and the other nodes of the rigs that they belong
  /// to.
  SceneSurfaces(rws::adaptor::headless::HeadlessAdaptor& host, double time,
                const std::vector<SceneNode*>& without);
  ~SceneSurfaces();
  /// The nearest surface in front of the origin; either side of it counts.
  bool Meet(const util::Vector3<double>& origin, const util::Vector3<double>& direction,
            Hit& hit) const;
  /// All that are visible and not left out, meshes or not.
  const std::vector<const SceneNode*>& GetNodes() const { return m_nodes; }

 private:
  struct Surface {
    const SceneNode* node;
    util::Matrix<double> inverse;  ///< from the world
    std::shared_ptr<const util::MeshRays> rays;
  };

  std::vector<Surface> m_surfaces;
  std::vector<const SceneNode*> m_nodes;
};

/// The lowest points of the visible meshes of a node and what hangs below it, some dozens where
/// there are many, and the box around all; the node's own place where there is no mesh.
struct LowestPoints {
  std::vector<util::Vector3<double>> points;
  util::Box box;
};
LowestPoints FindLowest(const rws::adaptor::headless::SceneNode& node, double time);

/// How far a node is to rise (m; below 0: fall) so that its lowest points stand on what lies under
/// them, or it on the plane y = 0 where nothing does; a rig that knows its own height over the
/// ground stands on that. Nothing where there is neither.
std::optional<double> FindRise(rws::core::CoreImplementation& core,
                               rws::adaptor::headless::HeadlessAdaptor& host,
                               const SceneSurfaces& surfaces,
                               rws::adaptor::headless::SceneNode& node, double time);

}  // namespace orv::app
