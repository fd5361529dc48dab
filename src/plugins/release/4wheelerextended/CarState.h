// The state of a car: what a frame changes and a history records.
#pragma once

#include <array>
#include <limits>

#include "plugins/release/4wheelerextended/CarSettings.h"
#include "util/Matrix.h"
#include "util/QTransform.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::addon {

inline constexpr int kWheelCount = 4;
/// Wheels 0 and 1 are the front ones, 0 and 2 the left ones.
inline constexpr const char* kWheelSuffixes[kWheelCount] = {"_FL", "_FR", "_BL", "_BR"};

/// Sizes of one wheel, in the body's frame without its scale.
struct CarWheelGeometry {
  double radius = 0.0;   ///< of the wheel's mesh (m)
  double width = 0.0;    ///< m
  double xOffset = 0.0;  ///< right of the body's origin (m)
  double zOffset = 0.0;  ///< behind the body's origin (m)
};

/// What a reset reads from the scene and what stays so until the next one.
struct CarGeometry {
  double scale = 1.0;    ///< L: length of the body's Z row (m)
  double dHeight = 0.0;  ///< body origin over the base at rest, along the body's up (m)
  /// Front left, front right, back left, back right.
  std::array<CarWheelGeometry, kWheelCount> wheels;
  util::Matrix<double> steeringWheel;  ///< `mInit_loc` of the steering wheel, against the body
  util::Matrix<double> driverCam;      ///< the same of the driver's camera

  double HalfBase() const { return scale * -0.5; }
};

/// One wheel. World space unless said.
struct CarWheelState {
  double yaw = 0.0;              ///< steering (rad, positive to the left)
  double pfTotalPitch = 0.0;     ///< spin angle (rad, within +-2 pi, negative forward)
  double CurrDelta = 0.0;        ///< wheel's height over its rest, in the base's frame (m)
  double lastCompression = 0.0;  ///< of the sub-step before (m)
  double gravelNoise = 0.0;      ///< m
  double inTheAir = 0.0;         ///< 1 without ground under the wheel, else 0
  double released = 0.0;   ///< 1 from when the wheel left the ground until it carries again, else 0
  double fallSpeed = 0.0;  ///< of the released chassis over this wheel (m/s)
  double clearance = 0.0;  ///< height of the chassis corner over the ground that would carry it (m)
  util::Vector3<double> centre;  ///< world (m)
  util::Vector3<double> bottom;  ///< lowest point of the tire, world (m)
  double lastCentreY = 0.0;      ///< height of the centre in the frame before (m)
  double localHeight = 0.0;      ///< of the centre in the relocator's frame (m)

  bool bInTheAir() const { return inTheAir != 0.0; }
  void SetInTheAir(bool value) { inTheAir = value ? 1.0 : 0.0; }
};

/// The body on its springs, against the base.
struct CarBodyState {
  double fRelYPos = 0.0;     ///< over the rest height (m)
  double fRelXAng = 0.0;     ///< pitch (rad, nose up is positive)
  double fRelZAng = 0.0;     ///< roll (rad, right side up is positive)
  double fRelYVel = 0.0;     ///< m/s
  double fRelXAngVel = 0.0;  ///< rad/s
  double fRelZAngVel = 0.0;  ///< rad/s
  double fRelYAcc = 0.0;     ///< m/s²
  double fRelXAngAcc = 0.0;  ///< rad/s²
  double fRelZAngAcc = 0.0;  ///< rad/s²
};

/// All that a resumed frame needs. Poses and directions are world space.
struct CarState {
  using Vector = util::Vector3<double>;
  using Transform = util::QTransform<double>;
  using Quat = util::Quat<double>;

  Transform base;              ///< chassis base, on the ground
  Transform qTransCarAbsIncr;  ///< move (m) and turn (own frame) of the latest sub-step
  CarBodyState cCarBody;       ///< against the base
  std::array<CarWheelState, kWheelCount> wheels;  ///< in the order of kWheelSuffixes

  std::array<double, kChannelCount> filtered{};  ///< inputs behind their filters
  double gasPedalPrevious = 0.0;                 ///< the pedal itself, one frame before
  double gasRawPrevious = 0.0;           ///< what the rate limit let through, one frame before
  double steeringRawPrevious = 0.0;      ///< the same of the steering
  double dGasPedalInputFilterMem = 0.0;  ///< gas that a user adds to the autonomous one
  double dInputFilterMem = 0.0;          ///< the same of the steering
  double dFollowAccMem = 0.0;  ///< autonomous gas behind its filter (body scales a second)
  /// Autonomous steering behind its filter (as the input's maximum).
  double dAutoSteeringValueMem = 0.0;

  double fCarLocalYawIncr = 0.0;      ///< yaw of a sub-step (rad)
  double dWantedSkiddingValue = 1.0;  ///< grip memory: 1 holds the road, 0 not at all
  Vector vAcceleration;               ///< of the base, in its own frame (m/s²)
  Transform gravityFilterMem;         ///< its rotation is the attitude that a car in the air keeps
  bool bCarInTheAir = false;          ///< from a take-off to the landing
  bool bJustLanded = false;           ///< the first frame after that

  bool bSkidFirstTime = true;                   ///< the next press of the skid brake is a first one
  bool bSkidBreakingOn = false;                 ///< the wheels are locked
  bool bSkidBreakingOnDisableFeatures = false;  ///< the pedal is down and has taken over
  bool bSkiddingOn = false;                     ///< a slide by the input that has not died yet
  bool bSkiddingArmed = true;           ///< the input was let go: its next press starts a slide
  Vector vSkidBrakePosIncr;             ///< move of a sub-step at the brake's start over dt
  Vector skidIncrement;                 ///< the present move of a sub-step (m)
  double skidYawRate = 0.0;             ///< yaw of a sub-step at the brake's start over dt
  double dSkidBrakeLocalYawIncr = 0.0;  ///< the present yaw of a sub-step (rad)
  /// Gas with which a slide goes on when the brake is let go.
  double fSkidWantedGasPedalValue = 0.0;

  bool bAbsOn = false;                   ///< the brake is pressed
  bool bIsReverseVelAbsBraking = false;  ///< the pedal brakes against the motion
  double absLatchedGas = 0.0;            ///< at the first press of the brake
  double reverseAbsLatchedGas = 0.0;     ///< at the first press of the pedal against the motion

  bool bBurnoutOn = false;        ///< the back wheels spin in place
  double steeringResponse = 0.0;  ///< in place of the channel's own during a burnout

  int randomValue_gravelShake = 0;  ///< numbers drawn so far, on top of the seed; so the two below
  int randomValue_burnout = 0;      ///< draws for the shake of a burnout
  int randomValue_steeringNoise = 0;  ///< draws for the steering

  Transform followCamFirst;   ///< first stage of the follow camera's filter
  Transform followCamSecond;  ///< second stage: its own pose
};

}  // namespace orv::rws::addon
