// A rig's place in the world.
#pragma once

#include <optional>

#include "util/Vector3.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

/// Moves the rig, at the host's time, so that its first node stands at `position` (m; nothing:
/// where it is) and is `scale` times as large; the rig's other nodes come along. Undoable in an
/// open block.
void PlaceRig(rws::core::Instance& rig, const std::optional<util::Vector3<double>>& position,
              double scale);

/// Where the rig's first node is when the rig, `scale` times as large, stands on `foot` (m).
/// Nothing for a rig that does not stand on its ground by itself: any height would be a guess.
std::optional<util::Vector3<double>> StandingPlace(const rws::core::Instance& rig,
                                                   const util::Vector3<double>& foot, double scale);

}  // namespace orv::app
