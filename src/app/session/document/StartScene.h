// What a new scene begins with.
#pragma once

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

/// Puts a plane of 1 km by 1 km at a height of 0, "ground", into an empty scene, which gets 25
/// frames per second and a range of 0 to 10 s: at 100 m/s a car stays on it for a take. Its squares
/// are 20 m wide, which shows a vehicle's way, and lets a ray look at few triangles.
void FillStartScene(rws::adaptor::headless::Scene& scene);

}  // namespace orv::app
