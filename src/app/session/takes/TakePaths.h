// Where a take's rigs go.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

struct KeptTake;

/// The way of a rig's first node over the time of a take, seen from above.
struct TakePath {
  std::string rig;
  std::vector<std::pair<double, double>> places;  ///< world x and z (m), evenly spaced in time
};

/// Of the take that the scene shows, from the scene's keys; a path for each of its rigs that is
/// there.
std::vector<TakePath> PathsOf(const KeptTake& take, const rws::core::CoreImplementation& core,
                              rws::adaptor::headless::Scene& scene);

}  // namespace orv::app
