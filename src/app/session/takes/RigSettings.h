// What a rig is set to when it runs, as takes keep it.
#pragma once

#include <string>
#include <vector>

#include "app/session/takes/KeptTake.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

class Surroundings;

/// The first time (s) at which anything is keyed or recorded of a rig.
double FirstOf(rws::core::Instance& rig);

/// Name, kind, profile, parameters, mappings and surfaces; nothing of its start or inputs.
KeptRig SettingsOf(rws::core::Instance& rig, Surroundings& surroundings);

// Undoable in an open block.
void PutBindings(rws::core::Instance& rig, const std::string& bindings);
void PutParameters(rws::core::Instance& rig, const KeptRig& kept);
/// Replaces the tracks from `start` (s) on.
void PutInputs(rws::core::Instance& rig, const KeptRig& kept, double start);
/// The tracks from `start` on.
std::vector<KeptInput> InputsOf(rws::core::Instance& rig, double start);

/// "Car: Mass Multiplier is 2 and was 1" for all that is set otherwise than in `kept`, but for what
/// a live spinner turns.
std::vector<std::string> DifferencesFrom(const KeptRig& kept, rws::core::Instance& rig,
                                         Surroundings& surroundings);

}  // namespace orv::app
