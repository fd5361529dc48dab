// What a user edits on a car and a profile saves, and the constants that nobody edits.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace orv::rws::addon {

/// The inputs, in the order in which they are declared, filtered and saved.
enum CarChannel : std::size_t {
  kGasPedal,
  kSteeringWheel,
  kBooster,
  kAbsBrake,
  kSkidding,
  kSkidBrake,
  kGravel,
  kBurnout,
  kExternalForce,
  kChannelCount
};

/// Tuned numbers without a place in the configuration.
namespace car {
/// Fastest move of a car in the air, in body scales a frame. A safety net: raising it lets a car
/// fall faster at the end of a very long fall.
inline constexpr double dScaleRelMaxJumpVelocity = 4.0;
/// What is left of the body's height above its rest after a sub-step in the air. Raising it
/// (towards 1) lets a body that was bouncing at the take-off settle later.
inline constexpr double dLandingNeutralizer = 0.98;
/// How strongly a car in the air goes back to the attitude of its take-off, per nominal step.
/// Raising it stops a spin in the air sooner.
inline constexpr double dHorizontalRestoringFactor = 0.02;
/// Grip with which a car lands while this exceeds its skidding. Raising it lands with more grip.
inline constexpr double dLandingSkiddingFactor = 0.5;
/// Least height of the body's origin over the mean of the wheel bottoms, part of its rest height.
inline constexpr double dMinGroundDistance = 0.3;
/// Pull on a car in the air at a jump gravity of 1, in quarters of a body scale a second a second:
/// this value is 9.81 m/s² for the car as it is created.
inline constexpr double kJumpGravity = 14.5333;
/// Least mass multiplier that is calculated with; 0 would divide by zero.
inline constexpr double kLeastMassMult = 1e-3;
/// Speed below which a car counts as standing (body scales a second).
inline constexpr double kStandingGas = 1e-4;
/// Length of a sub-step that a frame is divided into (s).
inline constexpr double kSubStep = 0.003;
/// Width of a wheel whose relocator has a scale of 1.
inline constexpr double kWheelWidth = 0.62;
/// Spin of a wheel that one key may stand for (rad): more, and a host would turn it backwards.
inline constexpr double kSpinPerKey = 3.110487775831478;
}  // namespace car

struct Parameter;

struct CarChannelSettings {
  double responseFactor = 1.0;  ///< of the channel's low pass, [0, 100]; 0 is none
  double maximum = 1.0;         ///< what an input of 1 becomes, [0, 1e6]; unit see the channel

  /// Their places among the parameters of a channel.
  enum { kResponseFactor, kMaximum };
};

/// Read-only numbers that the configuration shows.
struct CarGauges {
  double maximumVelocity = 0.0;  ///< that of the gas, in the unit of the gauges
  double velocity = 0.0;         ///< along the heading, in the unit of the gauges
  double velocityPercent = 0.0;  ///< of the gas maximum
  double secondsTo100 = 0.0;     ///< from rest to 100 of the gauges' unit (s)
  double secondsTo60 = 0.0;      ///< from rest to 60 of the gauges' unit (s)
};

