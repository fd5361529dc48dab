#include "unidevice/sdl/SdlEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::unidevice {

namespace {

Uint32 milliseconds(double seconds) {
  return static_cast<Uint32>(std::max(1.0, std::round(seconds * 1000.0)));
}

Uint32 effectLength(double duration) {
  return duration == 0.0 ? SDL_HAPTIC_INFINITY : milliseconds(duration);
}

Sint16 signedLevel(double magnitude) {
  return static_cast<Sint16>(std::lround(magnitude * 32767));
}

Uint16 unsignedLevel(double magnitude) {
  return static_cast<Uint16>(std::lround(magnitude * 65535));
}

/// SDL names the side that the force comes from, with +x to the right and +y to the user; we name
/// where it pushes, with +y away from the user.
SDL_HapticDirection sdlDirection(double direction) {
  SDL_HapticDirection result{};
  result.type = SDL_HAPTIC_CARTESIAN;
  result.dir[0] = static_cast<Sint32>(std::lround(-10000.0 * std::cos(direction)));
  result.dir[1] = static_cast<Sint32>(std::lround(10000.0 * std::sin(direction)));
  return result;
}

SDL_HapticEffect conditionEffect(Uint16 type, const EffectParameters& parameters) {
  SDL_HapticEffect effect{};
  effect.condition.type = type;
  effect.condition.direction.type = SDL_HAPTIC_CARTESIAN;
  effect.condition.length = effectLength(parameters.duration);
  for (int axis = 0; axis < 3; ++axis) {
    effect.condition.right_sat[axis] = effect.condition.left_sat[axis] = 0xFFFF;
    effect.condition.right_coeff[axis] = effect.condition.left_coeff[axis] =
        signedLevel(parameters.magnitude);
  }
  return effect;
}

/// An effect by way of the device's joystick or its haptic side.
class SdlEffect : public ParameterEffect {
 public:
  SdlEffect(std::shared_ptr<SdlForce> force, FFKind kind, double direction)
      : ParameterEffect(kind, direction), m_force(std::move(force)) {}

 protected:
  bool reachable() const override { return valid && m_force->joystick(); }

  std::shared_ptr<SdlForce> m_force;
};

/// An effect that the device computes itself.
class HapticEffect : public SdlEffect {
 public:
  HapticEffect(std::shared_ptr<SdlForce> force, FFKind kind, double direction)
      : SdlEffect(std::move(force), kind, direction) {
    SDL_HapticEffect effect = toSdlEffect(kind, m_parameters);
    m_id = SDL_HapticNewEffect(m_force->haptic(), &effect);
  }

  ~HapticEffect() override {
    if (usable()) SDL_HapticDestroyEffect(m_force->haptic(), m_id);
  }

  /// False if the device had no room for it.
  bool created() const { return m_id >= 0; }

  bool start() override {
    return reachable() && usable() && SDL_HapticRunEffect(m_force->haptic(), m_id, 1) == 0;
  }

  bool stop() override {
    return reachable() && usable() && SDL_HapticStopEffect(m_force->haptic(), m_id) == 0;
  }

  bool isPlaying() const override {
    return reachable() && usable() && SDL_HapticGetEffectStatus(m_force->haptic(), m_id) == 1;
  }

 private:
  bool usable() const { return m_id >= 0 && m_force->haptic(); }

  bool apply() override {
    if (!usable()) return false;
    SDL_HapticEffect effect = toSdlEffect(kind(), m_parameters);
    return SDL_HapticUpdateEffect(m_force->haptic(), m_id, &effect) == 0;
  }

  int m_id = -1;
};

/// Vibration of a motor that SDL drives without haptics.
class RumbleEffect : public SdlEffect {
 public:
  explicit RumbleEffect(std::shared_ptr<SdlForce> force)
      : SdlEffect(std::move(force), FFKind::kRumble, 0.0) {}

  ~RumbleEffect() override {
    if (m_playing) stop();
  }

  bool start() override {
    m_playing = reachable() && rumble(m_parameters.magnitude);
    return m_playing;
  }

