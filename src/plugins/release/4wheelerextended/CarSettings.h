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
  double responseFactor = 1.0;
  double maximum = 1.0;

  /// Their places among the parameters of a channel.
  enum { kResponseFactor, kMaximum };
};

/// Read-only numbers that the configuration shows.
struct CarGauges {
  double maximumVelocity = 0.0;
  double velocity = 0.0;
  double velocityPercent = 0.0;
  double secondsTo100 = 0.0;
  double secondsTo60 = 0.0;
};

/// The defaults are those of the "Start Profile", but for the rays. So is the wheel radius
/// multiplier, of which a bare 1 would be as good: a new car doesn't change its wheels when that
/// profile is applied to it.
struct CarSettings {
  // Gauges
  double dInitialVelocity = 0.0;         ///< % of the gas maximum
  double dVelocityConversionMult = 3.6;  ///< m/s to the unit of the gauges
  // General modes
  bool bHideHelpers = false;
  bool bHideHelpersDuringRecording = false;
  bool bHideFollowCam = true;
  bool bHideDriverCam = true;
  bool bHideTopViewCam = true;
  bool bSaveDynamicData = true;
  bool bKeyframeOnlyEssential = false;
  // Autonomous mode
  bool bAutonomousMode = false;
  double dFollowAccelerationMult = 0.5;
  double dFollowAccRespFact = 0.02;
  double dAutoSteeringValueRespFact = 0.2;
  double dReverseMaxVelMult = 0.5;
  double dIgnoreSphereRadius = 0.5;  ///< body scales
  // Steering
  double dVelRelMaxSteeringChangeVel = 2.0;  ///< input units a second
  double dSpeedDependentTurnRadiusReductionFactor = 0.2;
  double dSteeringNoise = 0.0;
  double dSteeringWheelRotMult = 1.0;
  double dTurnBase = 0.0;  ///< half body scales in front of the back wheels
  // Suspension
  double fStiffness = 2000.0;
  double fStiffnessBack = 2000.0;
  double fDamping = 200.0;
  double fDampingBack = 200.0;
  double fSurfaceEdgeResponseFactor = 0.8;
  double dMaximumForwardTiltAngle = 0.06;  ///< rad
  double dMaximumSideTiltAngle = 0.07;     ///< rad
  double dBoosterStiffnessMult = 0.3;
  double dMassMult = 2.0;
  // General properties
  bool bFixateWheelBottomNodes = false;
  bool bMoveWheelCenterNodeToGroundHitPoint = false;
  bool bAlignWheelCenterToGroundNormal = false;
  bool bUseReverseAsAbsBrake = true;
  double dSkiddingOffset = 0.0;
  double dSkiddingReleaseThresh = 0.04;
  double dSkiddingReleaseRespFact = 1.0;
  double dGravelShakeOffset = 0.5;
  double dGravelRoughness = 0.9;
  double dForceOffset = 0.0;
  double dSkidBrakeStopFactor = 1.0;
  double dSkidBrakeRotBrakeMult = 1.0;
  double dBurnoutShake = 0.2;
  double dBurnoutTiltForce = 1.0;
  double dBurnoutFadeoutFactor = 0.99;  ///< per sub-step
  int iRandomSeedAdder = 0;
  double dWorldAvoidanceSphereRadius = 0.0;  ///< body scales, 0 is off
  double dWheelRadiusMult = 0.95;            ///< a new car's is the Start Profile's, and not 1
  double fGravity = 1.0;                     ///< of the lean on slopes
  double dJumpGravity = 1.0;  ///< of a fall: 1 is the earth's for the car as it is created
  // Wheel ground release
  bool bGroundReleaseOn = true;
  bool cCarCambGravityOn = true;                 ///< the car can leave the ground
  double fRelMaxBumperLen = 0.5;                 ///< wheel radii
  double dMaximumSpringChangeVelocityRel = 3.0;  ///< wheel radii a second, 0 is no limit
  // Rays
  int iRayMultiplier = 1;
  bool bAddRaysAtWheelEdges = true;
  double dDegsPerRay = 2.0;
  bool bUseStaticMesh = false;
  bool bStoreGroundMeshData = false;
  // Inputs
  double dGasPedalMaxRateOfChange = 2.0;  ///< body scales a second a second
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
