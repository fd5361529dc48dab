#include "unidevice/ForcePlayer.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "unidevice/Control.h"
#include "unidevice/FFEffect.h"
#include "unidevice/Property.h"
#include "util/Angles.h"

namespace orv::unidevice {

namespace {

constexpr double kLasting = 0.5;        ///< s that an effect plays by itself
constexpr double kAnew = 0.2;           ///< s after which it is begun anew
constexpr double kKick = 0.08;          ///< s that a blow is felt at the least
constexpr double kLeast = 1.0 / 256.0;  ///< change of a strength that is worth a transfer
constexpr double kSwing = 0.04;         ///< s, a swing of what shakes

void drop(Property& input) {
  for (FFEffect* effect : input.effects) {
    effect->stop();
    delete effect;
  }
  input.effects.clear();
}

FFEffect* effectOf(const Property& input, bool pushes) {
  for (FFEffect* effect : input.effects)
    if ((effect->kind() == FFKind::kConstant) == pushes) return effect;
  return nullptr;
}

/// The first kind that the control has.
bool make(Property& input, std::initializer_list<FFKind> kinds) {
  for (const FFKind kind : kinds) {
    FFEffect* const effect = input.control->createEffect(kind);
    if (!effect) continue;
    effect->setDuration(kLasting);
    effect->setPeriod(kSwing);
    input.effects.push_back(effect);
    return true;
  }
  return false;
}

/// A strength of [0, 1] that a rig told, whatever it told.
double part(double strength, double gain) {
  return std::isfinite(strength) ? std::clamp(strength * gain, -1.0, 1.0) : 0.0;
}

}  // namespace

bool ForcePlayer::isFelt(const Property& input) {
  return input.feel.push != 0.0 || input.feel.road != 0.0 || input.feel.kick != 0.0;
}

/// Null without a force to play. A hand comes with the first thing to be felt: devices have room
/// for a few effects only.
ForcePlayer::Hand* ForcePlayer::handOf(Property& input) {
  if (!input.control) return nullptr;
  const auto isGone = [](const FFEffect* effect) { return !effect->valid; };
  const bool wasUnplugged = std::any_of(input.effects.begin(), input.effects.end(), isGone);
  for (Hand& hand : m_hands) {
    if (hand.input != &input) {
      if (hand.control == input.control) return nullptr;  // another rig's already
      continue;
    }
    if (hand.control == input.control && !wasUnplugged) return &hand;
    drop(input);
    hand.input = nullptr;
    hand.control = nullptr;
  }
  const auto isFree = [](const Hand& hand) { return !hand.input; };
  m_hands.erase(std::remove_if(m_hands.begin(), m_hands.end(), isFree), m_hands.end());
  if (!isFelt(input)) return nullptr;
  Hand hand;
  hand.input = &input;
  hand.control = input.control;
  if (input.control->hasForceFeedback()) {
    hand.canPush = make(input, {FFKind::kConstant});
    hand.canShake = make(input, {FFKind::kSine, FFKind::kRumble});
  }
  m_hands.push_back(hand);
  return &m_hands.back();
}

void ForcePlayer::play(const std::vector<Property*>& inputs, const ForceGains& gains, double now) {
  // Hands of inputs that are no longer played leave their controls to others.
  const auto isPlayed = [&inputs](const Hand& hand) {
    return std::find(inputs.begin(), inputs.end(), hand.input) != inputs.end();
  };
  m_hands.erase(std::remove_if(m_hands.begin(), m_hands.end(),
                               [&](const Hand& hand) { return !isPlayed(hand); }),
                m_hands.end());
  for (Property* input : inputs)
    if (Hand* const hand = handOf(*input)) playHand(*hand, *input, gains, now);
}

void ForcePlayer::playHand(Hand& hand, Property& input, const ForceGains& gains, double now) {
  if (!hand.canPush && !hand.canShake) return;
  // Along the control's own axis, which the mapping may have turned round.
  const double push = part(input.feel.push, gains.push) * (input.multiplier < 0.0 ? -1.0 : 1.0);
  const double kick = part(std::abs(input.feel.kick), gains.kick);
  double shake = std::max(kick, part(std::abs(input.feel.road), gains.road));
  if (kick > 0.0) hand.shakeUntil = now + kKick;
  if (now < hand.shakeUntil) shake = std::max(shake, hand.shake);
  const bool isAnew = now - hand.begun >= kAnew;
  const auto bring = [&](bool pushes, double strength, double& brought) {
    FFEffect* const effect = effectOf(input, pushes);
    if (!effect) return;
    const bool wasSilent = brought == 0.0, isSilent = strength == 0.0;
    if (std::abs(strength - brought) >= kLeast || isSilent != wasSilent) {
      // By itself an effect pushes to higher values.
      if ((strength < 0.0) != (brought < 0.0))
        effect->setDirection(effect->direction() + (strength < 0.0 ? util::kPi : -util::kPi));
      effect->setMagnitude(std::abs(strength));
      brought = strength;
    }
    if (isSilent && !wasSilent) effect->stop();
    if (!isSilent && (wasSilent || isAnew)) effect->start();
  };
  bring(true, push, hand.push);
  bring(false, shake, hand.shake);
  if (isAnew) hand.begun = now;
}

void ForcePlayer::stop(const std::vector<Property*>& inputs) {
  for (Property* input : inputs) drop(*input);
  m_hands.clear();
}

}  // namespace orv::unidevice
