#include "plugins/common/ground/triMeshStorage.h"

#include <btBulletCollisionCommon.h>

#include <algorithm>
#include <cmath>

#include "util/CMesh.h"

namespace orv::rws::addon {

static_assert(sizeof(btScalar) == 8, "the ground wants Bullet's double precision build");

triMeshStorage::triMeshStorage(const util::CMesh& mesh, const util::Vector3<double>& scale,
                               SurfaceMotion motion) {
  for (const auto& v : mesh.vertices) m_vertices.push_back({v.x, v.y, v.z, 0.0});
  const auto isGood = [&](std::int32_t index) {
    if (index < 0 || index >= static_cast<std::int32_t>(m_vertices.size())) return false;
    const auto& v = m_vertices[static_cast<std::size_t>(index)];
    return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
  };
  for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
    const auto first = mesh.faces.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::all_of(first, first + 3, isGood)) m_indices.insert(m_indices.end(), first, first + 3);
  }
  if (m_indices.empty()) return;
  m_array = std::make_unique<btTriangleIndexVertexArray>(
      static_cast<int>(m_indices.size() / 3), m_indices.data(), kIndexStride,
      static_cast<int>(m_vertices.size()), m_vertices.front().data(), kVertexStride);
  if (motion == SurfaceMotion::kFixed)
    m_shape = std::make_unique<btBvhTriangleMeshShape>(m_array.get(), true, true);
  else
    m_shape = std::make_unique<btConvexTriangleMeshShape>(m_array.get(), true);
  m_shape->setLocalScaling(btVector3(scale.x, scale.y, scale.z));
  btVector3 low, high;
  m_shape->getAabb(btTransform::getIdentity(), low, high);
  const btVector3 extents = high - low - btVector3(2, 2, 2) * m_shape->getMargin();
  // The shape's margin is no extent of the surface's own; what rounding leaves of it isn't either.
  m_extent = 1.0;
  for (int i = 0; i < 3; ++i) m_extent *= extents[i] > 1e-9 ? extents[i] : 0.0;
}

triMeshStorage::~triMeshStorage() = default;

btCollisionShape* triMeshStorage::GetShape() const {
  return m_shape.get();
}

}  // namespace orv::rws::addon
