// A control with forces, without a device.
#pragma once

#include "unidevice/Control.h"
#include "unidevice/ParameterEffect.h"

namespace orv::tests {

class FeltControl : public unidevice::Control {
 public:
  FeltControl() : Control(unidevice::kInfiniteControl, "Axis", 0) {}

  bool hasForceFeedback() const override { return true; }
  unidevice::FFEffect* createEffect(unidevice::FFKind kind) override {
    return new Motor(kind, kind == unidevice::FFKind::kConstant ? push : shake);
  }

  /// What a hand on it feels now.
  double push = 0.0, shake = 0.0;

 private:
  struct Motor : unidevice::ParameterEffect {
    Motor(unidevice::FFKind kind, double& strength)
        : ParameterEffect(kind, 0.0), strength(strength) {}
    ~Motor() override { strength = 0.0; }
    bool start() override { return plays = true, apply(); }
    bool stop() override { return plays = false, apply(); }
    bool isPlaying() const override { return plays; }
    bool reachable() const override { return valid; }
    bool apply() override { return strength = plays ? magnitude() : 0.0, true; }
    double& strength;
    bool plays = false;
  };
};

}  // namespace orv::tests