/// The defaults are those of the "Start Profile", but for the rays. So is the wheel radius
/// multiplier, of which a bare 1 would be as good: a new car doesn't change its wheels when that
/// profile is applied to it.
struct CarSettings {
  // Gauges
  double dInitialVelocity = 0.0;         ///< % of the gas maximum, [0, 1000]
  double dVelocityConversionMult = 3.6;  ///< m/s to the unit of the gauges, above 0
  // General modes
  bool bHideHelpers = false;                 ///< helper nodes are never seen
  bool bHideHelpersDuringRecording = false;  ///< nor in a take
  bool bHideFollowCam = true;                ///< always, as each of the two below
  bool bHideDriverCam = true;                ///< the camera within the car
  bool bHideTopViewCam = true;               ///< the camera above the car
  bool bSaveDynamicData = true;              ///< a take within an earlier one goes on from there
  bool bKeyframeOnlyEssential = false;       ///< cameras and wheel helpers get no keys
  // Autonomous mode
  bool bAutonomousMode = false;             ///< drives to the target; the inputs add to that
  double dFollowAccelerationMult = 0.5;     ///< gas per body scale of distance, [0.01, 30]
  double dFollowAccRespFact = 0.02;         ///< of the gas' low pass, (0, 1]; 1 is none
  double dAutoSteeringValueRespFact = 0.2;  ///< of the steering's low pass, (0, 1]; 1 is none
  double dReverseMaxVelMult = 0.5;          ///< gas backwards, part of that forwards, [0, 1000]
  double dIgnoreSphereRadius = 0.5;         ///< body scales, above 0; the car stops within
  // Steering
  double dVelRelMaxSteeringChangeVel = 2.0;  ///< input units a second, above 0
  /// 1 over the gas at which steering halves, [0, 10].
  double dSpeedDependentTurnRadiusReductionFactor = 0.2;
  double dSteeringNoise = 0.0;  ///< input units at a speed of 1 m/s, from end to end, [0, 1000]
  double dSteeringWheelRotMult = 1.0;  ///< turn of the driver's wheel, factor, [0, 1000]
  double dTurnBase = 0.0;              ///< half body scales in front of the back wheels, [-2, 2]
  // Suspension
  double fStiffness = 2000.0;               ///< of each front spring (N/m, [0, 10000])
  double fStiffnessBack = 2000.0;           ///< of each back spring (N/m, [0, 10000])
  double fDamping = 200.0;                  ///< of each front spring (N s/m, [0, 10000])
  double fDampingBack = 200.0;              ///< of each back spring (N s/m, [0, 10000])
  double fSurfaceEdgeResponseFactor = 0.8;  ///< of a wheel's height, [0, 1000]; 0 follows at once
  double dMaximumForwardTiltAngle = 0.06;   ///< pitch either way (rad, [0, 1.5])
  double dMaximumSideTiltAngle = 0.07;      ///< roll either way (rad, [0, 1.5])
  /// Stiffness and damping added per gas over its maximum, [0, 10].
  double dBoosterStiffnessMult = 0.3;
  double dMassMult = 2.0;  ///< mass in units of 25 kg, [0, 1000]
  // General properties
  bool bFixateWheelBottomNodes = false;               ///< wheel centers stay at rest in the body
  bool bMoveWheelCenterNodeToGroundHitPoint = false;  ///< wheel centers stand where the tires touch
  bool bAlignWheelCenterToGroundNormal = false;       ///< wheel centers stand upright on the ground
  /// The pedal against the motion brakes; else slopes act on the gas.
  bool bUseReverseAsAbsBrake = true;
  double dSkiddingOffset = 0.0;  ///< added to the input, [0, 100]; 1 is no grip
  /// Sideways change of speed in a frame, part of the highest speed, [0, 100].
  double dSkiddingReleaseThresh = 0.04;
  double dSkiddingReleaseRespFact = 1.0;  ///< of grip that comes back, (0, 1]; 1 is at once
  double dGravelShakeOffset = 0.5;        ///< added to the input, [0, 100]
  double dGravelRoughness = 0.9;          ///< of the noise's low pass, [0, 1]; 0 and 1 are none
  double dForceOffset = 0.0;              ///< added to the input, [0, 10000]
  double dSkidBrakeStopFactor = 1.0;    ///< of a locked car's low pass, above 0; higher slides less
  double dSkidBrakeRotBrakeMult = 1.0;  ///< yaw that a slide takes away, factor, [0, 1000]
  double dBurnoutShake = 0.2;           ///< random part of the tilt, factor, [0, 100]
  double dBurnoutTiltForce = 1.0;       ///< tilt of the body, factor, [0, 100]
  double dBurnoutFadeoutFactor = 0.99;  ///< what a sub-step leaves of it, [0, 1]
  int iRandomSeedAdder = 0;             ///< another number gives another noise, +-1e6
  double dWorldAvoidanceSphereRadius = 0.0;  ///< body scales round the world's origin, 0 is off
  double dWheelRadiusMult = 0.95;  ///< of the mesh's radius, [0.01, 10]; as the Start Profile
  double fGravity = 1.0;           ///< of the lean on slopes, factor, [0, 10000]
  /// Of a fall, [0, 10000]: 1 is the earth's for the car as it is created.
  double dJumpGravity = 1.0;
  // Wheel ground release
  bool bGroundReleaseOn = true;   ///< wheels drop where the ground falls away
  bool cCarCambGravityOn = true;  ///< the car can leave the ground
  double fRelMaxBumperLen = 0.5;  ///< longest drop of a wheel (wheel radii, [0, 1000])
  double dMaximumSpringChangeVelocityRel = 3.0;  ///< wheel radii a second, [0, 1000]; 0 is no limit
  // Rays
  int iRayMultiplier = 1;  ///< rays of a wheel forward and backward, [1, 1000]; 1 is the middle one
  bool bAddRaysAtWheelEdges = true;   ///< the further rays at both sides of the wheel too
  double dDegsPerRay = 2.0;           ///< between further rays (degrees, [0.1, 89])
  bool bUseStaticMesh = false;        ///< rays within the rig, over ground that doesn't move
  bool bStoreGroundMeshData = false;  ///< the save data carries the ground
  // Inputs
  double dGasPedalMaxRateOfChange = 2.0;  ///< body scales a second a second, above 0
  /// By CarChannel. Maxima: gas in body scales a second; steering in rad at the wheels; booster in
  /// parts of the gas maximum; the brakes, skidding, gravel, burnout and force as plain factors.
  std::array<CarChannelSettings, kChannelCount> channels{{{0.01, 3.0},
                                                          {0.1, 0.7},
                                                          {0.02, 6.0},
                                                          {1.0, 0.03},
                                                          {0.1, 0.9},
                                                          {0.1, 1.0},
                                                          {1.0, 0.05},
                                                          {0.03, 3.0},
                                                          {1.0, 100.0}}};

  /// Parts of the save data: what the fixed struct holds.
  static constexpr int kFixedFlags = 1;
  static constexpr int kFixedNumbers = 2;
};

std::vector<Parameter> ParametersOf(CarSettings& settings);
std::vector<Parameter> ParametersOf(CarChannelSettings& settings);

}  // namespace orv::rws::addon
