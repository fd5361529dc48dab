// What a plot shows of a gun's projectiles.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

struct PlotData;
struct PlotSubject;

/// How the names of a gun's projectiles begin within the rig.
inline constexpr char kShotName[] = "bullet_";
inline bool IsShot(const std::string& name) {
  return name.rfind(kShotName, 0) == 0;
}

/// Adds the shots' ways to the top view and a side view along the gun's mean aim, with rings where
/// they were turned by a hit and with the scene as the planes through the first muzzle cut it; and
/// panels of the shots fired and of the barrel's recoil. Rigs without projectiles add nothing.
void AddShots(PlotData& data, const std::vector<PlotSubject>& subjects,
              const rws::adaptor::headless::Scene& scene);

}  // namespace orv::app
