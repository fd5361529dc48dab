// Force feedback through SDL. Internal to the SDL driver.
#pragma once

#include <SDL.h>

#include <memory>

#include "unidevice/ParameterEffect.h"

namespace orv::unidevice {

/// A device's joystick and, once an effect asks for it, its haptic side. Device and effects share
/// it; after `close` neither handle is left, so an effect that outlives its device does no harm.
class SdlForce {
 public:
  /// Takes `joystick` over.
  explicit SdlForce(SDL_Joystick* joystick) : m_joystick(joystick) {}
  ~SdlForce() { close(); }

  SdlForce(const SdlForce&) = delete;
  SdlForce& operator=(const SdlForce&) = delete;

  /// Null after `close`.
  SDL_Joystick* joystick() const { return m_joystick; }

  /// Opened on first use; null if the device has none or after `close`.
  SDL_Haptic* haptic();

  /// True if the device has haptics or a rumble motor.
  bool canPlayAny() const;

  void close();

 private:
  SDL_Joystick* m_joystick = nullptr;
  SDL_Haptic* m_haptic = nullptr;
};

/// The effect in SDL's terms.
SDL_HapticEffect toSdlEffect(FFKind kind, const EffectParameters& parameters);

/// An effect on the device, by its haptic side if that has the kind, else a rumble on its motor.
/// Null if the device has no such effect.
std::unique_ptr<FFEffect> createSdlEffect(const std::shared_ptr<SdlForce>& force, FFKind kind,
                                          double direction);

}  // namespace orv::unidevice
