// What a user sets on a gun and a profile saves.
#pragma once

#include <vector>

namespace orv::rws::addon {

/// Longest life that a projectile can be given (s).
inline constexpr double kMostLifeTime = 3600.0;

struct Parameter;

struct GunSettings {
  double initSpeed = 300.0;    ///< at the muzzle, relative to the gun (m/s)
  double spreadAngle = 0.0;    ///< largest deviation from the barrel's axis (degrees, [0, 180])
  int rateOfFire = 5;          ///< discharges a second while fired; 0 is one a press
  int bunchOfBullets = 1;      ///< projectiles a discharge
  int fireNthTime = 0;         ///< presses from one that fires to the next; 0 counts as 1
  int fireFirstNthTime = 1;    ///< number of the first press that fires; below 1 counts as 1
  int randomSeed = 0;          ///< another one gives another spread, spin and rhythm
  double lifeTime = 5.0;       ///< time that a projectile flies (s)
  double timeDelay = 0.0;      ///< from a press to its first discharge (frames)
  double gravity = 10.0;       ///< along world -Y (m/s²)
  double airResistance = 0.0;  ///< force against the velocity, for a mass of 1 (1/s)
  double elasticity = 0.0;     ///< speed that is left after a hit (%)
  double deltaValue = 0.2;     ///< step off a surface after a hit (m), above 0
  double length = 4.0;         ///< of the barrel, in its own scale (m)

  bool pitchBullet = false;             ///< its axis follows the velocity; off: as at the muzzle
  bool rotateBullet = false;            ///< it spins; the three below say how
  double angularVelocity = 10.0;        ///< revolutions a second
  double randomizeRotationSpeed = 0.0;  ///< largest deviation (revolutions a second)
  double randomizeRotationAxis = 0.0;   ///< largest deviation (degrees)

  double recoilBack = 2.0;     ///< frames to the back position
  double recoilForward = 6.0;  ///< frames from there to the front
  double response = 1.0;       ///< of the barrel's smoothing, (0, 1]; 1 is none
  double recoilDepth = 0.0;    ///< way back (% of the length); 0 is no recoil

  bool hideHelpers = false;                 ///< the templateBullet and the collision node
  bool hideHelpersDuringRecording = false;  ///< the same ones, in takes and resimulations
  bool hideCamera = false;                  ///< the crosshairCam
  bool hideCameraDuringRecording = false;   ///< the crosshairCam, in takes and resimulations

  /// The part of the save data that holds the boxes of the camera.
  static constexpr int kSavedBoxes = 1;

  bool HasRecoil() const { return recoilDepth > 0.0 && recoilBack + recoilForward > 0.0; }
};

std::vector<Parameter> ParametersOf(GunSettings& settings);

}  // namespace orv::rws::addon
