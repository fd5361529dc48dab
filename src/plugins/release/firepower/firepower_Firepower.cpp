#include "plugins/release/firepower/firepower_Firepower.h"

#include "core/interface/CNode.h"
#include "core/interface/RigMarks.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/firepower/Bullet.h"
#include "plugins/release/firepower/Messages.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Matrix = Firepower::Matrix;
using Vector = Firepower::Vector;

namespace {

/// Length of the barrel's display mesh, which is the default of the parameter (m).
constexpr double kBarrelLength = 4.0;
/// Height of the crosshairCam over the barrel's axis (m).
constexpr double kSightHeight = 0.3;

util::CMesh BarrelMesh() {
  util::CMesh mesh = util::CMesh_Cylinder(0.12, kBarrelLength, 24, 2);
  for (Vector& vertex : mesh.vertices) vertex.z -= 0.5 * kBarrelLength;
  return mesh;
}

}  // namespace

Firepower::Firepower(const CreationRecord& record)
    : Rig(record),
      m_logic(m_settings),
      m_discharge("Discharge"),
      m_trigger(*this, "fire trigger", nullptr, util::CMesh_Box(0.4, 0.4, 0.6)),
      m_barrel(*this, "barrel", &m_trigger, BarrelMesh()),
      m_template(*this, "templateBullet", &m_barrel, util::CMesh_Cylinder(0.08, 0.4, 12, 2)),
      m_crosshairCam(*this, "crosshairCam", &m_barrel),
      m_collision(*this, m_trigger) {
  m_collision.own = {&m_trigger, &m_barrel, &m_template, &m_crosshairCam, &m_collision};
  // Trigger and barrel stay: hiding them would hide what the user hangs on them.
  const std::vector<RigSceneNode*> helpers{&m_template, &m_collision};
  m_hideModes.SetNodes(m_settings.hideHelpers, helpers);
  m_hideModes.SetNodes(m_settings.hideHelpersDuringRecording, helpers);
  for (const bool* on : {&m_settings.hideCamera, &m_settings.hideCameraDuringRecording})
    m_hideModes.SetNodes(*on, {&m_crosshairCam});
}

Firepower::~Firepower() = default;

// --- life ---

int Firepower::Create() {
  for (RigSceneNode* node : std::initializer_list<RigSceneNode*>{&m_trigger, &m_barrel, &m_template,
                                                                 &m_crosshairCam, &m_collision}) {
    if (node->Create() == 0) continue;
    TellError(kErrorOnCreate);
    return 1;
  }
  const double now = m_pInterface->GetTime();
  const Matrix barrel = m_barrel.ReadMatrix(now);
  m_template.Place(now, barrel * Translation({0.0, 0.0, -m_settings.length}));
  m_crosshairCam.Place(now, barrel * Translation({0.0, kSightHeight, 0.0}));
  return 0;
}

int Firepower::Restore() {
  // Without camera, template or collision node the gun still fires what it can; without the nodes
  // that aim it is none.
  if (!m_trigger.Find() || !m_barrel.Find()) {
    TellError(kNoNode);
    return 1;
  }
  for (RigSceneNode* node :
       std::initializer_list<RigSceneNode*>{&m_template, &m_crosshairCam, &m_collision})
    node->Find();
  std::vector<Bullet> loaded;
  const char* message = kErrorOnLoad;
  if (LoadBlob(loaded, message) == SaveState::kDamaged) {
    TellError(message);
    return 1;
  }
  bool missing = false;
  for (Bullet& bullet : loaded) {
    bullet.node = m_pInterface->FindNode(Bullet::NameOf(bullet.number));
    if (bullet.HasNode())
      bullets.push_back(std::move(bullet));
    else
      missing = true;
  }
  if (missing) TellError(kNoNode);
  m_hideModes.Restore();
  return 0;
}

void Firepower::Destroy() {
  // A take that has not ended has left its keys and its hidden nodes behind.
  if (m_inTake) {
    m_collision.ReleaseSurfaces();
    TellError(kErrorWhenDeleting);
  }
  CCamera::Destroy();
}

std::intptr_t Firepower::Extension(int code, void* a, void* b) {
  if (code == kTellMarks && a) return TellMarks(*static_cast<RigMarks*>(a));
  return code == kTellGround && a ? m_collision.TellGround(*static_cast<GroundReport*>(a))
                                  : CCamera::Extension(code, a, b);
}

/// Of the latest rounds: more at once can't be told apart.
std::intptr_t Firepower::TellMarks(RigMarks& marks) const {
  constexpr std::size_t kMostShots = 200;
  const double last = marks.time + util::kFrameTolerance;
  for (auto bullet = bullets.rbegin(); bullet != bullets.rend(); ++bullet) {
    if (bullet->creationTime > last || !bullet->HasNode()) continue;
    if (marks.shots.size() >= kMostShots || last - bullet->creationTime > m_settings.lifeTime + 1.0)
      break;
    marks.shots.push_back(bullet->TellShot(*m_pInterface, marks.time));
  }
  return 1;
}

// --- the factory ---

CCamera* CFirepowerPlugin::CreateObject(const CreationRecord& record) {
  return new Firepower(record);
}

std::string CFirepowerPlugin::GetDescription() {
  return "Orvel Firepower fires projectiles from a barrel and keys their flight: cannons, "
         "miniguns, handguns, lasers. Place the fire trigger, parent the collision node to what "
         "the projectiles shall hit, connect the input Fire and press Record.";
}

}  // namespace orv::rws::addon
