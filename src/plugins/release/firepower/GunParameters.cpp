// The gun's parameters, inputs and events.
#include "core/interface/CNode.h"
#include "plugins/release/firepower/Bullet.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

namespace {

const char kSelectAll[] = "Select all bullets";

using S = GunSettings;
using Row = ParameterRow<S>;
constexpr int kBoxes = GunSettings::kSavedBoxes * kSavedPart;
constexpr Row kRows[] = {
    Row::Group("General Modes", "What is shown"),
    Row::Flag(kNotSaved, nullptr, "Hide Helpers",
              "Hides the templateBullet and the collision node.", &S::hideHelpers, Hides::kAlways),
    Row::Flag(kNotSaved, nullptr, "Hide Helpers During Recording",
              "Hides the helpers while a take runs.", &S::hideHelpersDuringRecording,
              Hides::kDuringTakes),
    Row::Flag(kBoxes, "hideCamera", "Hide Camera", "Hides the crosshairCam.", &S::hideCamera,
              Hides::kAlways),
    Row::Flag(kBoxes, "hideCameraDuringRecording", "Hide Camera During Recording",
              "Hides the crosshairCam while a take runs.", &S::hideCameraDuringRecording,
              Hides::kDuringTakes),
    Row::EndGroup(),
    Row::Group("Firing", "How the gun fires"),
    Row::Number(0, "initSpeed", "Muzzle Velocity (m/s)", "Set the muzzle velocity of the bullets.",
                &S::initSpeed, {0.0, 100000.0, 0.1}),
    Row::Count(16, "rateOfFire", "Rate of fire (rounds/s)", "Set the rate of fire (bullets/second)",
               &S::rateOfFire, {0, 1000}),
    Row::Count(17, "bunchOfBullets", "Bullets/discharge",
               "Set how many bullets to fire at each discharge", &S::bunchOfBullets, {1, 1000}),
    Row::Number(1, "spreadAngle", "Spread Angle (degrees)",
                "Set the spread angle of the bullets (Degrees).", &S::spreadAngle,
                {0.0, 180.0, 0.01}),
    Row::Count(18, "fireNthTime", "Fire Nth Time",
               "Presses from one that fires to the next. 0 and 1: each fires.", &S::fireNthTime,
               {0, 1000}),
    Row::Count(19, "fireFirstNthTime", "Fire First Bullet On Nth Time",
               "The press that fires first.", &S::fireFirstNthTime, {0, 1000}),
    Row::Count(20, "randomSeed", "Random Seed",
               "Another number gives another spread, spin and rhythm.", &S::randomSeed,
               {0, 1000000}),
    Row::EndGroup(),
    Row::Group("Delay", "Set the delay of the discharge"),
    Row::Number(3, "timeDelay", "Time Delay",
                "The number of frames the delay of discharge will be.", &S::timeDelay,
                {0.0, 10000.0, 1.0}),
    Row::EndGroup(),
    Row::Group("Bullets", "How the bullets fly"),
    Row::Number(2, "lifeTime", "Lifetime (seconds)",
                "Set lifetime of the bullets, will only stop when dead", &S::lifeTime,
                {0.0, kMostLifeTime, 0.01}),
    Row::Number(4, "gravity", "Set gravity affecting the bullets in flight",
                "Along world Y, downwards (m/s2).", &S::gravity, {-10000.0, 10000.0, 0.01}),
    Row::Number(6, "airResistance", "Air Resistance Force",
                "A value for the air resistance affecting the bullets in flight.",
                &S::airResistance, {0.0, 1000.0, 0.001}),
    Row::Flag(21, "pitchBullet", "Pitch Bullet", "Pitches the bullet in velocity direction",
              &S::pitchBullet),
    Row::Button(kSelectAll, "Selects all bullets in the scene."),
    Row::EndGroup(),
    Row::Group("Rotation", "How the bullets spin"),
    Row::Flag(22, "rotateBullet", "Rotate Bullet", "The bullets spin.", &S::rotateBullet),
    Row::Number(5, "angularVelocity", "Rotation (revolutions/s)", "Set the rotation.",
                &S::angularVelocity, {-1000.0, 1000.0, 0.01}),
    Row::Number(10, "randomizeRotationSpeed", "Randomize Rotation Speed",
                "Set the Maximum Randomized Rotation Speed", &S::randomizeRotationSpeed,
                {0.0, 1000.0, 0.01}),
    Row::Number(11, "randomizeRotationAxis", "Randomize Rotation Axis",
                "Set the Maximum Axis Deviation Angle", &S::randomizeRotationAxis,
                {0.0, 180.0, 0.1}),
    Row::EndGroup(),
    Row::Group("Collision", "What happens when a bullet hits a collision object"),
    Row::Number(7, "elasticity", "elasticity (%)",
                "Set how much the bullet bounce of the collision object", &S::elasticity,
                {0.0, 100.0, 0.1}),
    Row::Number(8, "deltaValue", "collision correction value",
                "Moves the bullet in collision normal-direction as much as the correction value "
                "(to prevent the bullet from moving through the collision object).",
                &S::deltaValue, {0.001, 100.0, 0.001}),
    Row::EndGroup(),
    Row::Group("Recoil", "Set properties for recoil effect on the barrel"),
    Row::Number(12, "recoilBack", "Backward (frames)",
                "Set how many frames it takes for the barrel to reach the back-position",
                &S::recoilBack, {0.0, 1000.0, 0.1}),
    Row::Number(13, "recoilForward", "Forward (frames)",
                "Set how many frames it takes for the barrel to reach the starting position from "
                "the back-position",
                &S::recoilForward, {0.0, 1000.0, 0.1}),
    Row::Number(14, "response", "Response Factor", "A value for smooth recoil", &S::response,
                {0.001, 1.0, 0.001}),
    Row::Number(15, "recoilDepth", "Depth (%)", "Set how deep the barrel should go into the gun",
                &S::recoilDepth, {0.0, 100.0, 0.1}),
    Row::Number(9, "length", "Barrel Length (m)",
                "Of which the depth is a part, in the barrel's own scale.", &S::length,
                {0.001, 10000.0, 0.001}),
    Row::EndGroup(),
};

}  // namespace

std::vector<Parameter> ParametersOf(GunSettings& settings) {
  return ParametersOf(kRows, settings);
}

int Firepower::Define() {
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(m_settings));
  m_pInterface->EndConfig();
  m_fire = m_pInterface->AddInput("Fire", unidevice::kAnyControl);
  m_pInterface->Extension(kPublishOutput, &m_discharge, nullptr);
  return 0;
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
