#include "plugins/common/ground/GroundShapePool.h"

#include <algorithm>
#include <utility>

namespace orv::rws::addon {

std::shared_ptr<const triMeshStorage> GroundShapePool::Get(util::CMesh mesh,
                                                           const util::Vector3<double>& scale) {
  m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(),
                                 [](const Entry& entry) { return entry.shape.expired(); }),
                  m_entries.end());
  for (const Entry& entry : m_entries)
    if (entry.scale == scale && entry.mesh == mesh)
      if (auto shape = entry.shape.lock()) return shape;
  auto shape = std::make_shared<const triMeshStorage>(mesh, scale, SurfaceMotion::kFixed);
  m_entries.push_back({std::move(mesh), scale, shape});
  return shape;
}

}  // namespace orv::rws::addon
