// A gun's take: what it remembers, its barrel and its rounds.
#include <algorithm>
#include <cmath>

#include "core/interface/CNode.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/SnapshotGuard.h"
#include "plugins/release/firepower/Bullet.h"
#include "plugins/release/firepower/GunRandom.h"
#include "plugins/release/firepower/Messages.h"
#include "plugins/release/firepower/Turns.h"
#include "util/Angles.h"
#include "util/FrameGrid.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using Matrix = Firepower::Matrix;
using Vector = Firepower::Vector;

namespace {

/// Difference of a barrel's place by which a user has moved it, and not rounding.
constexpr double kMoved = 1e-9;

double Radians(double degrees) {
  return degrees * util::kPi / 180.0;
}

bool IsNear(const Matrix& a, const Matrix& b) {
  for (int i = 0; i < 16; ++i)
    if (!(std::abs(a[i] - b[i]) <= kMoved * std::max(1.0, std::abs(a[i])))) return false;
  return true;
}

}  // namespace

/// Once a take, or else a message of each frame would end no take.
void Firepower::TellError(const char* message) {
  if (m_inTake && std::find(m_told.begin(), m_told.end(), message) != m_told.end()) return;
  m_told.push_back(message);
  Tell("Error", message, kIconCritical);
}

bool Firepower::IsComplete() const {
  for (const RigSceneNode* node : {&m_trigger, &m_barrel})
    if (!node->IsBound() || !node->GetNode()->IsValid()) return false;
  return true;
}

// --- a take begins and ends ---

void Firepower::Start(double time) {
  m_told.clear();
  m_inTake = true;
  m_takeStart = time;
  PushVariableUndo(*m_pInterface, m_memory);
  PushVariableUndo(*m_pInterface, bullets);
  PushVariableUndo(*m_pInterface, m_logic.timeDelayFire);
  PushVariableUndo(*m_pInterface, m_logic.fireOffline);
  if (!IsComplete()) TellError(kErrorWhenStarting);
  const double dt = m_pInterface->GetFrameDuration();
  const double first = util::frameAfter(time, dt), before = util::frameBefore(first, dt);
  m_memory.Cut(first);
  m_state = m_memory.Resume(before);
  RemoveBulletsAfter(time);
  ResumeBullets(before, first);
  FindRest(before);
  m_collision.CaptureSurfaces(time);
  m_hideModes.Start();
}

void Firepower::Stop() {
  m_collision.ReleaseSurfaces();
  m_hideModes.Stop();
  m_living.clear();
  m_overdue.clear();
  if (!IsComplete()) TellError(kErrorWhenStopping);
  m_inTake = false;
}

/// Projectiles of a future that a take is about to replace.
void Firepower::RemoveBulletsAfter(double time) {
  while (!bullets.empty() && bullets.back().creationTime > time + util::kFrameTolerance) {
    if (bullets.back().HasNode()) {
      m_pInterface->DeleteNode(bullets.back().node, false);
      if (bullets.back().HasNode()) TellError(kErrorOnNodeDelete);
    }
    bullets.pop_back();
  }
}

void Firepower::ResumeBullets(double before, double first) {
  const double dt = m_pInterface->GetFrameDuration();
  m_living.clear();
  m_overdue.clear();
  m_living.reserve(bullets.size());
  for (std::size_t i = 0; i < bullets.size(); ++i) {
    Bullet& bullet = bullets[i];
    const bool lives = first - bullet.creationTime <= m_settings.lifeTime + util::kFrameTolerance;
    if (!lives && !bullet.IsFlownBehind(before)) continue;
    if (!bullet.HasNode()) {
      TellError(kNoNode);
      continue;
    }
    (lives ? m_living : m_overdue).push_back(static_cast<int>(i));
    if (lives) bullet.Resume(*m_pInterface, before, Rules(), dt);
  }
}

// --- the barrel ---

Matrix Firepower::BarrelParent(double time) const {
  Matrix pose;
  CNode* const node = m_barrel.GetNode();
  CNode* const parent = node && node->IsValid() ? node->GetParent() : nullptr;
  if (!parent) return pose;
  {
    const SnapshotGuard snapshot(*m_pInterface, parent, time);
    if (snapshot) snapshot->GetMatrix(pose.data());
  }
  m_pInterface->ReleaseNode(static_cast<CExtendable*>(parent));
  return pose;
}

/// The barrel's place without its recoil.
Matrix Firepower::BarrelAtRest(double time) const {
  return m_memory.hasRest ? BarrelParent(time) * m_memory.rest : m_barrel.ReadMatrix(time);
}

/// Notes where the barrel rests, unless it stands where the recoil of an earlier take has left it.
void Firepower::FindRest(double before) {
  if (!m_memory.hasRest && !m_settings.HasRecoil()) return;
  const Matrix local = m_barrel.ReadLocalMatrix(before);
  const Matrix back = Translation({0.0, 0.0, m_state.barrelBack});
  if (m_memory.hasRest && IsNear(local, m_memory.rest * back)) return;
  m_memory.rest = local * Translation({0.0, 0.0, -m_state.barrelBack});
  m_memory.hasRest = true;
}

/// Back along its axis within so many frames of a discharge and forward within so many more.
void Firepower::MoveBarrel(double time, double dt) {
  if (!m_memory.hasRest) return;
  const double back = m_settings.recoilBack * dt, forward = m_settings.recoilForward * dt;
  double target = 0.0;
  if (m_state.recoil >= 0.0 && m_settings.HasRecoil()) {
    m_state.recoil += dt;
    const double age = m_state.recoil;
    if (age < back + kSameTime)
      target = std::min(age / back, 1.0);
    else if (age < back + forward - kSameTime)
      target = 1.0 - (age - back) / forward;
    else
      m_state.recoil = -1.0;
  }
  util::lowPass(m_state.currentRecoil, target, m_settings.response, 0.0, dt);
  m_state.barrelBack = m_state.currentRecoil * m_settings.recoilDepth / 100.0 * m_settings.length;
  m_barrel.WriteKey(time, BarrelAtRest(time) * Translation({0.0, 0.0, m_state.barrelBack}));
}

