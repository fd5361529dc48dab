#include "plugins/release/4wheelerextended/CGravityDirectionNode.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/interface/CCamera.h"
#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/GroundReport.h"
#include "plugins/common/SnapshotGuard.h"
#include "plugins/common/ground/GroundShapePool.h"
#include "plugins/release/4wheelerextended/CarSettings.h"
#include "plugins/release/4wheelerextended/DisplayMeshes.h"

namespace orv::rws::addon {

using Vector = CGravityDirectionNode::Vector;
using Matrix = CGravityDirectionNode::Matrix;

namespace {

/// Half the side of the ground where there is no surface at all (m).
constexpr double kDefaultGround = 1000.0;

util::CMesh DefaultGround() {
  util::CMesh quad;
  for (const auto& [x, z] : {std::pair{-1.0, -1.0}, {-1.0, 1.0}, {1.0, 1.0}, {1.0, -1.0}})
    quad.vertices.push_back({x * kDefaultGround, 0.0, z * kDefaultGround});
  quad.faces = {0, 1, 2, 2, 3, 0};
  return quad;
}

}  // namespace

CGravityDirectionNode::CGravityDirectionNode(CCamera& rig, CarSettings& settings,
                                             const RigSceneNode& parent, GroundShapePool& shapes)
    : SurfaceNode(rig, "GravityDirectionMesh", &parent, CMesh_GravityDirection()),
      m_settings(settings),
      m_shapes(shapes) {}

CGravityDirectionNode::~CGravityDirectionNode() = default;

// --- capture ---

void CGravityDirectionNode::RefuseUnsupportedSurface(CNode& parent) {
  std::string name;
  parent.Extension(kReadName, &name, nullptr);
  Core().MessageBox(
      "UNSUPPORTED SURFACE TYPE",
      "Support for this kind of surface has not yet been implemented for FAST RAYCAST for this "
      "adaptor. Fast raycast is therefore cancelled.\nContact support for more information on "
      "this issue.\n\nSurface: " +
          name,
      kButtonsOk);
  m_settings.bUseStaticMesh = false;
  // Meant: many rays through the host are slow.
  m_settings.iRayMultiplier = 1;
  // A stored mesh goes on carrying the car, by its tree.
  BuildTree();
  Core().RefreshConfig();
}

/// The parent's mesh in its own space, or of a parent that is none what stands below it, which
/// needs no pose of its own then.
util::CMesh CGravityDirectionNode::ParentMesh(CNode& parent, double time, Matrix& pose,
                                              bool& isMesh) {
  util::CMesh mesh = MeshOf(&parent, time, isMesh);
  pose = m_group.IsEmpty() ? PoseOf(&parent, time) : Matrix();
  if (isMesh || m_group.IsEmpty()) return mesh;
  isMesh = true;
  return m_group.Join(false);
}

void CGravityDirectionNode::CaptureSurfaces(double time) {
  CInterface& core = Core();
  m_parentIsOwn = false;
  if (HasStoredMesh() && !m_settings.bUseStaticMesh)
    m_group.Release();
  else
    CaptureGroup(time);
  Surface ground;
  CNode* const parent = GetNode() && GetNode()->IsValid() ? GetNode()->GetParent() : nullptr;
  if (parent) {
    m_parentIsOwn = IsOwn(*parent);
    bool isMesh = false;
    // Whichever parent it is, and also where a stored mesh or the children are the ground: so the
    // user hears of a gravity node that hangs on the wrong one.
    if (m_settings.bUseStaticMesh) {
      ground.mesh = ParentMesh(*parent, time, ground.pose, isMesh);
      if (ground.mesh.vertices.empty()) RefuseUnsupportedSurface(*parent);
      if (m_parentIsOwn) ground = {};
    }
    core.ReleaseNode(static_cast<CExtendable*>(parent));
  }

  mParentMesh.clear();
  if (HasStoredMesh()) {
    m_group.Release();
    mParentMesh.push_back(mBulletGroundMesh);
    m_parentIsOwn = false;
  } else {
    ForEachSurface(!m_parentIsOwn,
                   [&](CNode* surface) { mParentMesh.push_back(PoseOf(surface, time)); });
  }
  // The default ground of the fast caster stands for no node.
  if (mParentMesh.empty() && m_settings.bUseStaticMesh) mParentMesh.emplace_back();
  mParentMesh_inv.clear();
  for (const Matrix& pose : mParentMesh) mParentMesh_inv.push_back(pose.affineInverse());

  m_caster = Caster::kHost;
  if (m_settings.bUseStaticMesh)
    BuildFastGround(time, std::move(ground));
  else if (HasStoredMesh())
    m_caster = Caster::kTree;
  if (m_caster != Caster::kHost) m_group.Release();
}

void CGravityDirectionNode::ReleaseSurfaces() {
  m_fast.reset();
  m_group.Release();
}

void CGravityDirectionNode::BuildFastGround(double time, Surface parent) {
  m_fast = FastGround::Create(m_settings.fGravity);
  if (!m_fast) {
    Core().MessageBox("Error", "Physics World not created", kButtonsOk | kIconCritical);
    return;
  }
  m_caster = Caster::kFast;
  CCamera& rig = GetRig();
  const auto add = [&](const std::string& name, util::CMesh mesh, const Matrix& pose) {
    m_fast->Add(std::make_unique<CollisionObjects>(
        rig, name, pose, m_shapes.Get(std::move(mesh), pose.rowLengths())));
  };
  if (HasStoredMesh()) {
    add("StoredGround", cMesh_storedGroundMesh, mBulletGroundMesh);
    return;
  }
  // The parent goes in last.
  std::vector<Surface> surfaces;
  bool anySurface = false;
  ForEachSurface(!m_parentIsOwn, [&](CNode* surface) {
    bool isMesh = false;
    const bool isParent = !anySurface && !parent.mesh.vertices.empty();
    anySurface = true;
    if (isParent)
      surfaces.push_back(std::move(parent));
    else
      surfaces.push_back({MeshOf(surface, time, isMesh), PoseOf(surface, time)});
  });
  if (!anySurface) add("DefaultGround", DefaultGround(), Matrix());
  if (!m_parentIsOwn && !surfaces.empty())
    std::rotate(surfaces.begin(), surfaces.begin() + 1, surfaces.end());
  for (std::size_t i = 0; i < surfaces.size(); ++i)
    add("Surface" + std::to_string(i), std::move(surfaces[i].mesh), surfaces[i].pose);
}

// --- frames ---

void CGravityDirectionNode::BeginFrame(double time) {
  EndFrame();
  if (m_caster != Caster::kHost) return;
  m_frameGroups = m_group.IsEmpty() ? 0 : 1;
  if (m_frameGroups > 0) m_group.BeginFrame(time);
  ForEachSurface(!m_parentIsOwn && m_frameGroups == 0, [&](CNode* surface) {
    if (CSnapshot_Mesh* const mesh = Core().GetSnapshotMesh(surface, time))
      m_frameMeshes.push_back(mesh);
  });
}

void CGravityDirectionNode::EndFrame() {
  for (CSnapshot_Mesh* mesh : m_frameMeshes) Core().ReleaseSnapshotMesh(mesh);
  m_frameMeshes.clear();
  m_group.EndFrame();
  m_frameGroups = 0;
}

int CGravityDirectionNode::GetSurfaceCount() const {
  return m_caster == Caster::kHost ? m_frameGroups + static_cast<int>(m_frameMeshes.size()) : 1;
}

bool CGravityDirectionNode::IsKnown(int index) const {
  return static_cast<std::size_t>(index) < mParentMesh_inv.size();
}

bool CGravityDirectionNode::Cast(int surface, const Vector& origin, const Vector& direction,
                                 double length, GroundHit& hit) {
  const auto index = static_cast<std::size_t>(surface);
  if (m_caster == Caster::kFast) {
    // Its bodies stand in world space, so its rays do too.
    if (!m_fast->CastRay(origin, direction, length, hit.distance, hit.normal)) return false;
    hit.point = origin + direction * hit.distance;
    return true;
  }
  if (m_caster == Caster::kHost) {
    RayHit found;
    if (surface < m_frameGroups ? !m_group.Intersect(origin, direction, length, found)
                                : !FrameMesh(surface).Intersect(origin, direction, length, found))
      return false;
    hit = {found.distance, found.point, found.normal};
    return true;
  }
  const Matrix& inverse = mParentMesh_inv[index];
  const Vector local = inverse.transformVector(direction).normalized();
  double distance = 0.0;
  Vector normal;
  if (!m_tree || !m_tree->Intersect(inverse.transformPoint(origin), local, distance, normal))
    return false;
  const Vector way = mParentMesh[index].transformVector(local * distance);
  hit.distance = way.length();
  hit.point = origin + way;
  // Normals go by the inverse transpose, so that a stretched ground keeps them upright.
  for (int i = 0; i < 3; ++i) hit.normal[i] = inverse.axisRow(i).dot(normal);
  hit.normal.normalize();
  return true;
}

bool CGravityDirectionNode::PrepareNear(const Vector& centre, double reach) {
  if (m_frameGroups > 0 && !m_group.PrepareNear(centre, reach) && m_frameMeshes.empty())
    return false;
  if (m_caster != Caster::kFast) return true;
  m_fast->Gather(centre, reach, m_near);
  return !m_near.IsEmpty();
}

bool CGravityDirectionNode::CastNear(int surface, const Vector& origin, const Vector& direction,
                                     double length, GroundHit& hit) {
  if (surface < m_frameGroups) {
    RayHit found;
    if (!m_group.IntersectNear(origin, direction, length, found)) return false;
    hit = {found.distance, found.point, found.normal};
    return true;
  }
  if (m_caster != Caster::kFast) return Cast(surface, origin, direction, length, hit);
  if (!m_near.Cast(origin, direction, length, hit.distance, hit.normal)) return false;
  hit.point = origin + direction * hit.distance;
  return true;
}

// --- what a user is told ---

std::intptr_t CGravityDirectionNode::TellGround(GroundReport& report) const {
  report.title = "Ground";
  report.otherwise = m_settings.bUseStaticMesh
                         ? "none: the plane y = 0 carries the car, up to 1000 m from the origin"
                         : "none: the plane y = 0 carries the car";
  if (!HasStoredMesh()) {
    Describe(Core().GetTime(), report);
    return 1;
  }
  report.isStored = true;
  report.meshes = 1;
  report.triangles = static_cast<std::int64_t>(cMesh_storedGroundMesh.faces.size() / 3);
  return 1;
}

// --- stored mesh ---

bool CGravityDirectionNode::StoreGroundMesh() {
  CInterface& core = Core();
  const auto refuse = [&](const char* text) {
    core.MessageBox("Error", text, kButtonsOk | kIconCritical);
    DropStoredMesh();
    return false;
  };
  CNode* const parent = GetNode() && GetNode()->IsValid() ? GetNode()->GetParent() : nullptr;
  if (!parent) return refuse("No ground mesh available");
  if (IsOwn(*parent)) {
    core.ReleaseNode(static_cast<CExtendable*>(parent));
    return refuse("No ground mesh available");
  }
  const double now = core.GetTime();
  bool isMesh = false;
  CaptureGroup(now);
  Matrix pose;
  util::CMesh mesh = ParentMesh(*parent, now, pose, isMesh);
  m_group.Release();
  core.ReleaseNode(static_cast<CExtendable*>(parent));
  if (!isMesh) return refuse("Surface not a mesh");
  if (mesh.faces.empty()) return refuse("Mesh Invalid");
  cMesh_storedGroundMesh = std::move(mesh);
  mBulletGroundMesh = pose;
  BuildTree();
  return true;
}

void CGravityDirectionNode::DropStoredMesh() {
  cMesh_storedGroundMesh = util::CMesh();
  m_tree.reset();
}

void CGravityDirectionNode::BuildTree() {
  m_tree.reset();
  if (!m_settings.bUseStaticMesh && HasStoredMesh())
    m_tree = std::make_unique<MeshOctreeNode>(cMesh_storedGroundMesh);
}

}  // namespace orv::rws::addon
