// When a gun fires: rate, counted presses and delay.
#pragma once

#include "plugins/release/firepower/GunMemory.h"
#include "plugins/release/firepower/GunSettings.h"

namespace orv::rws::addon {

/// Decides in each frame whether the gun discharges, by the frame's input and the state of the
/// frame before. It knows no scene.
class FiringLogic {
 public:
  explicit FiringLogic(const GunSettings& settings) : m_settings(settings) {}

  /// Takes `state` on to the frame at `time`, `dt` (s) after the one before, with `fire` as its
  /// input. True when the gun discharges.
  bool Step(GunState& state, double fire, double time, double dt);

  bool timeDelayFire = false;  ///< no delay is in the way of a discharge, in the latest frame
  bool fireOffline = false;    ///< it was owed to a press that had ended before its delay

 private:
  int CountDue(const GunState& state) const;
  void CountPresses(GunState& state, double fire) const;
  void CheckDelay(GunState& state, double fire, double time, double dt);
  bool IsAsked(const GunState& state) const;
  double DrawRhythm(int discharge) const;

  const GunSettings& m_settings;
};

}  // namespace orv::rws::addon
