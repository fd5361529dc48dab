#include "plugins/release/firepower/CCollisionNode.h"

#include <algorithm>

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/GroundReport.h"
#include "util/CMesh_Box.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Vector = util::Vector3<double>;
using Matrix = util::Matrix<double>;

namespace {

/// Distance that is kept from a surface (m), so that rounding never puts a projectile through it.
constexpr double kSkin = 1e-5;
/// Looks at a stop from all surfaces, of which each may move its own way.
constexpr int kMostLooks = 4;

}  // namespace

CCollisionNode::CCollisionNode(CCamera& rig, const RigSceneNode& parent)
    : SurfaceNode(rig, "collision", &parent, util::CMesh_Box(0.2, 0.02, 0.2, {0.0, -0.5, 0.0})) {}

void CCollisionNode::BeginFrame(double time) {
  EndFrame();
  CNode* const node = GetNode();
  CNode* const parent = node && node->IsValid() ? node->GetParent() : nullptr;
  const bool withParent = parent && !IsOwn(*parent) && m_group.IsEmpty();
  if (parent) Core().ReleaseNode(static_cast<CExtendable*>(parent));
  if (!m_group.IsEmpty()) {
    m_group.BeginFrame(time);
    if (m_group.HasStill()) m_surfaces.push_back({nullptr, -1, Matrix(), false});
    int moving = 0;
    for (const SurfaceGroup::Member& member : m_group.GetMoving())
      Add(nullptr, moving++, member.node, time);
  }
  bool isParent = withParent;
  ForEachSurface(withParent, [&](CNode* surface) {
    Gather(*surface, time, !isParent);
    isParent = false;
  });
}

void CCollisionNode::Add(CSnapshot_Mesh* mesh, int moving, CNode* node, double time) {
  const Matrix now = PoseOf(node, time);
  const Matrix before = PoseOf(node, util::frameBefore(time, Core().GetFrameDuration()));
  const bool moves = now != before && before.affineInverse()[15] != 0.0;
  m_surfaces.push_back({mesh, moving, moves ? now * before.affineInverse() : Matrix(), moves});
  m_anyMoves = m_anyMoves || moves;
}

void CCollisionNode::Gather(CNode& surface, double time, bool withChildren) {
  if (IsOwn(surface)) return;
  if (CSnapshot_Mesh* const mesh = Core().GetSnapshotMesh(&surface, time)) {
    Add(mesh, -1, &surface, time);
    return;
  }
  for (int i = 0; withChildren && i < surface.GetChildCount(); ++i) {
    CNode* const child = surface.GetChild(i);
    if (!child) continue;
    Gather(*child, time, false);
    Core().ReleaseNode(static_cast<CExtendable*>(child));
  }
}

void CCollisionNode::EndFrame() {
  for (const Surface& surface : m_surfaces) Core().ReleaseSnapshotMesh(surface.mesh);
  m_surfaces.clear();
  m_group.EndFrame();
  m_anyMoves = false;
}

void CCollisionNode::ReleaseSurfaces() {
  EndFrame();
  m_group.Release();
}

std::intptr_t CCollisionNode::TellGround(GroundReport& report) const {
  report.title = "Target";
  report.otherwise = "none: projectiles meet nothing";
  Describe(Core().GetTime(), report);
  return 1;
}

bool CCollisionNode::Intersect(const Surface& surface, const Vector& origin,
                               const Vector& direction, double reach, RayHit& hit) const {
  if (surface.mesh) return surface.mesh->Intersect(origin, direction, reach, hit);
  if (surface.moving < 0) return m_group.IntersectStill(origin, direction, reach, hit);
  const auto index = static_cast<std::size_t>(surface.moving);
  if (BoxTree::Enter(m_group.GetMovingBoxes()[index], origin, BoxTree::Inverse(direction), reach) <
      0.0)
    return false;
  CSnapshot_Mesh* const mesh = m_group.SnapshotOfMoving(index);
  return mesh && mesh->Intersect(origin, direction, reach, hit);
}

/// A surface that moves meets a projectile on its way relative to the surface.
bool CCollisionNode::MeetNearest(const Vector& from, const Vector& to, bool frame, double skin,
                                 SurfaceHit& hit) const {
  bool found = false;
  for (const Surface& surface : m_surfaces) {
    const Vector origin = frame && surface.moves ? surface.move.transformPoint(from) : from;
    const Vector way = to - origin;
    const double length = way.length();
    if (!(length > 0.0)) continue;
    const Vector direction = way / length;
    RayHit met;
    const double reach = (found ? length * hit.part : length) + skin;
    if (!Intersect(surface, origin, direction, reach, met)) continue;
    const double part = std::min(met.distance / length, 1.0);
    if (found && part >= hit.part) continue;
    found = true;
    hit.part = part;
    hit.stop = origin + direction * std::max(0.0, met.distance - kSkin);
    hit.normal = direction.dot(met.normal) > 0.0 ? -met.normal : met.normal;
  }
  return found;
}

bool CCollisionNode::Meet(const Vector& from, const Vector& to, bool frame, SurfaceHit& hit) const {
  if (!MeetNearest(from, to, frame, kSkin, hit)) return false;
  // The place where one stops it may lie behind another that moves differently, which then pushes
  // it out.
  SurfaceHit other;
  for (int i = 0; frame && m_anyMoves && i < kMostLooks; ++i) {
    if (!MeetNearest(from, hit.stop, frame, 0.5 * kSkin, other)) break;
    const double behind = (other.stop - hit.stop).dot(other.normal) + kSkin;
    hit.stop += other.normal * std::max(behind, 0.0);
  }
  return true;
}

}  // namespace orv::rws::addon
