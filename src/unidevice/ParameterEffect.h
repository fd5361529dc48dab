// What an effect is told, whatever plays it.
#pragma once

#include "unidevice/FFEffect.h"

namespace orv::unidevice {

/// What an effect is told by its owner; see FFEffect for units.
struct EffectParameters {
  double magnitude = 0.0;
  double direction = 0.0;
  double duration = 0.0;
  double period = 0.1;
};

/// The parameters of an effect and their checks; what reaches the hardware is the derived class's.
class ParameterEffect : public FFEffect {
 public:
  /// `direction` is that of the beginning (rad).
  ParameterEffect(FFKind kind, double direction) : m_kind(kind) {
    m_parameters.direction = direction;
  }

  FFKind kind() const override { return m_kind; }
  double magnitude() const override { return m_parameters.magnitude; }
  double direction() const override { return m_parameters.direction; }
  double duration() const override { return m_parameters.duration; }
  double period() const override { return m_parameters.period; }

  bool setMagnitude(double magnitude) override;
  bool setDirection(double direction) override;
  bool setDuration(double duration) override;
  bool setPeriod(double period) override;

 protected:
  /// Whether the device is still there.
  virtual bool reachable() const = 0;

  /// Brings changed parameters to the hardware.
  virtual bool apply() = 0;

  EffectParameters m_parameters;

 private:
  bool change(double EffectParameters::*field, double value);

  FFKind m_kind;
};

}  // namespace orv::unidevice