// --- a frame ---

void Firepower::Step(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  AdvanceBullets(time, dt);
  m_discharge.offset = 0.0;
  if (m_fire) m_fire->feel.kick = 0.0;
  if (!IsComplete()) {
    TellError(kErrorOnFrame);
    return;
  }
  MoveBarrel(time, dt);
  const double fire = m_fire ? m_fire->read() : 0.0;
  if (m_logic.Step(m_state, fire, time, dt)) Discharge(time, dt);
  m_memory.Store(time, m_state);
}

void Firepower::AdvanceBullets(double time, double dt) {
  for (const int index : m_overdue)
    bullets[static_cast<std::size_t>(index)].Rest(*m_pInterface, util::frameBefore(time, dt), time);
  m_overdue.clear();
  if (m_living.empty()) return;
  m_collision.BeginFrame(time);
  const RayTest* const surfaces = m_collision.HasSurfaces() ? &m_collision : nullptr;
  const FlightRules rules = Rules();
  const auto isOver = [&](int index) {
    Bullet& bullet = bullets[static_cast<std::size_t>(index)];
    if (time - bullet.creationTime > m_settings.lifeTime + util::kFrameTolerance) return true;
    if (!bullet.HasNode()) {
      TellError(kNoNode);
      return true;
    }
    if (bullet.Step(*m_pInterface, time, dt, m_settings, rules, surfaces)) return false;
    TellError(kErrorOnBulletFrame);
    return true;
  };
  m_living.erase(std::remove_if(m_living.begin(), m_living.end(), isOver), m_living.end());
  m_collision.EndFrame();
}

// --- firing ---

Firepower::GunPose Firepower::ReadGun(double time, double dt) const {
  const Matrix now = BarrelAtRest(time), before = BarrelAtRest(util::frameBefore(time, dt));
  return {-now.axisRow(2).normalized(), (now.translation() - before.translation()) / dt,
          m_template.IsBound() ? m_template.ReadMatrix(time) : now};
}

void Firepower::Discharge(double time, double dt) {
  if (m_barrel.ReadMatrix(time).axisRow(2).lengthSquared() == 0.0) {
    TellError(kErrorOnFrame);  // it aims nowhere
    return;
  }
  m_discharge.offset = 1.0;
  if (m_fire) m_fire->feel.kick = 1.0;
  // A round that comes while the barrel is still back goes on from there.
  const double back = m_settings.recoilBack * dt;
  m_state.recoil = std::clamp(m_state.currentRecoil, 0.0, 1.0) * back;
  const GunPose gun = ReadGun(time, dt);
  for (int i = 0; i < m_settings.bunchOfBullets; ++i) Fire(gun, time, dt);
}

void Firepower::Fire(const GunPose& gun, double time, double dt) {
  const int number = ++m_state.nrBullets;
  CNode* const node = MakeBulletNode(Bullet::NameOf(number));
  if (!node) {
    TellError(kErrorOnNodeCreate);
    return;
  }
  const GunSettings& s = m_settings;
  const auto draw = [&](Chance use) { return RandomNumber(s.randomSeed, use, number); };
  const auto deviate = [&](Chance use) { return RandomDeviation(s.randomSeed, use, number); };
  Bullet::Birth birth;
  birth.pose = gun.bullet;
  birth.aim = birth.direction = gun.direction;
  // Evenly over the solid angle of the cone.
  if (s.spreadAngle > 0.0)
    birth.direction = Deviated(
        gun.direction, 1.0 - draw(Chance::kSpread) * (1.0 - std::cos(Radians(s.spreadAngle))),
        2.0 * util::kPi * draw(Chance::kSpreadTurn));
  birth.velocity = birth.direction * s.initSpeed + gun.velocity;
  birth.angularVelocity =
      s.angularVelocity + s.randomizeRotationSpeed * deviate(Chance::kSpinSpeed);
  birth.axisCosine =
      1.0 - draw(Chance::kSpinAxis) * (1.0 - std::cos(Radians(s.randomizeRotationAxis)));
  birth.axisTurn = 2.0 * util::kPi * draw(Chance::kSpinAxisTurn);
  birth.length = s.length;
  Bullet bullet(number, node, time, birth);
  bullet.Appear(*m_pInterface, std::max(util::frameBefore(time, dt), m_takeStart), s, Rules(), dt);
  m_living.push_back(static_cast<int>(bullets.size()));
  bullets.push_back(std::move(bullet));
}

/// A node that wears the template's mesh: the very one where the host can share it, else a copy.
CNode* Firepower::MakeBulletNode(const std::string& name) {
  CNode* const model = m_template.GetNode();
  if (!model || !model->IsValid()) return nullptr;
  util::CMesh mesh;
  const bool shares = model->HasExtension(kShareMesh);
  CSnapshot_Mesh* const shape =
      shares ? nullptr : m_pInterface->GetSnapshotMesh(model, m_pInterface->GetTime());
  if (shape) mesh = shape->GetMesh();
  m_pInterface->ReleaseSnapshotMesh(shape);
  CNode* const node = m_pInterface->CreateMeshNode(name, nullptr, &mesh, 0);
  if (!node) return nullptr;
  node->Extension(kForgetTransformKeys, nullptr, nullptr);
  if (shares) node->Extension(kShareMesh, model, nullptr);
  return node;
}

}  // namespace orv::rws::addon
