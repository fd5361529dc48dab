#include "unidevice/ParameterEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::unidevice {

namespace {

/// Longest time that every platform's haptics can count (s).
constexpr double kLongest = 32.767;

}  // namespace

bool ParameterEffect::setMagnitude(double magnitude) {
  if (std::isnan(magnitude)) return false;
  return change(&EffectParameters::magnitude, std::clamp(magnitude, 0.0, 1.0));
}

bool ParameterEffect::setDirection(double direction) {
  return std::isfinite(direction) && change(&EffectParameters::direction, direction);
}

bool ParameterEffect::setDuration(double duration) {
  return duration >= 0.0 && duration <= kLongest && change(&EffectParameters::duration, duration);
}

bool ParameterEffect::setPeriod(double period) {
  return period > 0.0 && period <= kLongest && change(&EffectParameters::period, period);
}

bool ParameterEffect::change(double EffectParameters::*field, double value) {
  if (!reachable()) return false;
  const double old = std::exchange(m_parameters.*field, value);
  if (apply()) return true;
  m_parameters.*field = old;
  return false;
}

}  // namespace orv::unidevice
