// A force that a device can exert on the user's hand.
#pragma once

namespace orv::unidevice {

/// Kinds of forces.
enum class FFKind : int {
  kConstant,  ///< steady push along `direction`
  kSine,      ///< push that swings along `direction` with `period`
  kSpring,    ///< pull towards the centre, growing with the distance
  kDamper,    ///< resistance that grows with the speed
  kFriction,  ///< resistance against any movement
  kRumble,    ///< vibration of a motor, without direction
};

/// An effect on one control. Made by Control::createEffect for one owner (a Property destroys those
/// in its `effects`). Parameters can be changed while it plays. When the device goes away `valid`
/// turns false, every operation that would reach the hardware gives false, and the last parameters
/// can still be read.
class FFEffect {
 public:
  FFEffect() = default;
  FFEffect(const FFEffect&) = delete;
  FFEffect& operator=(const FFEffect&) = delete;

  /// What the effect was created as.
  virtual FFKind kind() const = 0;

  /// Starts it, anew if it plays already. False if the device refuses.
  virtual bool start() = 0;

  /// Stops it; true if it doesn't play afterwards.
  virtual bool stop() = 0;

  /// True between `start` and `stop`, for a limited duration until the device reports the end where
  /// it can.
  virtual bool isPlaying() const = 0;

  /// Strength in [0, 1]; 0 at first.
  virtual double magnitude() const = 0;

  /// Sets the strength, clamped to [0, 1]. False for NaN or if the device refuses.
  virtual bool setMagnitude(double magnitude) = 0;

  /// Where the force pushes, in the device's plane (rad): 0 is right, pi/2 is away from the user.
  virtual double direction() const = 0;

  /// Sets the direction (rad). False if it isn't finite or if the device refuses. Kinds without a
  /// direction keep the value and are not affected.
  virtual bool setDirection(double direction) = 0;

  /// How long it plays after `start` (s); 0, as at first, means until `stop`.
  virtual double duration() const = 0;

  /// Sets the duration (s), counted from the next `start` or from now if it plays. False if
  /// negative or not finite, or if the device refuses.
  virtual bool setDuration(double duration) = 0;

  /// Length of one swing (s) of a kind that swings; 0.1 at first.
  virtual double period() const = 0;

  /// Sets the length of a swing (s). False if not above 0, or if the device refuses.
  virtual bool setPeriod(double period) = 0;

  /// Stops the effect and frees it on the device.
  virtual ~FFEffect() = default;

  bool valid = true;  ///< false once the control under it is gone
};

}  // namespace orv::unidevice