  bool stop() override {
    if (!reachable() || !rumble(0.0)) return false;
    m_playing = false;
    return true;
  }

  bool isPlaying() const override { return m_playing && reachable(); }

 private:
  bool apply() override { return !m_playing || rumble(m_parameters.magnitude); }

  bool rumble(double magnitude) {
    const Uint16 level = unsignedLevel(magnitude);
    // SDL takes a length of 0 as endless.
    const Uint32 length = m_parameters.duration == 0.0 ? 0 : milliseconds(m_parameters.duration);
    return SDL_JoystickRumble(m_force->joystick(), level, level, length) == 0;
  }

  bool m_playing = false;
};

}  // namespace

SDL_Haptic* SdlForce::haptic() {
  if (!m_haptic && m_joystick && SDL_WasInit(SDL_INIT_HAPTIC) &&
      SDL_JoystickIsHaptic(m_joystick) == SDL_TRUE)
    m_haptic = SDL_HapticOpenFromJoystick(m_joystick);
  return m_haptic;
}

bool SdlForce::canPlayAny() const {
  if (!m_joystick) return false;
  const bool haptic =
      SDL_WasInit(SDL_INIT_HAPTIC) != 0 && SDL_JoystickIsHaptic(m_joystick) == SDL_TRUE;
  return haptic || SDL_JoystickHasRumble(m_joystick) == SDL_TRUE;
}

void SdlForce::close() {
  if (m_haptic) SDL_HapticClose(m_haptic);
  if (m_joystick) SDL_JoystickClose(m_joystick);
  m_haptic = nullptr;
  m_joystick = nullptr;
}

SDL_HapticEffect toSdlEffect(FFKind kind, const EffectParameters& parameters) {
  SDL_HapticEffect effect{};
  switch (kind) {
    case FFKind::kConstant:
      effect.constant.type = SDL_HAPTIC_CONSTANT;
      effect.constant.direction = sdlDirection(parameters.direction);
      effect.constant.length = effectLength(parameters.duration);
      effect.constant.level = signedLevel(parameters.magnitude);
      return effect;
    case FFKind::kSine:
      effect.periodic.type = SDL_HAPTIC_SINE;
      effect.periodic.direction = sdlDirection(parameters.direction);
      effect.periodic.length = effectLength(parameters.duration);
      effect.periodic.period = static_cast<Uint16>(milliseconds(parameters.period));
      effect.periodic.magnitude = signedLevel(parameters.magnitude);
      return effect;
    case FFKind::kSpring:
      return conditionEffect(SDL_HAPTIC_SPRING, parameters);
    case FFKind::kDamper:
      return conditionEffect(SDL_HAPTIC_DAMPER, parameters);
    case FFKind::kFriction:
      return conditionEffect(SDL_HAPTIC_FRICTION, parameters);
    case FFKind::kRumble:
      effect.leftright.type = SDL_HAPTIC_LEFTRIGHT;
      effect.leftright.length = effectLength(parameters.duration);
      effect.leftright.large_magnitude = unsignedLevel(parameters.magnitude);
      effect.leftright.small_magnitude = unsignedLevel(parameters.magnitude);
      return effect;
  }
  return effect;
}

std::unique_ptr<FFEffect> createSdlEffect(const std::shared_ptr<SdlForce>& force, FFKind kind,
                                          double direction) {
  if (SDL_Haptic* haptic = force->haptic()) {
    SDL_HapticEffect effect = toSdlEffect(kind, {});
    if (SDL_HapticEffectSupported(haptic, &effect) == SDL_TRUE) {
      auto created = std::make_unique<HapticEffect>(force, kind, direction);
      if (created->created()) return created;
    }
  }
  if (kind != FFKind::kRumble || !force->joystick()) return nullptr;
  if (SDL_JoystickHasRumble(force->joystick()) != SDL_TRUE) return nullptr;
  return std::make_unique<RumbleEffect>(force);
}

}  // namespace orv::unidevice
