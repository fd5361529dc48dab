// What the user sees of a car: parameters, inputs and outputs.
#include <cmath>

#include "plugins/common/History.h"
#include "plugins/common/ReplayedEvent.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

namespace {

const char kReinitialize[] = "Re-Initialize Car Attributes";
const char kAutonomous[] = "Autonomous Mode";
const char kTurnBase[] = "Turn Base (Back Wheel Relative)";
const char kFastRays[] = "Use Fast Ray Cast";
const char kStoreGround[] = "Store Ground Mesh Data";
constexpr double kInputExponent = 1.3;
constexpr double kMostMaximum = 1e6;

struct ChannelText {
  const char* name;
  const char* description;
};
constexpr ChannelText kChannels[kChannelCount] = {
    {"Gas Pedal (Forw/Backw)", "How strong and fast the engine is. 0.0 gives an instant velocity."},
    {"Steering Wheel (Right/Left)", "How much and how smoothly the wheels turn"},
    {"Booster", "How much and how fast the velocity will multiply"},
    {"ABS Brake", "Brakes as strong as possible until a full stop"},
    {"Skidding", "How much skidding and how fast it applies"},
    {"Skid Brake", "Locks the wheels"},
    {"Gravel Shake Amplitude", "Gravel Shake Amplitude"},
    {"Burnout", "Creates a burnout where the back wheel(s) spin"},
    {"External Force",
     "This input will apply a force in the direction of the 'ExternalForceMesh' direction"},
};
constexpr const char* kOutputs[] = {"Velocity",
                                    "Velocity (Percent of Max)",
                                    "Steering Angle",
                                    "Front Left Wheel in the air",
                                    "Front Right Wheel in the air",
                                    "Back Left Wheel in the air",
                                    "Back Right Wheel in the air"};

}  // namespace

void CCarCamObject::AddSpinner(const char* label, const char* tooltip, double& value, double min,
                               double max, double step) {
  int decimals = 0;
  for (double s = step; s < 0.999 && decimals < 4; s *= 10.0) ++decimals;
  m_pInterface->AddSpinner(label, tooltip, &value, min, max, step, decimals, false, this);
}

void CCarCamObject::AddCheckBox(const char* label, const char* tooltip, bool& value) {
  m_pInterface->AddCheckBox(label, tooltip, &value, this);
}

std::intptr_t CCarCamObject::Extension(int code, void* a, void* b) {
  if (code == kTellGround && a) return m_gravity.TellGround(*static_cast<GroundReport*>(a));
  if (code == kStandingHeight && a) {
    if (IsFresh()) ReadGeometry(m_pInterface->GetTime());
    *static_cast<double*>(a) = cCarCam.geometry.dHeight;
    return 1;
  }
  if (code != kIsComputed) return CCamera::Extension(code, a, b);
  for (const double* gauge :
       {&m_gauges.maximumVelocity, &m_gauges.velocity, &m_gauges.velocityPercent,
        &m_gauges.secondsTo100, &m_gauges.secondsTo60})
    if (gauge == a) return 1;
  return 0;
}

void CCarCamObject::GetExtensions(std::vector<int>& out) {
  out.insert(out.end(), {kIsComputed, kTellGround, kStandingHeight});
}

int CCarCamObject::Define() {
  m_pInterface->BeginConfig();
  DefineGauges();
  DefineGeneralModes();
  DefineAutonomous();
  DefineSteering();
  DefineSuspension();
  DefineGeneralProperties();
  DefineGround();
  DefineInputs();
  DefineJumps();  // last, so that the numbers of the others stay
  m_pInterface->EndConfig();
  PublishOutputs();
  return 0;
}

