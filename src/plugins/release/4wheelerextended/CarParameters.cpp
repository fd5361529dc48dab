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

struct ChannelText {
  const char* name;
  const char* description;
};
constexpr ChannelText kChannelTexts[kChannelCount] = {
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

/// What stands between the rows.
enum Own { kGauges, kChannels };

using GaugeRow = ParameterRow<CarGauges>;
constexpr GaugeRow kGaugeRows[] = {
    GaugeRow::Number(kNotSaved, nullptr, "World Space Maximum Velocity Gauge", "Speed at full gas.",
                     &CarGauges::maximumVelocity, {0.0, 1e5, 1.0})
        .Computed(),
    GaugeRow::Number(kNotSaved, nullptr, "Current Velocity", "Speed in the latest frame.",
                     &CarGauges::velocity, {-1e7, 1e7, 0.01})
        .Computed(),
    GaugeRow::Number(kNotSaved, nullptr, "Current Velocity (% of max)",
                     "Speed in the latest frame, of the one at full gas.",
                     &CarGauges::velocityPercent, {-1e7, 1e7, 0.01})
        .Computed(),
    GaugeRow::Number(kNotSaved, nullptr, "World Space Acceleration Gauge (seconds from 0 to 100)",
                     "At the largest acceleration that the car allows.", &CarGauges::secondsTo100,
                     {0.0, 1e6, 0.01})
        .Computed(),
    GaugeRow::Number(kNotSaved, nullptr, "World Space Acceleration Gauge (seconds from 0 to 60)",
                     "At the largest acceleration that the car allows.", &CarGauges::secondsTo60,
                     {0.0, 1e6, 0.01})
        .Computed(),
};

// Places of what the fixed struct of the save data holds.
constexpr int kFixedFlag = CarSettings::kFixedFlags * kSavedPart;
constexpr int kFixedNumber = CarSettings::kFixedNumbers * kSavedPart;
using S = CarSettings;
using Row = ParameterRow<S>;
constexpr Row kRows[] = {
    Row::Group("Gauges (read only)", "What the car is doing"),
    Row::Number(0, "dInitialVelocity", "Initital Velocity (% of max)",
                "Speed at which a first take starts.", &S::dInitialVelocity, {0.0, 1000.0, 1.0}),
    Row::Number(1, "dVelocityConversionMult", "Multiplier",
                "Turns scene units a second into the unit of the gauges: 3.6 is km/h.",
                &S::dVelocityConversionMult, {0.001, 1e7, 0.001}),
    Row::Own(kGauges),
    Row::EndGroup(),
    Row::Group("General Modes", "What is shown and recorded"),
    Row::Button(kReinitialize,
                "The next take starts anew: the sizes are read again from the scene and what "
                "earlier takes have left is forgotten."),
    Row::Flag(37, "bHide0", "Hide Helpers",
              "Hides all nodes but the body, the wheels and the cameras.", &S::bHideHelpers,
              Hides::kAlways),
    Row::Flag(38, "bHide1", "Hide Helpers During Recording", "Hides the helpers while a take runs.",
              &S::bHideHelpersDuringRecording, Hides::kDuringTakes),
    Row::Flag(39, "bHide2", "Hide Follow Camera", "Hides the FollowCam.", &S::bHideFollowCam,
              Hides::kAlways),
    Row::Flag(40, "bHide3", "Hide Driver Camera", "Hides the DriverCam.", &S::bHideDriverCam,
              Hides::kAlways),
    Row::Flag(41, "bHide4", "Hide TopView Camera", "Hides the TopViewCam.", &S::bHideTopViewCam,
              Hides::kAlways),
    Row::Flag(kFixedFlag + 0, nullptr, "Enable Seamless Transitions",
              "A take that starts within an earlier one goes on from there without a break.",
              &S::bSaveDynamicData),
    Row::Flag(kFixedFlag + 1, nullptr, "Keyframe only essential objects",
              "Neither the cameras nor the center and suspension helpers get keys.",
              &S::bKeyframeOnlyEssential),
    Row::EndGroup(),
    Row::Group("Autonomous Mode Properties", "How the car follows its target by itself"),
    Row::Flag(kFixedFlag + 2, nullptr, kAutonomous,
              "The car drives to the TargetMesh; the inputs add to that.", &S::bAutonomousMode),
    Row::Number(2, "dFollowAccelerationMult", "Autonomous mode follow strength",
                "Speed per distance to the target.", &S::dFollowAccelerationMult,
                {0.01, 30.0, 0.01}),
    Row::Number(3, "dFollowAccRespFact", "Follow Strength Response Factor",
                "How quickly the speed follows the target.", &S::dFollowAccRespFact,
                {0.0001, 1.0, 0.001}),
    Row::Number(4, "dAutoSteeringValueRespFact", "Auto-Steering Response Factor",
                "How quickly the steering follows the target.", &S::dAutoSteeringValueRespFact,
                {0.0001, 1.0, 0.001}),
    Row::Number(5, "dReverseMaxVelMult", "Reverse Max Vel Mult",
                "Speed backwards, as a part of that forwards.", &S::dReverseMaxVelMult,
                {0.0, 1000.0, 0.001}),
    Row::Number(6, "dIgnoreSphereRadius", "Ignore Sphere Radius (length relative)",
                "Distance to the target within which the car brakes and stops.",
                &S::dIgnoreSphereRadius, {0.001, 100.0, 0.001}),
    Row::EndGroup(),
    Row::Group("Steering Properties", "How the car turns"),
    Row::Number(7, "dVelRelMaxSteeringChangeVel", "Maximum Steering Change Velocity",
                "Fastest change of the steering input a second.", &S::dVelRelMaxSteeringChangeVel,
                {0.001, 100.0, 0.001}),
    Row::Number(8, "dSpeedDependentTurnRadiusReductionFactor",
                "Speed Dependent Turn Radius Reduction Factor",
                "How much less a fast car steers than a slow one.",
                &S::dSpeedDependentTurnRadiusReductionFactor, {0.0, 10.0, 0.001}),
    Row::Number(9, "dSteeringNoise", "Steering Noise", "Random steering that grows with the speed.",
                &S::dSteeringNoise, {0.0, 1000.0, 0.001}),
    Row::Number(10, "dSteeringWheelRotMult", "Steering Wheel Rot Mult",
                "How far the driver's steering wheel turns.", &S::dSteeringWheelRotMult,
                {0.0, 1000.0, 0.001}),
    Row::Number(kFixedNumber + 8, nullptr, kTurnBase,
                "Where the point that the car turns about lies: 0 at the back wheels, 2 about at "
                "the front ones.",
                &S::dTurnBase, {-2.0, 2.0, 0.001}),
    Row::EndGroup(),
    Row::Group("Suspension Properties", "How the body moves on its springs"),
    Row::Number(kFixedNumber + 0, nullptr, "Front Stiffness", "Spring rate of the front axle.",
                &S::fStiffness, {0.0, 10000.0, 1.0}),
    Row::Number(kFixedNumber + 1, nullptr, "Back Stiffness", "Spring rate of the back axle.",
                &S::fStiffnessBack, {0.0, 10000.0, 1.0}),
    Row::Number(kFixedNumber + 2, nullptr, "Front Damping", "Damping of the front axle.",
                &S::fDamping, {0.0, 10000.0, 0.1}),
    Row::Number(11, "fDampingBack", "Back Damping", "Damping of the back axle.", &S::fDampingBack,
                {0.0, 10000.0, 0.1}),
    Row::Number(kFixedNumber + 7, nullptr, "Tire Pressure",
                "How sharply a tire follows an edge of the ground. 0 follows at once.",
                &S::fSurfaceEdgeResponseFactor, {0.0, 1000.0, 0.001}),
    Row::Number(12, "dMaximumForwardTiltAngle", "Maximum Forward Tilt Angle",
                "Farthest pitch of the body (radians).", &S::dMaximumForwardTiltAngle,
                {0.0, 1.5, 0.0001}),
    Row::Number(13, "dMaximumSideTiltAngle", "Maximum Side Tilt Angle",
                "Farthest roll of the body (radians).", &S::dMaximumSideTiltAngle,
                {0.0, 1.5, 0.0001}),
    Row::Number(14, "dBoosterStiffnessMult", "Booster Stiffness Multiplier",
                "How much the booster stiffens the springs.", &S::dBoosterStiffnessMult,
                {0.0, 10.0, 0.001}),
    Row::Number(kFixedNumber + 4, nullptr, "Mass Multiplier",
                "A heavier body moves more slowly on its springs.", &S::dMassMult,
                {0.0, 1000.0, 0.001}),
    Row::EndGroup(),
    Row::Group("General Properties", "Brakes, tires and gravity"),
    Row::Flag(kFixedFlag + 3, nullptr, "Fixate Wheel Center Nodes",
              "The wheel centers stay at rest in the body.", &S::bFixateWheelBottomNodes),
    Row::Flag(kFixedFlag + 6, nullptr, "Move WheelCenterMesh to ground hit point",
              "The wheel centers stand where the tires touch the ground.",
              &S::bMoveWheelCenterNodeToGroundHitPoint),
    Row::Flag(kFixedFlag + 7, nullptr, "Align WheelCenterMesh to ground incline",
              "The wheel centers stand upright on the ground.",
              &S::bAlignWheelCenterToGroundNormal),
    Row::Flag(kFixedFlag + 4, nullptr, "Use Reverse as ABS Brake",
              "The pedal against the motion brakes until a full stop. Without it slopes change the "
              "speed.",
              &S::bUseReverseAsAbsBrake),
    Row::Number(15, "dSkiddingOffset", "Skidding Offset Value", "Skidding without any input.",
                &S::dSkiddingOffset, {0.0, 100.0, 0.001}),
    Row::Number(16, "dSkiddingReleaseThresh", "Skidding Release Value (Lateral Vel Rel)",
                "Sideways acceleration from which the tires let go.", &S::dSkiddingReleaseThresh,
                {0.0, 100.0, 0.001}),
    Row::Number(17, "dSkiddingReleaseRespFact", "Skidding Release Response Factor",
                "How quickly the tires take hold again.", &S::dSkiddingReleaseRespFact,
                {1e-8, 1.0, 0.001}),
    Row::Number(18, "dGravelShakeOffset", "Gravel Shake Offset Value", "Gravel without any input.",
                &S::dGravelShakeOffset, {0.0, 100.0, 0.001}),
    Row::Number(19, "dGravelRoughness", "Gravel Roughness", "How abruptly gravel shakes.",
                &S::dGravelRoughness, {0.0, 1.0, 0.001}),
    Row::Number(20, "dForceOffset", "External Force Offset Value",
                "External force without any input.", &S::dForceOffset, {0.0, 10000.0, 0.001}),
    Row::Number(21, "dSkidBrakeStopFactor", "Skid Brake Stop Factor",
                "How quickly locked wheels take the car's motion.", &S::dSkidBrakeStopFactor,
                {1e-8, 100.0, 0.001}),
    Row::Number(22, "dSkidBrakeRotBrakeMult", "Skid Brake Rot Brake Mult",
                "How quickly a sliding car stops turning.", &S::dSkidBrakeRotBrakeMult,
                {0.0, 1000.0, 0.001}),
    Row::Number(23, "dBurnoutShake", "Burnout Shake", "How much a burnout shakes the body.",
                &S::dBurnoutShake, {0.0, 100.0, 0.01}),
    Row::Number(24, "dBurnoutTiltForce", "Burnout Tilting Force",
                "How much a burnout tilts the body.", &S::dBurnoutTiltForce, {0.0, 100.0, 0.01}),
    Row::Number(25, "dBurnoutFadeoutFactor", "Burnout Fadeout Factor",
                "What is left of a burnout after each 3 ms.", &S::dBurnoutFadeoutFactor,
                {0.0, 1.0, 0.001}),
    Row::Count(36, "iRandomSeedAdder", "Random Seed Adder", "Another number gives another noise.",
               &S::iRandomSeedAdder, {-1000000, 1000000}),
    Row::Number(26, "dWorldAvoidanceSphereRadius", "World Avoidance Sphere (scale relative)",
                "Distance from the world's origin at which the car turns back. 0 is none.",
                &S::dWorldAvoidanceSphereRadius, {0.0, 2e9, 1.0}),
    Row::Number(kFixedNumber + 6, nullptr, "Wheel Radius Multiplier",
                "Size of the wheels that the ground feels.", &S::dWheelRadiusMult,
                {0.01, 10.0, 0.01}),
    Row::Number(kFixedNumber + 3, nullptr, "Gravity", "How much the car leans on slopes.",
                &S::fGravity, {0.0, 10000.0, 0.001}),
    Row::EndGroup(),
    Row::Group("Wheel Ground Release Properties", "How wheels leave the ground"),
    Row::Flag(31, "bGroundReleaseOn", "Enable Wheel Ground Release",
              "Wheels hang at the end of their suspension where the ground falls away.",
              &S::bGroundReleaseOn),
    Row::Number(kFixedNumber + 5, nullptr, "Suspension Length (Radius Relative)",
                "Longest drop of a wheel.", &S::fRelMaxBumperLen, {0.0, 1000.0, 0.001}),
    Row::Number(27, "dMaximumSpringChangeVelocityRel",
                "Maximum Wheel Extension Velocity (Radius Rel)",
                "Fastest drop of a wheel a second. 0 is no limit.",
                &S::dMaximumSpringChangeVelocityRel, {0.0, 1000.0, 0.001}),
    Row::EndGroup(),
    Row::Group("Ray Cast Properties", "How the wheels find the ground"),
    Row::Count(35, "iRayMultiplier", "Ray Multiplier",
               "1 casts one ray a wheel; n casts n - 1 more forward and backward.",
               &S::iRayMultiplier, {1, 1000}),
    Row::Flag(kFixedFlag + 5, nullptr, "Cast Rays at Wheel Edges",
              "Casts the additional rays at both sides of the wheel too. With a multiplier of 1 "
              "this does nothing.",
              &S::bAddRaysAtWheelEdges),
    Row::Number(28, "dDegsPerRay", "Degrees Per Ray", "Step between the additional rays.",
                &S::dDegsPerRay, {0.1, 89.0, 0.1}),
    Row::Flag(33, "bUseStaticMesh", kFastRays,
              "Casts rays within the rig. Only non-animated surfaces may be used, and it requires "
              "much more memory.",
              &S::bUseStaticMesh),
    Row::Flag(34, "bStoreGroundMeshData", kStoreGround,
              "The rig keeps a copy of the ground mesh and needs the ground no longer.",
              &S::bStoreGroundMeshData),
    Row::EndGroup(),
    Row::Group("Input Property Parameters", "How each input is turned into movement"),
    Row::Number(29, "dGasPedalMaxRateOfChange", "Acceleration (scale relative)",
                "Fastest change of the speed a second.", &S::dGasPedalMaxRateOfChange,
                {0.001, 1e6, 0.01}),
    Row::Own(kChannels),
    Row::EndGroup(),
    // Last, so that the numbers that profiles tell the others by stay.
    Row::Group("Jump Properties", "How the car falls"),
    Row::Number(30, "dJumpGravity", "Jump Gravity",
                "How fast the car falls. 1 is the earth's for a car of the size that it is created "
                "in, 0 never comes down.",
                &S::dJumpGravity, {0.0, 10000.0, 0.001}),
    Row::EndGroup(),
    Row::Flag(32, "cCarCambGravityOn", nullptr, nullptr, &S::cCarCambGravityOn),
};

/// Of a channel, whose name is ahead of the labels.
using C = CarChannelSettings;
using ChannelRow = ParameterRow<C>;
constexpr ChannelRow kChannelRows[] = {
    ChannelRow::Number(CarChannelSettings::kResponseFactor, nullptr, " Response Factor", nullptr,
                       &C::responseFactor, {0.0, 100.0, 0.001}),
    ChannelRow::Number(CarChannelSettings::kMaximum, nullptr, " Maximum", nullptr, &C::maximum,
                       {0.0, 1e6, 0.001}),
};

}  // namespace

