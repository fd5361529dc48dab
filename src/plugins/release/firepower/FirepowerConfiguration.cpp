// The gun's parameters, inputs and events.
#include "core/interface/CNode.h"
#include "plugins/release/firepower/Bullet.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

namespace {

const char kSelectAll[] = "Select all bullets";

}  // namespace

void Firepower::AddSpinner(const char* label, const char* tooltip, double& value, double min,
                           double max, double step) {
  int decimals = 0;
  for (double s = step; s < 0.999 && decimals < 4; s *= 10.0) ++decimals;
  m_pInterface->AddSpinner(label, tooltip, &value, min, max, step, decimals, false, this);
}

void Firepower::AddSpinnerInt(const char* label, const char* tooltip, int& value, int min,
                              int max) {
  m_pInterface->AddSpinnerInt(label, tooltip, &value, min, max, 1, 0, false, this);
}

int Firepower::Define() {
  m_pInterface->BeginConfig();
  m_hideModes.Define(*m_pInterface, *this);
  DefineFiring();
  DefineBullets();
  DefineRotation();
  DefineCollision();
  DefineRecoil();
  m_pInterface->EndConfig();
  const unsigned anyKind =
      unidevice::kBinaryControl | unidevice::kFiniteControl | unidevice::kInfiniteControl;
  m_fire = m_pInterface->AddInput("Fire", anyKind);
  m_pInterface->Extension(kPublishOutput, &m_discharge, nullptr);
  return 0;
}

void Firepower::DefineFiring() {
  FirepowerSettings& s = m_settings;
  m_pInterface->BeginGroup("Firing", "How the gun fires");
  AddSpinner("Muzzle Velocity (m/s)", "Set the muzzle velocity of the bullets.", s.initSpeed, 0.0,
             100000.0, 0.1);
  AddSpinnerInt("Rate of fire (rounds/s)", "Set the rate of fire (bullets/second)", s.rateOfFire, 0,
                1000);
  AddSpinnerInt("Bullets/discharge", "Set how many bullets to fire at each discharge",
                s.bunchOfBullets, 1, 1000);
  AddSpinner("Spread Angle (degrees)", "Set the spread angle of the bullets (Degrees).",
             s.spreadAngle, 0.0, 180.0, 0.01);
  AddSpinnerInt("Fire Nth Time", "Presses from one that fires to the next. 0 and 1: each fires.",
                s.fireNthTime, 0, 1000);
  AddSpinnerInt("Fire First Bullet On Nth Time", "The press that fires first.", s.fireFirstNthTime,
                0, 1000);
  AddSpinnerInt("Random Seed", "Another number gives another spread, spin and rhythm.",
                s.randomSeed, 0, 1000000);
  m_pInterface->EndGroup();
  m_pInterface->BeginGroup("Delay", "Set the delay of the discharge");
  AddSpinner("Time Delay", "The number of frames the delay of discharge will be.", s.timeDelay, 0.0,
             10000.0, 1.0);
  m_pInterface->EndGroup();
}

void Firepower::DefineBullets() {
  FirepowerSettings& s = m_settings;
  m_pInterface->BeginGroup("Bullets", "How the bullets fly");
  AddSpinner("Lifetime (seconds)", "Set lifetime of the bullets, will only stop when dead",
             s.lifeTime, 0.0, kMostLifeTime, 0.01);
  AddSpinner("Set gravity affecting the bullets in flight", "Along world Y, downwards (m/s2).",
             s.gravity, -10000.0, 10000.0, 0.01);
  AddSpinner("Air Resistance Force",
             "A value for the air resistance affecting the bullets in flight.", s.airResistance,
             0.0, 1000.0, 0.001);
  m_pInterface->AddCheckBox("Pitch Bullet", "Pitches the bullet in velocity direction",
                            &s.pitchBullet, this);
  m_pInterface->AddButton(kSelectAll, "Selects all bullets in the scene.", this);
  m_pInterface->EndGroup();
}

void Firepower::DefineRotation() {
  FirepowerSettings& s = m_settings;
  m_pInterface->BeginGroup("Rotation", "How the bullets spin");
  m_pInterface->AddCheckBox("Rotate Bullet", "The bullets spin.", &s.rotateBullet, this);
  AddSpinner("Rotation (revolutions/s)", "Set the rotation.", s.angularVelocity, -1000.0, 1000.0,
             0.01);
  AddSpinner("Randomize Rotation Speed", "Set the Maximum Randomized Rotation Speed",
             s.randomizeRotationSpeed, 0.0, 1000.0, 0.01);
  AddSpinner("Randomize Rotation Axis", "Set the Maximum Axis Deviation Angle",
             s.randomizeRotationAxis, 0.0, 180.0, 0.1);
  m_pInterface->EndGroup();
}

void Firepower::DefineCollision() {
  FirepowerSettings& s = m_settings;
  m_pInterface->BeginGroup("Collision", "What happens when a bullet hits a collision object");
  AddSpinner("elasticity (%)", "Set how much the bullet bounce of the collision object",
             s.elasticity, 0.0, 100.0, 0.1);
  AddSpinner("collision correction value",
             "Moves the bullet in collision normal-direction as much as the correction value (to "
             "prevent the bullet from moving through the collision object).",
             s.deltaValue, 0.001, 100.0, 0.001);
  m_pInterface->EndGroup();
}

void Firepower::DefineRecoil() {
  FirepowerSettings& s = m_settings;
  m_pInterface->BeginGroup("Recoil", "Set properties for recoil effect on the barrel");
  AddSpinner("Backward (frames)",
             "Set how many frames it takes for the barrel to reach the back-position", s.recoilBack,
             0.0, 1000.0, 0.1);
  AddSpinner("Forward (frames)",
             "Set how many frames it takes for the barrel to reach the starting position from the "
             "back-position",
             s.recoilForward, 0.0, 1000.0, 0.1);
  AddSpinner("Response Factor", "A value for smooth recoil", s.response, 0.001, 1.0, 0.001);
  AddSpinner("Depth (%)", "Set how deep the barrel should go into the gun", s.recoilDepth, 0.0,
             100.0, 0.1);
  AddSpinner("Barrel Length (m)", "Of which the depth is a part, in the barrel's own scale.",
             s.length, 0.001, 10000.0, 0.001);
  m_pInterface->EndGroup();
}

// --- events ---

void Firepower::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  if (name == kSelectAll) SelectAllBullets();
  m_pInterface->RefreshConfig();
}

void Firepower::SelectAllBullets() {
  CNode* first = nullptr;
  for (const Bullet& bullet : bullets) {
    if (!bullet.HasNode()) continue;
    if (!first) {
      first = bullet.node;
      first->Extension(kBeginGroupSelection, nullptr, nullptr);
    }
    bullet.node->Select();
  }
  if (first) first->Extension(kEndGroupSelection, nullptr, nullptr);
}

}  // namespace orv::rws::addon
