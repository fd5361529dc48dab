// Whether a user's model has the scene's units and its up.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::rws::addon {
struct CarFrame;
}

namespace orv::app {

/// What is odd about a car's wheelbase and up, and what to do: sizes that no vehicle has but one in
/// centimetres or millimetres, and a car that lies on its side as models with Z up do. `body` is
/// the node that it is named by.
std::vector<std::string> oddCar(const rws::addon::CarFrame& frame,
                                const rws::adaptor::headless::SceneNode& body);

/// The same of a whole scene at `time` (s), by its meshes that belong to no rig: more than 20 km or
/// less than 10 cm, wheels of a size that none has, or a broad flat ground that stands upright.
std::vector<std::string> oddScene(const rws::adaptor::headless::Scene& scene, double time);

}  // namespace orv::app
