// Where a plane cuts a scene's own meshes.
#pragma once

#include <vector>

#include "app/plot/PlotData.h"

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

/// Lines in the plane through `point` that stands on `normal` (world space), at `time` (s): through
/// all visible meshes that belong to no rig.
std::vector<PlotLine> CutOf(const rws::adaptor::headless::Scene& scene, double time,
                            const util::Vector3<double>& point,
                            const util::Vector3<double>& normal);

}  // namespace orv::app
