#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"

#include <utility>

#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "plugins/release/crawlertracks/CrawlerActions.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"
#include "plugins/release/crawlertracks/TrackMeshes.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

using Matrix = CrawlerTracks::Matrix;
using Vector = CrawlerTracks::Vector;

namespace {

// Places of a new rig's nodes in the Frame (m): the belt of a wheel stands on the ground.
const Vector kDriveWheelPlace(0.0, 0.56, 0.0);
const Vector kTrackDirectionPlace(0.0, 1.3, 0.0);
const Vector kGravityPlace(-0.8, 0.6, 0.0);
const Vector kTemplatePlace(0.8, 0.03, 0.0);

Matrix At(const Vector& place) {
  Matrix matrix;
  matrix.setTranslation(place);
  return matrix;
}

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
    : CCamera(record),
      m_shapes(shapes),
      m_frame(*this, "Frame", nullptr, CrawlerFrameMesh()),
      m_trackDirection(*this, "TrackDirection", &m_frame, TrackDirectionMesh()),
      m_gravityDirection(*this, m_frame),
      m_templateStep(*this, "TemplateStep", &m_frame, TemplateStepMesh()),
      m_caterpillar(*this, "caterpillar", &m_frame, util::CMesh()) {
  // Frame and wheels stay: hiding them would hide the steps, and what the user hangs on them.
  const std::vector<RigSceneNode*> helpers{&m_trackDirection, &m_gravityDirection, &m_templateStep};
  m_hideModes.Add("Hide Helpers", "Hides TemplateStep, GravityDirection and the text.",
                  OldHideModes::kAlways, helpers);
  m_hideModes.Add("Hide Helpers During Recording", "Hides the helpers while a take runs.",
                  OldHideModes::kDuringTakes, helpers);
  m_hideModes.Add("Hide Track Text", "Hides the text that tells where forward is.",
                  OldHideModes::kAlways, {&m_trackDirection});
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
  if (!create(*m_wheels.front(), At(kDriveWheelPlace))) {
    Tell("Error", "Could not create Wheel Node", kIconCritical);
    return 1;
  }
  m_wheels.front()->ShowKind();
  if (!create(m_templateStep, At(kTemplatePlace))) {
    Tell("Error", "Could not create TemplateStep", kIconCritical);
    return 1;
  }
  if (!create(m_trackDirection, At(kTrackDirectionPlace)) ||
      !create(m_gravityDirection, FallingAt(kGravityPlace)))
    return 1;
  return 0;
}

void CrawlerTracks::Update(double /*time*/) {
  m_pInterface->RefreshConfig();
}

void CrawlerTracks::Tell(const std::string& title, const std::string& text, unsigned icon) const {
  m_pInterface->MessageBox(title, text, kButtonsOk | icon);
}

// --- the configuration ---

int CrawlerTracks::Define() {
  CInterface& core = *m_pInterface;
  core.BeginConfig();
  m_hideModes.Define(core, *this);
  DefineTrackProperties();
  DefineCreationProperties();
  core.BeginGroup("Input Properties", "What the input does");
  core.AddSpinner("Maximum (Input Driven) Rotation Speed",
                  "Speed of the driveWheel at full input (radians per second)",
                  &m_settings.rotationInput, -100.0, 100.0, 0.1, 3, true, this);
  core.EndGroup();
  core.EndConfig();
  m_input = core.AddInput(
      "Forward/Backward", "Turns the driveWheel",
      unidevice::kBinaryControl | unidevice::kFiniteControl | unidevice::kInfiniteControl);
  return 0;
}

void CrawlerTracks::AddTuning(const char* label, const char* tooltip, double& value, double min,
                              double max, double step) {
  m_pInterface->AddSpinner(label, tooltip, &value, min, max, step, 3, true, this);
}

void CrawlerTracks::DefineTrackProperties() {
  CInterface& core = *m_pInterface;
  BeltTuning& t = m_settings.tuning;
  core.BeginGroup("Track Properties", "How the track moves; these take effect at once");
  AddTuning("Gravity", "Strength of the gravity", m_settings.gravity, -1000.0, 1000.0, 0.1);
  AddTuning("Bending Stiffness", "How much the track resists being bent", t.flaccid, 0.01, 2.0,
            0.01);
  AddTuning("Bending Damping", "How soon a bend comes to rest", t.trackDamping, 0.01, 3.0, 0.01);
  AddTuning("Displacement Stiffness", "How firmly the steps hold together", t.transFlaccid, 0.01,
            2.0, 0.01);
  AddTuning("Displacement Damping", "How soon a gap between two steps comes to rest",
            t.trackTransDamping, 0.01, 1.0, 0.01);
  AddTuning("Twist Stiffness", "How much the track resists being twisted", t.twistFlaccid, 0.01,
            1.0, 0.01);
  AddTuning("Twist Damping", "How soon a twist comes to rest", t.trackTwistDamping, 0.01, 3.0,
            0.01);
  AddTuning("Friction", "Friction of the steps on wheels and ground", t.trackFriction, 0.0, 10.0,
            0.01);
  core.AddSpinnerInt("Accuracy",
                     "Iterations of the physics' solver. Can slow down simulation considerably",
                     &t.trackAccuracy, 1, 50, 1, 0, false, this);
  core.AddSpinnerInt("Flaccidity Reduction",
                     "Steps of the physics in each sub-frame: more make the track firmer and the "
                     "simulation slower",
                     &t.trackIterations, 1, 50, 1, 0, false, this);
  core.AddSpinnerInt("SubFrames", "Extra steps within a frame", &m_settings.subFrames, 0, 50, 1, 0,
                     false, this);
  core.AddCheckBox("Set keyframes on SubFrames", "Keys the track at every extra step too",
                   &m_settings.setSubFrames, this);
  core.EndGroup();
}

void CrawlerTracks::DefineCreationProperties() {
  CInterface& core = *m_pInterface;
  core.BeginGroup("Track Creation Properties", "To be set before the track is made");
  core.AddCheckBox("Static Wheel", "The next wheel does not turn with the driveWheel",
                   &m_settings.staticWheel, this);
  core.AddCheckBox("Inner Wheel", "The track runs round the next wheel; off: along its outside",
                   &m_settings.innerWheel, this);
  core.AddCheckBox("Track Wheel", "The track is laid round the next wheel", &m_settings.trackWheel,
                   this);
  for (const auto& [label, tooltip] : kWheelActions) core.AddButton(label, tooltip, this);
  core.AddSpinnerInt("Number of Steps", "Steps of the track", &m_settings.nrSteps, 0, kMostSteps, 1,
                     0, false, this);
  core.AddSpinner("Gap Between Steps", "Gap that the steps are counted with, in Frame units",
                  &m_settings.trackGap, -kMostGap, kMostGap, 0.1, 3, false, this);
  for (const auto& [label, tooltip] : kTrackActions) core.AddButton(label, tooltip, this);
  core.EndGroup();
}

// --- the factory ---

std::intptr_t CrawlerTracks::Extension(int code, void* a, void* b) {
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
