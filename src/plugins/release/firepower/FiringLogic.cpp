#include "plugins/release/firepower/FiringLogic.h"

#include <algorithm>
#include <cmath>

#include "plugins/release/firepower/GunRandom.h"

namespace orv::rws::addon {

namespace {

/// A random integer of 15 bits as a part of a frame.
constexpr double kRhythmUnit = 3.0517578125e-05;
constexpr int kRhythmSteps = 32768;
/// Rounds over which the drawn parts of a frame are spread evenly.
constexpr int kRhythmBlock = 16;

}  // namespace

int FiringLogic::CountDue(const GunState& state) const {
  return std::max(state.firstFired ? m_settings.fireNthTime : m_settings.fireFirstNthTime, 1);
}

/// The count that is due is reached by a press and begins anew when that press has ended, so that
/// the gun fires as long as it lasts.
void FiringLogic::CountPresses(GunState& state, double fire) const {
  if (fire == 0.0 && state.nrFirePressed >= CountDue(state)) {
    state.nrFirePressed = 0;
    state.firstFired = true;
  }
  if (fire != 0.0 && state.fire == 0.0) {
    ++state.nrFirePressed;
    state.okToFire = true;  // with a rate of 0 nothing else marks it
  }
  state.fire = fire;
}

void FiringLogic::CheckDelay(GunState& state, double fire, double time, double dt) {
  const double delay = m_settings.timeDelay * dt;  // the parameter counts frames
  fireOffline = false;
  if (delay <= 0.0) {
    timeDelayFire = true;
    state.timeDelayActivated = false;
    state.timeDelayStart = time;
  } else if (!state.timeDelayActivated) {
    timeDelayFire = true;
  } else {
    timeDelayFire = time - state.timeDelayStart >= delay - kSameTime;
    fireOffline = timeDelayFire && fire == 0.0;
  }
}

bool FiringLogic::IsAsked(const GunState& state) const {
  const double wait = m_settings.rateOfFire > 0 ? 1.0 / m_settings.rateOfFire : 0.0;
  return state.fire != 0.0 && state.okToFire && state.fireTimer >= wait - kSameTime &&
         state.nrFirePressed >= CountDue(state);
}

/// A part of a frame, in [0, 1), by which the wait for the next round is shorter. A rate that does
/// not divide the frame rate is met on average by it, and one that does exactly. Of each 16 draws
/// one lies in each sixteenth: independent draws would miss the rate by more.
double FiringLogic::DrawRhythm(int discharge) const {
  const int seed = m_settings.randomSeed;
  const std::uint64_t order = RandomBits(seed, Chance::kRhythmOrder, discharge / kRhythmBlock);
  const std::uint64_t place =
      ((static_cast<std::uint64_t>(discharge) * (order | 1)) + (order >> 32)) % kRhythmBlock;
  const double part =
      (static_cast<double>(place) + RandomNumber(seed, Chance::kRhythm, discharge)) / kRhythmBlock;
  return std::floor(part * kRhythmSteps) * kRhythmUnit;
}

bool FiringLogic::Step(GunState& state, double fire, double time, double dt) {
  state.fireTimer += dt;
  if (m_settings.rateOfFire != 0) state.okToFire = true;
  CountPresses(state, fire);
  if (fire == 0.0) state.delayed = false;
  CheckDelay(state, fire, time, dt);
  if (!timeDelayFire) return false;
  const bool asked = IsAsked(state);
  if (!fireOffline && !asked) return false;
  if (m_settings.timeDelay > 0.0 && !state.timeDelayActivated && !state.delayed) {
    state.timeDelayActivated = true;
    state.timeDelayStart = time;
    return false;
  }
  state.timeDelayActivated = false;
  state.delayed = fire != 0.0;
  state.okToFire = false;
  state.fireTimer = dt * DrawRhythm(state.nrDischarges++);
  return true;
}

}  // namespace orv::rws::addon