std::vector<Parameter> ParametersOf(CarSettings& settings) {
  return ParametersOf(kRows, settings);
}

std::vector<Parameter> ParametersOf(CarChannelSettings& settings) {
  return ParametersOf(kChannelRows, settings);
}

std::intptr_t CCarCamObject::Extension(int code, void* a, void* b) {
  if (code == kTellGround && a) return m_gravity.TellGround(*static_cast<GroundReport*>(a));
  if (code == kStandingHeight && a) {
    if (IsFresh()) ReadGeometry(m_pInterface->GetTime());
    *static_cast<double*>(a) = cCarCam.geometry.dHeight;
    return 1;
  }
  if (code == kTellMarks && a) return TellMarks(*static_cast<RigMarks*>(a));
  if (code == kFollowLine && a) return FollowLine(*static_cast<LineToFollow*>(a));
  if (code != kIsComputed) return CCamera::Extension(code, a, b);
  return IsComputed(kGaugeRows, m_gauges, a) ? 1 : 0;
}

void CCarCamObject::GetExtensions(std::vector<int>& out) {
  out.insert(out.end(), {kIsComputed, kTellGround, kStandingHeight, kTellMarks, kFollowLine});
}

int CCarCamObject::Define() {
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(m_settings), [this](int which) {
    if (which == kGauges) DefineParameters(ParametersOf(kGaugeRows, m_gauges));
    if (which == kChannels)
      for (std::size_t i = 0; i < kChannelCount; ++i) DefineChannel(i);
  });
  m_pInterface->EndConfig();
  PublishOutputs();
  return 0;
}

void CCarCamObject::DefineChannel(std::size_t index) {
  const ChannelText& text = kChannelTexts[index];
  m_inputs[index] = m_pInterface->AddInput(text.name, text.description, unidevice::kAnyControl);
  if (m_inputs[index]) m_inputs[index]->exponent = kInputExponent;
  std::vector<Parameter> parameters = ParametersOf(m_settings.channels[index]);
  for (Parameter& parameter : parameters) {
    parameter.prefix = text.name;
    parameter.tooltip = text.description;
  }
  DefineParameters(parameters);
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
    m_gauges = CarGauges();
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
  Tell("Warning",
       "The TargetMesh is parented to the CarBodyMesh.\nThis will mess up the autonomous mode "
       "making "
       "the car spin.");
}

}  // namespace orv::rws::addon