void CCarCamObject::DefineGauges() {
  m_pInterface->BeginGroup("Gauges (read only)", "What the car is doing");
  AddSpinner("Initital Velocity (% of max)", "Speed at which a first take starts.",
             m_settings.dInitialVelocity, 0.0, 1000.0, 1.0);
  AddSpinner("Multiplier", "Turns scene units a second into the unit of the gauges: 3.6 is km/h.",
             m_settings.dVelocityConversionMult, 0.001, 1e7, 0.001);
  AddSpinner("World Space Maximum Velocity Gauge", "Speed at full gas.", m_gauges.maximumVelocity,
             0.0, 1e5, 1.0);
  AddSpinner("Current Velocity", "Speed in the latest frame.", m_gauges.velocity, -1e7, 1e7, 0.01);
  AddSpinner("Current Velocity (% of max)", "Speed in the latest frame, of the one at full gas.",
             m_gauges.velocityPercent, -1e7, 1e7, 0.01);
  AddSpinner("World Space Acceleration Gauge (seconds from 0 to 100)",
             "At the largest acceleration that the car allows.", m_gauges.secondsTo100, 0.0, 1e6,
             0.01);
  AddSpinner("World Space Acceleration Gauge (seconds from 0 to 60)",
             "At the largest acceleration that the car allows.", m_gauges.secondsTo60, 0.0, 1e6,
             0.01);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineGeneralModes() {
  m_pInterface->BeginGroup("General Modes", "What is shown and recorded");
  m_pInterface->AddButton(kReinitialize,
                          "The next take starts anew: the sizes are read again from the scene and "
                          "what earlier takes have left is forgotten.",
                          this);
  m_hideModes.DefineBoxes(*m_pInterface, *this);
  AddCheckBox("Enable Seamless Transitions",
              "A take that starts within an earlier one goes on from there without a break.",
              m_settings.bSaveDynamicData);
  AddCheckBox("Keyframe only essential objects",
              "Neither the cameras nor the center and suspension helpers get keys.",
              m_settings.bKeyframeOnlyEssential);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineAutonomous() {
  CarSettings& s = m_settings;
  m_pInterface->BeginGroup("Autonomous Mode Properties",
                           "How the car follows its target by itself");
  AddCheckBox(kAutonomous, "The car drives to the TargetMesh; the inputs add to that.",
              s.bAutonomousMode);
  AddSpinner("Autonomous mode follow strength", "Speed per distance to the target.",
             s.dFollowAccelerationMult, 0.01, 30.0, 0.01);
  AddSpinner("Follow Strength Response Factor", "How quickly the speed follows the target.",
             s.dFollowAccRespFact, 0.0001, 1.0, 0.001);
  AddSpinner("Auto-Steering Response Factor", "How quickly the steering follows the target.",
             s.dAutoSteeringValueRespFact, 0.0001, 1.0, 0.001);
  AddSpinner("Reverse Max Vel Mult", "Speed backwards, as a part of that forwards.",
             s.dReverseMaxVelMult, 0.0, 1000.0, 0.001);
  AddSpinner("Ignore Sphere Radius (length relative)",
             "Distance to the target within which the car brakes and stops.", s.dIgnoreSphereRadius,
             0.001, 100.0, 0.001);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineSteering() {
  CarSettings& s = m_settings;
  m_pInterface->BeginGroup("Steering Properties", "How the car turns");
  AddSpinner("Maximum Steering Change Velocity", "Fastest change of the steering input a second.",
             s.dVelRelMaxSteeringChangeVel, 0.001, 100.0, 0.001);
  AddSpinner("Speed Dependent Turn Radius Reduction Factor",
             "How much less a fast car steers than a slow one.",
             s.dSpeedDependentTurnRadiusReductionFactor, 0.0, 10.0, 0.001);
  AddSpinner("Steering Noise", "Random steering that grows with the speed.", s.dSteeringNoise, 0.0,
             1000.0, 0.001);
  AddSpinner("Steering Wheel Rot Mult", "How far the driver's steering wheel turns.",
             s.dSteeringWheelRotMult, 0.0, 1000.0, 0.001);
  AddSpinner(kTurnBase,
             "Where the point that the car turns about lies: 0 at the back wheels, 2 about at the "
             "front ones.",
             s.dTurnBase, -2.0, 2.0, 0.001);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineSuspension() {
  CarSettings& s = m_settings;
  m_pInterface->BeginGroup("Suspension Properties", "How the body moves on its springs");
  AddSpinner("Front Stiffness", "Spring rate of the front axle.", s.fStiffness, 0.0, 10000.0, 1.0);
  AddSpinner("Back Stiffness", "Spring rate of the back axle.", s.fStiffnessBack, 0.0, 10000.0,
             1.0);
  AddSpinner("Front Damping", "Damping of the front axle.", s.fDamping, 0.0, 10000.0, 0.1);
  AddSpinner("Back Damping", "Damping of the back axle.", s.fDampingBack, 0.0, 10000.0, 0.1);
  AddSpinner("Tire Pressure",
             "How sharply a tire follows an edge of the ground. 0 follows at once.",
             s.fSurfaceEdgeResponseFactor, 0.0, 1000.0, 0.001);
  AddSpinner("Maximum Forward Tilt Angle", "Farthest pitch of the body (radians).",
             s.dMaximumForwardTiltAngle, 0.0, 1.5, 0.0001);
  AddSpinner("Maximum Side Tilt Angle", "Farthest roll of the body (radians).",
             s.dMaximumSideTiltAngle, 0.0, 1.5, 0.0001);
  AddSpinner("Booster Stiffness Multiplier", "How much the booster stiffens the springs.",
             s.dBoosterStiffnessMult, 0.0, 10.0, 0.001);
  AddSpinner("Mass Multiplier", "A heavier body moves more slowly on its springs.", s.dMassMult,
             0.0, 1000.0, 0.001);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineGeneralProperties() {
  CarSettings& s = m_settings;
  m_pInterface->BeginGroup("General Properties", "Brakes, tires and gravity");
  AddCheckBox("Fixate Wheel Center Nodes", "The wheel centers stay at rest in the body.",
              s.bFixateWheelBottomNodes);
  AddCheckBox("Move WheelCenterMesh to ground hit point",
              "The wheel centers stand where the tires touch the ground.",
              s.bMoveWheelCenterNodeToGroundHitPoint);
  AddCheckBox("Align WheelCenterMesh to ground incline",
              "The wheel centers stand upright on the ground.", s.bAlignWheelCenterToGroundNormal);
  AddCheckBox("Use Reverse as ABS Brake",
              "The pedal against the motion brakes until a full stop. Without it slopes change the "
              "speed.",
              s.bUseReverseAsAbsBrake);
  AddSpinner("Skidding Offset Value", "Skidding without any input.", s.dSkiddingOffset, 0.0, 100.0,
             0.001);
  AddSpinner("Skidding Release Value (Lateral Vel Rel)",
             "Sideways acceleration from which the tires let go.", s.dSkiddingReleaseThresh, 0.0,
             100.0, 0.001);
  AddSpinner("Skidding Release Response Factor", "How quickly the tires take hold again.",
             s.dSkiddingReleaseRespFact, 1e-8, 1.0, 0.001);
  AddSpinner("Gravel Shake Offset Value", "Gravel without any input.", s.dGravelShakeOffset, 0.0,
             100.0, 0.001);
  AddSpinner("Gravel Roughness", "How abruptly gravel shakes.", s.dGravelRoughness, 0.0, 1.0,
             0.001);
  AddSpinner("External Force Offset Value", "External force without any input.", s.dForceOffset,
             0.0, 10000.0, 0.001);
  AddSpinner("Skid Brake Stop Factor", "How quickly locked wheels take the car's motion.",
             s.dSkidBrakeStopFactor, 1e-8, 100.0, 0.001);
  AddSpinner("Skid Brake Rot Brake Mult", "How quickly a sliding car stops turning.",
             s.dSkidBrakeRotBrakeMult, 0.0, 1000.0, 0.001);
  AddSpinner("Burnout Shake", "How much a burnout shakes the body.", s.dBurnoutShake, 0.0, 100.0,
             0.01);
  AddSpinner("Burnout Tilting Force", "How much a burnout tilts the body.", s.dBurnoutTiltForce,
             0.0, 100.0, 0.01);
  AddSpinner("Burnout Fadeout Factor", "What is left of a burnout after each 3 ms.",
             s.dBurnoutFadeoutFactor, 0.0, 1.0, 0.001);
  m_pInterface->AddSpinnerInt("Random Seed Adder", "Another number gives another noise.",
                              &s.iRandomSeedAdder, -1000000, 1000000, 1, 0, false, this);
  AddSpinner("World Avoidance Sphere (scale relative)",
             "Distance from the world's origin at which the car turns back. 0 is none.",
             s.dWorldAvoidanceSphereRadius, 0.0, 2e9, 1.0);
  AddSpinner("Wheel Radius Multiplier", "Size of the wheels that the ground feels.",
             s.dWheelRadiusMult, 0.01, 10.0, 0.01);
  AddSpinner("Gravity", "How much the car leans on slopes.", s.fGravity, 0.0, 10000.0, 0.001);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineGround() {
  CarSettings& s = m_settings;
  m_pInterface->BeginGroup("Wheel Ground Release Properties", "How wheels leave the ground");
  AddCheckBox("Enable Wheel Ground Release",
              "Wheels hang at the end of their suspension where the ground falls away.",
              s.bGroundReleaseOn);
  AddSpinner("Suspension Length (Radius Relative)", "Longest drop of a wheel.", s.fRelMaxBumperLen,
             0.0, 1000.0, 0.001);
  AddSpinner("Maximum Wheel Extension Velocity (Radius Rel)",
             "Fastest drop of a wheel a second. 0 is no limit.", s.dMaximumSpringChangeVelocityRel,
             0.0, 1000.0, 0.001);
  m_pInterface->EndGroup();
  m_pInterface->BeginGroup("Ray Cast Properties", "How the wheels find the ground");
  m_pInterface->AddSpinnerInt("Ray Multiplier",
                              "1 casts one ray a wheel; n casts n - 1 more forward and backward.",
                              &s.iRayMultiplier, 1, 1000, 1, 0, false, this);
  AddCheckBox("Cast Rays at Wheel Edges",
              "Casts the additional rays at both sides of the wheel too. With a multiplier of 1 "
              "this does nothing.",
              s.bAddRaysAtWheelEdges);
  AddSpinner("Degrees Per Ray", "Step between the additional rays.", s.dDegsPerRay, 0.1, 89.0, 0.1);
  AddCheckBox(kFastRays,
              "Casts rays within the rig. Only non-animated surfaces may be used, and it requires "
              "much more memory.",
              s.bUseStaticMesh);
  AddCheckBox(kStoreGround,
              "The rig keeps a copy of the ground mesh and needs the ground no longer.",
              s.bStoreGroundMeshData);
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineInputs() {
  m_pInterface->BeginGroup("Input Property Parameters", "How each input is turned into movement");
  AddSpinner("Acceleration (scale relative)", "Fastest change of the speed a second.",
             m_settings.dGasPedalMaxRateOfChange, 0.001, 1e6, 0.01);
  const unsigned anyKind =
      unidevice::kBinaryControl | unidevice::kFiniteControl | unidevice::kInfiniteControl;
  for (std::size_t i = 0; i < kChannelCount; ++i) {
    const ChannelText& text = kChannels[i];
    m_inputs[i] = m_pInterface->AddInput(text.name, text.description, anyKind);
    if (m_inputs[i]) m_inputs[i]->exponent = kInputExponent;
    CarChannelSettings& channel = m_settings.channels[i];
    const std::string name = text.name;
    AddSpinner((name + " Response Factor").c_str(), text.description, channel.responseFactor, 0.0,
               100.0, 0.001);
    AddSpinner((name + " Maximum").c_str(), text.description, channel.maximum, 0.0, kMostMaximum,
               0.001);
  }
  m_pInterface->EndGroup();
}

void CCarCamObject::DefineJumps() {
  m_pInterface->BeginGroup("Jump Properties", "How the car falls");
  AddSpinner(
      "Jump Gravity",
      "How fast the car falls. 1 is the earth's for a car of the size that it is created in, "
      "0 never comes down.",
      m_settings.dJumpGravity, 0.0, 10000.0, 0.001);
  m_pInterface->EndGroup();
}

void CCarCamObject::PublishOutputs() {
  for (const char* name : kOutputs) {
    m_outputs.push_back(std::make_unique<unidevice::Property>(name));
    m_pInterface->Extension(kPublishOutput, m_outputs.back().get(), nullptr);
  }
}

// --- events ---

void CCarCamObject::UpdateMaximumGauges() {
  const double scale = cCarCam.geometry.scale;
  const double mult = m_settings.dVelocityConversionMult;
  m_gauges.maximumVelocity = scale * mult * m_settings.channels[kGasPedal].maximum;
  const double acceleration = mult * m_settings.dGasPedalMaxRateOfChange * scale;
  m_gauges.secondsTo100 = 100.0 / acceleration;
  m_gauges.secondsTo60 = 60.0 / acceleration;
}

void CCarCamObject::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  const ReplayedEvent event(name);
  if (!m_inTake && !event.IsReplay()) StandWheelsAtRest(m_pInterface->GetTime());
  if (event.label == kReinitialize && !event.IsReplay()) {
    m_reinitialize = true;
    m_gauges = Gauges();
  }
  if (event.label == kTurnBase) MoveTurnBase();
  if (event.label == kFastRays && !event.IsReplay() && !m_settings.bUseStaticMesh) {
    PushVariableUndo(*m_pInterface, m_settings.bStoreGroundMeshData);
    m_settings.bStoreGroundMeshData = false;
    m_gravity.DropStoredMesh();
  }
  if (event.label == kStoreGround) OnStoreGroundMesh();
  if (event.label == kAutonomous && !event.IsReplay()) WarnOfTarget();
  UpdateMaximumGauges();
  m_pInterface->RefreshConfig();
}

void CCarCamObject::OnStoreGroundMesh() {
  if (!m_gravity.IsBound()) return;  // a scene is being opened: its save data brings the mesh
  if (!m_settings.bStoreGroundMeshData)
    m_gravity.DropStoredMesh();
  else if (!m_gravity.StoreGroundMesh())
    m_settings.bStoreGroundMeshData = false;
}

/// A target that the car carries along can never be reached.
void CCarCamObject::WarnOfTarget() {
  if (!m_settings.bAutonomousMode || !m_target.IsUnder(m_body)) return;
  m_pInterface->MessageBox("Warning",
                           "The TargetMesh is parented to the CarBodyMesh.\nThis will mess up the "
                           "autonomous mode making the car spin.",
                           kButtonsOk | kIconWarning);
}

}  // namespace orv::rws::addon
