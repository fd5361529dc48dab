#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"

#include <utility>

#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"
#include "plugins/release/crawlertracks/TrackMeshes.h"

namespace orv::rws::addon {

using Matrix = CrawlerTracks::Matrix;
using Vector = CrawlerTracks::Vector;

namespace {

// Places of a new rig's nodes in the Frame (m): the belt of a wheel stands on the ground.
const Vector kDriveWheelPlace(0.0, 0.56, 0.0);
const Vector kTrackDirectionPlace(0.0, 1.3, 0.0);
const Vector kGravityPlace(-0.8, 0.6, 0.0);
const Vector kTemplatePlace(0.8, 0.03, 0.0);

/// Z up, so that -Z falls.
Matrix FallingAt(const Vector& place) {
  Matrix matrix;
  matrix.setAxisRow(1, {0.0, 0.0, -1.0});
  matrix.setAxisRow(2, {0.0, 1.0, 0.0});
  matrix.setTranslation(place);
  return matrix;
}

}  // namespace

// --- the ground ---

BeltGroundNode::BeltGroundNode(CCamera& rig, const RigSceneNode& frame)
    : SurfaceNode(rig, "GravityDirection", &frame, CrawlerGravityMesh()) {}

bool BeltGroundNode::HasMesh(double time) const {
  bool any = false;
  ForEachSurface(true, [&](CNode* surface) {
    if (any || IsOwn(*surface)) return;
    CSnapshot_Mesh* const mesh = Core().GetSnapshotMesh(surface, time);
    any = mesh != nullptr;
    Core().ReleaseSnapshotMesh(mesh);
  });
  if (any) return true;
  const std::vector<CNode*> below = FindBelow(time);
  for (CNode* node : below) Core().ReleaseNode(static_cast<CExtendable*>(node));
  return !below.empty();
}

std::vector<std::shared_ptr<const triMeshStorage>> BeltGroundNode::CaptureShapes(
    double time, double scale, GroundShapePool& pool) {
  CaptureGroup(time);
  std::vector<std::shared_ptr<const triMeshStorage>> shapes;
  const auto add = [&](util::CMesh mesh, const Vector& size) {
    const bool isEmpty = mesh.faces.empty();
    shapes.push_back(isEmpty ? nullptr : pool.Get(std::move(mesh), size / scale));
  };
  bool isMesh = false;
  if (m_group.HasStill()) add(m_group.Join(true), Vector(1.0, 1.0, 1.0));
  for (const SurfaceGroup::Member& member : m_group.GetMoving())
    add(MeshOf(member.node, time, isMesh), PoseOf(member.node, time).rowLengths());
  ForEachSurface(m_group.IsEmpty(), [&](CNode* surface) {
    add(IsOwn(*surface) ? util::CMesh() : MeshOf(surface, time, isMesh),
        PoseOf(surface, time).rowLengths());
  });
  return shapes;
}

void BeltGroundNode::ReadPoses(double time, std::vector<Matrix>& poses) const {
  poses.clear();
  if (m_group.HasStill()) poses.emplace_back();
  for (const SurfaceGroup::Member& member : m_group.GetMoving())
    poses.push_back(PoseOf(member.node, time));
  ForEachSurface(m_group.IsEmpty(),
                 [&](CNode* surface) { poses.push_back(PoseOf(surface, time)); });
}

std::intptr_t BeltGroundNode::TellGround(GroundReport& report) const {
  report.title = "Ground";
  report.otherwise = "none: the belt hangs on its wheels";
  Describe(Core().GetTime(), report);
  return 1;
}

// --- life ---

CrawlerTracks::CrawlerTracks(const CreationRecord& record, GroundShapePool& shapes)
    : Rig(record),
      m_shapes(shapes),
      m_frame(*this, "Frame", nullptr, CrawlerFrameMesh()),
      m_trackDirection(*this, "TrackDirection", &m_frame, TrackDirectionMesh()),
      m_gravityDirection(*this, m_frame),
      m_templateStep(*this, "TemplateStep", &m_frame, TemplateStepMesh()),
      m_caterpillar(*this, "caterpillar", &m_frame, util::CMesh()) {
  // Frame and wheels stay: hiding them would hide the steps, and what the user hangs on them.
  const std::vector<RigSceneNode*> helpers{&m_trackDirection, &m_gravityDirection, &m_templateStep};
  m_hideModes.SetNodes(m_settings.hideHelpers, helpers);
  m_hideModes.SetNodes(m_settings.hideHelpersDuringRecording, helpers);
  m_hideModes.SetNodes(m_settings.hideTrackText, {&m_trackDirection});
  m_wheels.push_back(std::make_shared<Wheel>(*this, "driveWheel", m_frame, WheelKind()));
  ShowWheels();
}

CrawlerTracks::~CrawlerTracks() = default;

/// What follows the lists of wheels.
void CrawlerTracks::ShowWheels() {
  m_gravityDirection.own = {&m_frame, &m_trackDirection, &m_gravityDirection, &m_templateStep};
  for (const WheelList* list : {&m_wheels, &m_supportWheels})
    for (const auto& wheel : *list) m_gravityDirection.own.push_back(wheel.get());
}

void CrawlerTracks::SetWheelState(const WheelState& state) {
  m_wheels = state.wheels;
  m_supportWheels = state.supportWheels;
  for (const WheelList* list : {&m_wheels, &m_supportWheels})
    for (const auto& wheel : *list) wheel->Find();
  ShowWheels();
}

void CrawlerTracks::SetTrack(TrackPointer track) {
  m_track = std::move(track);
  if (!m_track) return;
  m_caterpillar.Find();
  for (const auto& step : m_track->steps) step->Find();
}

int CrawlerTracks::Create() {
  const double now = m_pInterface->GetTime();
  const auto create = [&](RigSceneNode& node, const Matrix& local) {
    const bool isNew = !node.Find();
    if (isNew && node.Create() != 0) return false;
    if (isNew) node.Place(now, m_frame.ReadMatrix(now) * local);
    return true;
  };
  if (m_frame.Create() != 0) return 1;
  if (!create(*m_wheels.front(), Translation(kDriveWheelPlace))) {
    Tell("Error", "Could not create Wheel Node", kIconCritical);
    return 1;
  }
  m_wheels.front()->ShowKind();
  if (!create(m_templateStep, Translation(kTemplatePlace))) {
    Tell("Error", "Could not create TemplateStep", kIconCritical);
    return 1;
  }
  if (!create(m_trackDirection, Translation(kTrackDirectionPlace)) ||
      !create(m_gravityDirection, FallingAt(kGravityPlace)))
    return 1;
  return 0;
}

// --- the factory ---

std::intptr_t CrawlerTracks::Extension(int code, void* a, void* b) {
  if (code == kTellMarks && a) return TellMarks(*static_cast<RigMarks*>(a));
  return code == kTellGround && a ? m_gravityDirection.TellGround(*static_cast<GroundReport*>(a))
                                  : CCamera::Extension(code, a, b);
}

CCamera* CrawlerTracksPlugin::CreateObject(const CreationRecord& record) {
  return new CrawlerTracks(record, m_shapes);
}

std::string CrawlerTracksPlugin::GetDescription() {
  return "Orvel CrawlerTracks is a dynamic simulator for quick rigging of any kind of "
         "crawler/CrawlerTracks tracks interacting with bogies and ground.";
}

}  // namespace orv::rws::addon
