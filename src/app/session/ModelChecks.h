// Whether a user's scene has the units and the up that rigs are made for.
#pragma once

#include <vector>

#include "app/session/anyhost/Problem.h"

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

/// What is odd about a scene at `time` (s), by its meshes that belong to no rig: more than 20 km or
/// less than 10 cm, wheels of a size that none has, or a broad flat ground that stands upright.
std::vector<Problem> OddScene(const rws::adaptor::headless::Scene& scene, double time);

}  // namespace orv::app
