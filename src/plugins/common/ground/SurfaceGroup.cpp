#include "plugins/common/ground/SurfaceGroup.h"

#include <algorithm>

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "plugins/common/SnapshotGuard.h"

namespace orv::rws::addon {

using Matrix = SurfaceGroup::Matrix;
using util::Box;

namespace {

/// Of a place in the world, over its distance from the origin.
constexpr double kRounding = 1e-9;

Matrix PoseOf(CInterface& core, CNode* node, double time) {
  Matrix pose;
  const SnapshotGuard snapshot(core, node, time);
  if (snapshot) snapshot->GetMatrix(pose.data());
  return pose;
}

/// The box round a box that a matrix moves, with room for the rounding of whoever looks into it by
/// other sums.
Box MovedBox(const Box& box, const Matrix& by) {
  Box moved;
  for (int corner = 0; corner < 8; ++corner)
    moved.add(
        by.transformPoint({corner & 1 ? box.high.x : box.low.x, corner & 2 ? box.high.y : box.low.y,
                           corner & 4 ? box.high.z : box.low.z}));
  const double slack = kRounding * (1.0 + moved.low.length() + moved.high.length());
  moved.low -= SurfaceGroup::Vector(slack, slack, slack);
  moved.high += SurfaceGroup::Vector(slack, slack, slack);
  return moved;
}

}  // namespace

MeshExtent ExtentOf(CSnapshot_Mesh& mesh) {
  mesh.Triangulate();
  MeshExtent extent;
  if (mesh.Extension(kMeshExtent, &extent, nullptr) <= 0) extent.Add(mesh.GetMesh());
  return extent;
}

// --- the members ---

void SurfaceGroup::Capture(CInterface& core, const std::vector<CNode*>& nodes, double time) {
  Release();
  m_core = &core;
  m_time = time;
  std::int32_t order = 0;
  for (CNode* node : nodes) {
    Member member{node, order++, {}, PoseOf(core, node, time), nullptr};
    if (CSnapshot_Mesh* const mesh = core.GetSnapshotMesh(node, time)) {
      const MeshExtent extent = ExtentOf(*mesh);
      if (extent.triangles > 0) member.own = extent.box;
      core.ReleaseSnapshotMesh(mesh);
    }
    if (member.own.isEmpty()) {
      core.ReleaseNode(static_cast<CExtendable*>(node));
      continue;
    }
    // A host that can't tell is asked for the pose in every frame.
    Set& set = node->Extension(kMayMove, nullptr, nullptr) < 0 ? m_still : m_moving;
    set.boxes.push_back(MovedBox(member.own, member.pose));
    set.members.push_back(std::move(member));
  }
  m_still.tree.Build(m_still.boxes);
  m_moving.tree.Build(m_moving.boxes);
}

void SurfaceGroup::Release() {
  EndFrame();
  for (Set* set : {&m_still, &m_moving}) {
    for (const Member& member : set->members)
      m_core->ReleaseNode(static_cast<CExtendable*>(member.node));
    *set = {};
  }
  m_core = nullptr;
}

util::CMesh SurfaceGroup::Join(bool still) const {
  std::vector<const Member*> members;
  for (const Set* set : {&m_still, &m_moving})
    for (const Member& member : set->members)
      if (set == &m_still || !still) members.push_back(&member);
  std::sort(members.begin(), members.end(),
            [](const Member* a, const Member* b) { return a->order < b->order; });
  util::CMesh joined;
  for (const Member* member : members) {
    CSnapshot_Mesh* const snapshot = m_core->GetSnapshotMesh(member->node, m_time);
    if (!snapshot) continue;
    snapshot->Triangulate();
    const util::CMesh mesh = snapshot->GetMesh();
    m_core->ReleaseSnapshotMesh(snapshot);
    const auto first = static_cast<std::int32_t>(joined.vertices.size());
    const auto count = static_cast<std::int32_t>(mesh.vertices.size());
    for (const Vector& vertex : mesh.vertices)
      joined.vertices.push_back(member->pose.transformPoint(vertex));
    // What points outside its mesh must not point into the next one's.
    for (const std::int32_t index : mesh.faces)
      joined.faces.push_back(index >= 0 && index < count ? first + index : -1);
  }
  return joined;
}

// --- frames ---

void SurfaceGroup::BeginFrame(double time) {
  EndFrame();
  m_time = time;
  bool moved = false;
  for (std::size_t i = 0; i < m_moving.members.size(); ++i) {
    Member& member = m_moving.members[i];
    const Matrix pose = PoseOf(*m_core, member.node, time);
    if (pose == member.pose) continue;
    member.pose = pose;
    m_moving.boxes[i] = MovedBox(member.own, pose);
    moved = true;
  }
  if (moved) m_moving.tree.Refit(m_moving.boxes);
}

void SurfaceGroup::EndFrame() {
  if (m_snapshots.empty()) return;
  for (CSnapshot_Mesh* snapshot : m_snapshots) m_core->ReleaseSnapshotMesh(snapshot);
  m_snapshots.clear();
  for (Set* set : {&m_still, &m_moving})
    for (Member& member : set->members) member.snapshot = nullptr;
}

CSnapshot_Mesh* SurfaceGroup::SnapshotOf(Member& member) {
  if (!member.snapshot) {
    member.snapshot = m_core->GetSnapshotMesh(member.node, m_time);
    if (member.snapshot) m_snapshots.push_back(member.snapshot);
  }
  return member.snapshot;
}

// --- rays ---

void SurfaceGroup::Look(Member& member, const Vector& origin, const Vector& direction, Hit& best,
                        RayHit& hit) {
  CSnapshot_Mesh* const mesh = SnapshotOf(member);
  RayHit met;
  if (!mesh || !mesh->Intersect(origin, direction, best.limit, met)) return;
  // Of equals the first member's counts, in whatever order the members are asked.
  if (best.order >= 0 && met.distance == best.limit && member.order > best.order) return;
  hit = met;
  best = {met.distance, member.order};
}

void SurfaceGroup::Cast(Set& set, const Vector& origin, const Vector& direction, Hit& best,
                        RayHit& hit) {
  set.tree.Cross(origin, direction, best.limit, m_crossings);
  for (const BoxTree::Crossing& crossing : m_crossings) {
    if (crossing.enter > best.limit) break;
    Look(set.members[static_cast<std::size_t>(crossing.index)], origin, direction, best, hit);
  }
}

bool SurfaceGroup::Intersect(const Vector& origin, const Vector& direction, double maxDistance,
                             RayHit& hit) {
  Hit best{maxDistance};
  Cast(m_still, origin, direction, best, hit);
  Cast(m_moving, origin, direction, best, hit);
  return best.order >= 0;
}

bool SurfaceGroup::IntersectStill(const Vector& origin, const Vector& direction, double maxDistance,
                                  RayHit& hit) {
  Hit best{maxDistance};
  Cast(m_still, origin, direction, best, hit);
  return best.order >= 0;
}

bool SurfaceGroup::PrepareNear(const Vector& centre, double reach) {
  const Vector half(reach, reach, reach);
  m_near.clear();
  for (Set* set : {&m_still, &m_moving}) {
    m_found.clear();
    set->tree.FindNear({centre - half, centre + half}, m_found);
    for (const std::int32_t index : m_found)
      m_near.push_back(&set->members[static_cast<std::size_t>(index)]);
  }
  return !m_near.empty();
}

bool SurfaceGroup::IntersectNear(const Vector& origin, const Vector& direction, double maxDistance,
                                 RayHit& hit) {
  Hit best{maxDistance};
  for (Member* member : m_near) Look(*member, origin, direction, best, hit);
  return best.order >= 0;
}

}  // namespace orv::rws::addon
