#include "adaptor/common/HostSnapshot_Mesh.h"

#include "adaptor/common/HostNode.h"
#include "util/MeshRays.h"

namespace orv::rws::adaptor {

using util::Vector3;

namespace {

/// The image of `p` under an affine map: transformPoint() without its division by 1.
Vector3<double> TransformAffine(const util::Matrix<double>& m, const Vector3<double>& p) {
  return {p.x * m[0] + p.y * m[4] + p.z * m[8] + m[12],
          p.x * m[1] + p.y * m[5] + p.z * m[9] + m[13],
          p.x * m[2] + p.y * m[6] + p.z * m[10] + m[14]};
}

}  // namespace

util::CMesh HostSnapshot_Mesh::GetMesh() {
  const std::shared_ptr<const util::CMesh> mesh = m_node->GetMesh(m_time);
  return mesh ? *mesh : util::CMesh();
}

std::intptr_t HostSnapshot_Mesh::Extension(int code, void* a, void* b) {
  if (code != kMeshExtent || !a) return Base::Extension(code, a, b);
  if (const std::shared_ptr<const util::CMesh> mesh = m_node->GetMesh(m_time))
    static_cast<MeshExtent*>(a)->Add(*mesh);
  return 1;
}

void HostSnapshot_Mesh::GetExtensions(std::vector<int>& out) {
  Base::GetExtensions(out);
  out.push_back(kMeshExtent);
}

void HostSnapshot_Mesh::Place() {
  m_world = m_node->GetWorldPose(m_time);
  m_inverse = m_world.affineInverse();
  m_rays = m_node->GetRays(m_time);
  m_placed = true;
}

bool HostSnapshot_Mesh::Intersect(const Vector3<double>& origin, const Vector3<double>& direction,
                                  double maxDistance, RayHit& hit) {
  const double length = direction.length();
  if (!(length > 0.0)) return false;
  if (!m_placed) Place();
  if (!m_rays) return false;
  if (m_inverse[15] == 0.0) return false;  // flattened by a scale of 0: nothing to hit
  // An affine map keeps the ratio along a line, so a distance along the unit direction stays what
  // it is in the node's space.
  const Vector3<double> unit = direction / length;
  util::MeshRays::Hit found;
  if (!m_rays->intersect(TransformAffine(m_inverse, origin), m_inverse.transformVector(unit),
                         maxDistance, found))
    return false;
  hit.distance = found.t;
  hit.point = origin + unit * found.t;
  hit.normal =
      m_world.transformVector(found.edge1).cross(m_world.transformVector(found.edge2)).normalized();
  hit.triangle = found.triangle;
  return true;
}

}  // namespace orv::rws::adaptor
